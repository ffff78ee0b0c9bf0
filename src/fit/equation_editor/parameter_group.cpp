#include "fit/equation_editor/parameter_group.h"

#include "controls/number_edit.h"
#include "controls/value_edit.h"
#include "fit/equation_editor/formula_check.h"

#include <QCheckBox>
#include <QListWidget>
#include <QSignalBlocker>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr double kNewValue = 1.2;

std::string NumberedName(int number) {
    std::string name = "P";
    return name += std::to_string(number);
}

} // namespace

TParameterGroup::TParameterGroup(TFitAccess& access, const TParameterControls& controls, QObject* parent)
    : QObject(parent), m_access(access), m_controls(controls) {
    ConnectList();
    ConnectTexts();
    ConnectValues();
    ConnectFlags();
}

TDBLParameter* TParameterGroup::Selected() const {
    TCurFit* fit = m_access.Fit();
    return fit ? fit->Parameter(SelectedNumber()) : nullptr;
}

int TParameterGroup::SelectedNumber() const {
    return m_controls.List->currentRow() + 1;
}

template <class TAction>
void TParameterGroup::EditSelected(const char* what, TAction&& action) {
    m_access.EditFit(what, [&](TCurFit& fit) {
        if (TDBLParameter* parameter = Selected()) action(fit, *parameter);
    });
}

void TParameterGroup::ConnectList() {
    connect(m_controls.List, &QListWidget::currentRowChanged, this, [this] { ShowFields(); });
    connect(m_controls.New, &QAbstractButton::clicked, this, &TParameterGroup::AddNumbered);
    connect(m_controls.Delete, &QAbstractButton::clicked, this, &TParameterGroup::DeleteSelected);
}

void TParameterGroup::ConnectTexts() {
    connect(m_controls.Name, &QLineEdit::textEdited, this, &TParameterGroup::Rename);
    connect(m_controls.Name, &QLineEdit::editingFinished, this, [this] {
        if (const TDBLParameter* parameter = Selected()) ShowNumberText(*m_controls.Name, parameter->Name());
    });
    const auto connectText = [this](QLineEdit* edit, std::string TDBLParameter::*field) {
        connect(edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            EditSelected("text of a parameter", [&](TCurFit& fit, TDBLParameter& parameter) {
                parameter.*field = text.toStdString();
                NotifyShown(fit);
            });
        });
    };
    connectText(m_controls.Units, &TDBLParameter::Units);
    connectText(m_controls.Description, &TDBLParameter::Description);
}

void TParameterGroup::ConnectValues() {
    connect(m_controls.Value, &TValueEdit::ValueEdited, this, [this](double value) {
        EditSelected("value of a parameter",
                     [&](TCurFit&, TDBLParameter& parameter) { parameter.SetValue(value); });
    });
    const auto connectDeviation = [this](TValueEdit* edit, double TDBLParameter::*field) {
        if (!edit) return;
        connect(edit, &TValueEdit::ValueEdited, this, [this, field](double value) {
            EditSelected("deviation of a parameter", [&](TCurFit& fit, TDBLParameter& parameter) {
                parameter.*field = value;
                fit.Changed(true);
            });
        });
    };
    connectDeviation(m_controls.StartDeviation, &TDBLParameter::StartDeviation);
    connectDeviation(m_controls.FinalDeviation, &TDBLParameter::FinalDeviation);
}

void TParameterGroup::ConnectFlags() {
    connect(m_controls.Vary, &QAbstractButton::clicked, this, [this](bool on) {
        EditSelected("varied parameters", [&](TCurFit&, TDBLParameter& parameter) { parameter.SetVary(on); });
    });
    connect(m_controls.ShowInLegend, &QAbstractButton::clicked, this, [this](bool on) {
        EditSelected("parameters in legend", [&](TCurFit& fit, TDBLParameter& parameter) {
            parameter.ShowInLegend = on;
            NotifyShown(fit);
        });
    });
}

