#include "fit/equation_editor/fit_settings_group.h"

#include "controls/number_edit.h"
#include "controls/texts.h"
#include "controls/value_edit.h"

#include <QCheckBox>
#include <QComboBox>

namespace lumoplot {
namespace {

QString NoMargin() {
    return TTexts::tr("None");
}

} // namespace

TFitSettingsGroup::TFitSettingsGroup(TFitAccess& access, QWidget& form, QObject* parent)
    : QObject(parent), m_access(access), m_nPoints(form.findChild<TValueEdit*>(QStringLiteral("e_NPoints"))),
      m_tolerance(form.findChild<TValueEdit*>(QStringLiteral("e_Tolerance"))),
      m_status(form.findChild<QComboBox*>(QStringLiteral("cbx_Status"))),
      m_iterMax(form.findChild<TValueEdit*>(QStringLiteral("e_IterMax"))),
      m_procedure(form.findChild<QComboBox*>(QStringLiteral("cbx_Procedure"))),
      m_byYErrors(form.findChild<QCheckBox*>(QStringLiteral("cb_ByYErrors"))),
      m_errorSource(form.findChild<QComboBox*>(QStringLiteral("cbx_ErrorSource"))),
      m_robust(form.findChild<QComboBox*>(QStringLiteral("cbx_Robust"))),
      m_left{form.findChild<QLineEdit*>(QStringLiteral("e_LeftMargin")), &TCurFit::LeftMargin,
             &TCurFit::UseLeftMargin, &TCurFit::SetLeftMargin, &TCurFit::SetUseLeftMargin},
      m_right{form.findChild<QLineEdit*>(QStringLiteral("e_RightMargin")), &TCurFit::RightMargin,
              &TCurFit::UseRightMargin, &TCurFit::SetRightMargin, &TCurFit::SetUseRightMargin} {
    ConnectNumbers();
    ConnectLists();
    if (m_byYErrors) ConnectWeights();
}

void TFitSettingsGroup::ConnectWeights() {
    const auto take = [this] {
        m_access.EditFit("weights", [&](TCurFit& fit) {
            fit.SetWeighting({m_byYErrors->isChecked(), TErrorSource{m_errorSource->currentIndex()},
                              TRobust{m_robust->currentIndex()}});
            m_errorSource->setEnabled(fit.UsesYErrors());
        });
    };
    connect(m_byYErrors, &QAbstractButton::clicked, this, take);
    connect(m_errorSource, &QComboBox::currentIndexChanged, this, take);
    connect(m_robust, &QComboBox::currentIndexChanged, this, take);
}

void TFitSettingsGroup::ShowWeights(const TCurFit& fit) {
    const TFitWeighting weighting = fit.Weighting();
    m_byYErrors->setChecked(weighting.ByYErrors);
    m_errorSource->setCurrentIndex(static_cast<int>(weighting.Errors));
    m_errorSource->setEnabled(weighting.ByYErrors);
    m_robust->setCurrentIndex(static_cast<int>(weighting.Robust));
}

void TFitSettingsGroup::ConnectNumbers() {
    connect(m_nPoints, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("number of points", [&](TCurFit& fit) { fit.SetNPoints(static_cast<int>(value)); });
    });
    connect(m_tolerance, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("tolerance", [&](TCurFit& fit) { fit.SetTolerance(value); });
    });
    connect(m_iterMax, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("iterations", [&](TCurFit& fit) { fit.SetIterMax(static_cast<int>(value)); });
    });
    for (const TMargin* margin : {&m_left, &m_right})
        connect(margin->Edit, &QLineEdit::editingFinished, this, [this, margin] { TakeMargin(*margin); });
}

void TFitSettingsGroup::ConnectLists() {
    connect(m_status, &QComboBox::currentIndexChanged, this, [this](int item) {
        m_access.EditFit("status", [&](TCurFit& fit) { fit.SetStatus(TFitStatus{item}); });
    });
    connect(m_procedure, &QComboBox::currentIndexChanged, this, [this](int item) {
        m_access.EditFit("procedure", [&](TCurFit& fit) { fit.SetProcType(TFitProcedure{item}); });
    });
}

void TFitSettingsGroup::TakeMargins() {
    TakeMargin(m_left);
    TakeMargin(m_right);
}

// Walking through an edit changes nothing.
void TFitSettingsGroup::TakeMargin(const TMargin& margin) {
    if (!margin.Edit->isModified()) return;
    m_access.EditFit("margins", [&](TCurFit& fit) {
        const bool isNone = margin.Edit->text().trimmed().compare(NoMargin(), Qt::CaseInsensitive) == 0;
        const auto value = isNone ? std::nullopt : FiniteNumberIn(*margin.Edit);
        if (!isNone && !value) return; // marked
        (fit.*margin.SetUsed)(!isNone);
        if (value) (fit.*margin.SetValue)(*value);
        ShowMargin(fit, margin);
    });
}

void TFitSettingsGroup::ShowMargin(const TCurFit& fit, const TMargin& margin) {
    if ((fit.*margin.IsUsed)())
        ShowNumber(*margin.Edit, (fit.*margin.Value)(), kFewDigits);
    else
        ShowNumberText(*margin.Edit, NoMargin().toStdString());
}

void TFitSettingsGroup::ShowNothing() {
    for (TValueEdit* edit : {m_nPoints, m_tolerance, m_iterMax}) edit->ShowNothing();
    for (const TMargin* margin : {&m_left, &m_right}) ShowNumberText(*margin->Edit, {});
    for (QComboBox* list : {m_status, m_procedure}) {
        const QSignalBlocker quiet(list);
        list->setCurrentIndex(-1);
    }
}

void TFitSettingsGroup::Fill() {
    const TCurFit* fit = m_access.Fit();
    if (!fit) return ShowNothing();
    m_nPoints->ShowValue(fit->NPoints());
    m_tolerance->ShowValue(fit->Tolerance());
    m_iterMax->ShowValue(fit->IterMax());
    const QSignalBlocker quietStatus(m_status);
    const QSignalBlocker quietProcedure(m_procedure);
    m_status->setCurrentIndex(static_cast<int>(fit->Status()));
    m_procedure->setCurrentIndex(static_cast<int>(fit->ProcType()));
    ShowMargin(*fit, m_left);
    ShowMargin(*fit, m_right);
    if (m_byYErrors) ShowWeights(*fit);
}

} // namespace lumoplot
