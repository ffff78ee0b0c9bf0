#include "fit/equation_editor/fit_settings_group.h"

#include "controls/number_edit.h"
#include "controls/value_edit.h"

#include <QComboBox>

namespace lumoplot {
namespace {

const QString kNoMargin = QStringLiteral("None");

} // namespace

TFitSettingsGroup::TFitSettingsGroup(TFitAccess& access, const TFitSettingsControls& controls,
                                     QObject* parent)
    : QObject(parent), m_access(access),
      m_controls(controls), m_left{controls.LeftMargin, &TCurFit::LeftMargin, &TCurFit::UseLeftMargin,
                                   &TCurFit::SetLeftMargin, &TCurFit::SetUseLeftMargin},
      m_right{controls.RightMargin, &TCurFit::RightMargin, &TCurFit::UseRightMargin, &TCurFit::SetRightMargin,
              &TCurFit::SetUseRightMargin} {
    ConnectNumbers();
    ConnectLists();
}

void TFitSettingsGroup::ConnectNumbers() {
    connect(m_controls.NPoints, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("number of points", [&](TCurFit& fit) { fit.SetNPoints(static_cast<int>(value)); });
    });
    connect(m_controls.Tolerance, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("tolerance", [&](TCurFit& fit) { fit.SetTolerance(value); });
    });
    connect(m_controls.IterMax, &TValueEdit::ValueEdited, this, [this](double value) {
        m_access.EditFit("iterations", [&](TCurFit& fit) { fit.SetIterMax(static_cast<int>(value)); });
    });
    for (const TMargin* margin : {&m_left, &m_right})
        connect(margin->Edit, &QLineEdit::editingFinished, this, [this, margin] { TakeMargin(*margin); });
}

void TFitSettingsGroup::ConnectLists() {
    connect(m_controls.Status, &QComboBox::currentIndexChanged, this, [this](int item) {
        m_access.EditFit("status", [&](TCurFit& fit) { fit.SetStatus(TFitStatus{item}); });
    });
    connect(m_controls.Procedure, &QComboBox::currentIndexChanged, this, [this](int item) {
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
        const bool isNone = margin.Edit->text().trimmed().compare(kNoMargin, Qt::CaseInsensitive) == 0;
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
        ShowNumberText(*margin.Edit, kNoMargin.toStdString());
}

void TFitSettingsGroup::ShowNothing() {
    for (TValueEdit* edit : {m_controls.NPoints, m_controls.Tolerance, m_controls.IterMax})
        edit->ShowNothing();
    for (const TMargin* margin : {&m_left, &m_right}) ShowNumberText(*margin->Edit, {});
    for (QComboBox* list : {m_controls.Status, m_controls.Procedure}) {
        const QSignalBlocker quiet(list);
        list->setCurrentIndex(-1);
    }
}

void TFitSettingsGroup::Fill() {
    const TCurFit* fit = m_access.Fit();
    if (!fit) return ShowNothing();
    m_controls.NPoints->ShowValue(fit->NPoints());
    m_controls.Tolerance->ShowValue(fit->Tolerance());
    m_controls.IterMax->ShowValue(fit->IterMax());
    const QSignalBlocker quietStatus(m_controls.Status);
    const QSignalBlocker quietProcedure(m_controls.Procedure);
    m_controls.Status->setCurrentIndex(static_cast<int>(fit->Status()));
    m_controls.Procedure->setCurrentIndex(static_cast<int>(fit->ProcType()));
    ShowMargin(*fit, m_left);
    ShowMargin(*fit, m_right);
}

} // namespace lumoplot
