#include "fit/equation_editor/parameter_group.h"

#include "controls/number_edit.h"
#include "controls/value_edit.h"
#include "fit/equation_editor/formula_check.h"
#include "fit/equation_editor/parameter_model.h"

#include <QCheckBox>
#include <QTableView>
#include <algorithm>

namespace lumoplot {
namespace {

constexpr double kNewValue = 1.2;

std::string NumberedName(int number) {
    std::string name = "P";
    return name += std::to_string(number);
}

} // namespace

TParameterGroup::TParameterGroup(TFitAccess& access, QWidget& form, QObject* parent)
    : QObject(parent), m_access(access), m_model(new TParameterModel(access, this)),
      m_table(form.findChild<QTableView*>(QStringLiteral("t_Parameters"))),
      m_new(form.findChild<QAbstractButton*>(QStringLiteral("btnAddParam"))),
      m_delete(form.findChild<QAbstractButton*>(QStringLiteral("btnDeleteParam"))),
      m_name(form.findChild<QLineEdit*>(QStringLiteral("e_ParamName"))),
      m_value(form.findChild<TValueEdit*>(QStringLiteral("e_ParamValue"))),
      m_units(form.findChild<QLineEdit*>(QStringLiteral("e_ParamUnits"))),
      m_description(form.findChild<QLineEdit*>(QStringLiteral("e_ParamDescription"))),
      m_vary(form.findChild<QCheckBox*>(QStringLiteral("cb_ParamVary"))),
      m_inLegend(form.findChild<QCheckBox*>(QStringLiteral("cb_ParamInLegend"))),
      m_startDeviation(form.findChild<TValueEdit*>(QStringLiteral("e_StartDeviation"))),
      m_finalDeviation(form.findChild<TValueEdit*>(QStringLiteral("e_FinalDeviation"))) {
    SetUpParameterTable(*m_table, *m_model);
    ConnectTable();
    ConnectTexts();
    ConnectValues();
    ConnectFlags();
}

TDBLParameter* TParameterGroup::Selected() const {
    TCurFit* fit = m_access.Fit();
    return fit ? fit->Parameter(SelectedNumber()) : nullptr;
}

int TParameterGroup::SelectedNumber() const {
    return m_table->currentIndex().row() + 1;
}

template <class TAction>
void TParameterGroup::EditSelected(const char* what, TAction&& action) {
    m_access.EditFit(what, [&](TCurFit& fit) {
        if (TDBLParameter* parameter = Selected()) action(fit, *parameter);
    });
}

void TParameterGroup::ConnectTable() {
    connect(m_table->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this] { ShowFields(); });
    connect(m_model, &TParameterModel::CellEdited, this, [this] { ShowFields(); });
    connect(m_new, &QAbstractButton::clicked, this, &TParameterGroup::AddNumbered);
    connect(m_delete, &QAbstractButton::clicked, this, &TParameterGroup::DeleteSelected);
}

void TParameterGroup::ConnectTexts() {
    connect(m_name, &QLineEdit::textEdited, this, &TParameterGroup::Rename);
    connect(m_name, &QLineEdit::editingFinished, this, [this] {
        if (const TDBLParameter* parameter = Selected()) ShowNumberText(*m_name, parameter->Name());
    });
    const auto connectText = [this](QLineEdit* edit, std::string TDBLParameter::*field) {
        connect(edit, &QLineEdit::textEdited, this, [this, field](const QString& text) {
            EditSelected("text of a parameter", [&](TCurFit& fit, TDBLParameter& parameter) {
                parameter.*field = text.toStdString();
                NotifyShown(fit);
            });
        });
    };
    connectText(m_units, &TDBLParameter::Units);
    connectText(m_description, &TDBLParameter::Description);
}

void TParameterGroup::ConnectValues() {
    connect(m_value, &TValueEdit::ValueEdited, this, [this](double value) {
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
    connectDeviation(m_startDeviation, &TDBLParameter::StartDeviation);
    connectDeviation(m_finalDeviation, &TDBLParameter::FinalDeviation);
}

void TParameterGroup::ConnectFlags() {
    connect(m_vary, &QAbstractButton::clicked, this, [this](bool on) {
        EditSelected("varied parameters", [&](TCurFit&, TDBLParameter& parameter) { parameter.SetVary(on); });
    });
    connect(m_inLegend, &QAbstractButton::clicked, this, [this](bool on) {
        EditSelected("parameters in legend", [&](TCurFit& fit, TDBLParameter& parameter) {
            parameter.ShowInLegend = on;
            NotifyShown(fit);
        });
    });
}

void TParameterGroup::ShowTable() {
    m_model->Update();
}

void TParameterGroup::Fill(int number) {
    m_model->Update();
    const int count = m_model->rowCount();
    const int row = std::clamp(number, std::min(1, count), count) - 1;
    if (row >= 0 && row != m_table->currentIndex().row())
        m_table->setCurrentIndex(m_model->index(row, std::max(0, m_table->currentIndex().column())));
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
        MarkEdit(*m_name, QString::fromStdString(fault));
        if (name.empty() || !fault.empty()) return;
        parameter.SetName(name);
    });
}

void TParameterGroup::ShowFields() {
    const TDBLParameter* parameter = Selected();
    EnableFields(parameter != nullptr);
    const TDBLParameter shown;
    const TDBLParameter& fields = parameter ? *parameter : shown;
    ShowText(*m_name, parameter ? fields.Name() : "");
    MarkEdit(*m_name, {});
    ShowText(*m_units, parameter ? fields.Units : "");
    ShowText(*m_description, parameter ? fields.Description : "");
    m_vary->setChecked(fields.Vary());
    m_inLegend->setChecked(fields.ShowInLegend);
    const auto showValue = [&](TValueEdit* edit, double value) {
        if (!edit) return;
        parameter ? edit->ShowValue(value) : edit->ShowNothing();
    };
    showValue(m_value, fields.Value());
    showValue(m_startDeviation, fields.StartDeviation);
    showValue(m_finalDeviation, fields.FinalDeviation);
}

void TParameterGroup::EnableFields(bool enable) {
    for (QWidget* control :
         {static_cast<QWidget*>(m_delete), static_cast<QWidget*>(m_name), static_cast<QWidget*>(m_value),
          static_cast<QWidget*>(m_units), static_cast<QWidget*>(m_description), static_cast<QWidget*>(m_vary),
          static_cast<QWidget*>(m_inLegend), static_cast<QWidget*>(m_startDeviation),
          static_cast<QWidget*>(m_finalDeviation)})
        if (control) control->setEnabled(enable);
}

} // namespace lumoplot