void TParameterGroup::Fill(int number) {
    const TCurFit* fit = m_access.Fit();
    const int count = fit ? fit->NParams() : 0;
    {
        const QSignalBlocker quiet(m_controls.List);
        m_controls.List->clear();
        for (int i = 1; i <= count; ++i)
            m_controls.List->addItem(QString::fromStdString(fit->Parameter(i)->Name()));
        m_controls.List->setCurrentRow(std::clamp(number, std::min(1, count), count) - 1);
    }
    ShowFields();
}

void TParameterGroup::Add(TCurFit& fit, const std::string& name, bool vary) {
    auto parameter = std::make_unique<TDBLParameter>();
    parameter->SetName(name);
    parameter->SetValue(kNewValue);
    parameter->SetVary(vary);
    parameter->Description = "Parameter " + name;
    fit.AddParameter(std::move(parameter));
    Fill(fit.NParams());
}

// Counts on past names that are taken, which deleting an earlier parameter leaves behind.
void TParameterGroup::AddNumbered() {
    m_access.EditFit("new parameter", [&](TCurFit& fit) {
        int number = fit.NParams() + 1;
        while (fit.IsParameter(NumberedName(number))) ++number;
        Add(fit, NumberedName(number), false);
    });
}

void TParameterGroup::AddVaried(const std::vector<std::string>& names) {
    m_access.EditFit("new parameters", [&](TCurFit& fit) {
        for (const std::string& name : names) Add(fit, name, true);
    });
}

void TParameterGroup::DeleteSelected() {
    m_access.EditFit("delete parameter", [&](TCurFit& fit) {
        const int number = SelectedNumber();
        fit.DeleteParameter(number);
        Fill(number - 1);
    });
}

void TParameterGroup::Rename(const QString& text) {
    EditSelected("name of a parameter", [&](TCurFit& fit, TDBLParameter& parameter) {
        const std::string name = text.toStdString();
        const bool isOwn = name == parameter.Name();
        const std::string fault = isOwn || name.empty() ? "" : ParameterNameFault(fit, name);
        MarkEdit(*m_controls.Name, QString::fromStdString(fault));
        if (name.empty() || !fault.empty()) return;
        parameter.SetName(name);
        m_controls.List->currentItem()->setText(text);
    });
}

void TParameterGroup::ShowFields() {
    const TDBLParameter* parameter = Selected();
    EnableFields(parameter != nullptr);
    const TDBLParameter shown;
    const TDBLParameter& fields = parameter ? *parameter : shown;
    ShowText(*m_controls.Name, parameter ? fields.Name() : "");
    MarkEdit(*m_controls.Name, {});
    ShowText(*m_controls.Units, parameter ? fields.Units : "");
    ShowText(*m_controls.Description, parameter ? fields.Description : "");
    m_controls.Vary->setChecked(fields.Vary());
    m_controls.ShowInLegend->setChecked(fields.ShowInLegend);
    const auto showValue = [&](TValueEdit* edit, double value) {
        if (!edit) return;
        parameter ? edit->ShowValue(value) : edit->ShowNothing();
    };
    showValue(m_controls.Value, fields.Value());
    showValue(m_controls.StartDeviation, fields.StartDeviation);
    showValue(m_controls.FinalDeviation, fields.FinalDeviation);
}

void TParameterGroup::EnableFields(bool enable) {
    for (QWidget* control :
         {static_cast<QWidget*>(m_controls.Delete), static_cast<QWidget*>(m_controls.Name),
          static_cast<QWidget*>(m_controls.Value), static_cast<QWidget*>(m_controls.Units),
          static_cast<QWidget*>(m_controls.Description), static_cast<QWidget*>(m_controls.Vary),
          static_cast<QWidget*>(m_controls.ShowInLegend), static_cast<QWidget*>(m_controls.StartDeviation),
          static_cast<QWidget*>(m_controls.FinalDeviation)})
        if (control) control->setEnabled(enable);
}

} // namespace lumoplot
