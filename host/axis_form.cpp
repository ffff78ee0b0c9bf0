#include "host/axis_form.h"

#include "controls/number_edit.h"
#include "graph/model/axis.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "ui_axis_form.h"

#include <cmath>

namespace lumoplot {
namespace {

/// Automatic ranges end a hair behind round numbers; nobody wants to read that.
constexpr int kDigitsShown = 9;

void Show(QLineEdit& edit, double value) {
    edit.setText(QString::fromStdString(FormatGeneral(value, kDigitsShown)));
    edit.setModified(false);
}

double Number(const QLineEdit& edit) {
    const double value = ParseTyped(edit.text().toStdString());
    if (!std::isfinite(value)) throw EConvertError("An axis needs finite numbers");
    return value;
}

} // namespace

TAxisForm::TAxisForm(QWidget* parent) : QWidget(parent), m_ui(std::make_unique<Ui::AxisForm>()) {
    m_ui->setupUi(this);
}

TAxisForm::~TAxisForm() = default;

void TAxisForm::Fill(const TAxis& axis) {
    m_ui->e_Title->setText(QString::fromStdString(axis.Title()));
    m_ui->cb_AutoSizing->setChecked(axis.AutoSizing());
    Show(*m_ui->e_Min, axis.Min());
    Show(*m_ui->e_Max, axis.Max());
    m_ui->cb_AutoStepping->setChecked(axis.AutoStepping());
    Show(*m_ui->e_StepSize, axis.StepSize());
    m_ui->cb_ShowAxis->setChecked(axis.ShowAxis());
    m_ui->cb_Gridlines->setChecked(axis.Gridlines());
    m_ui->cb_LogScale->setChecked(axis.LogScale());
    m_ui->cb_Reversed->setChecked(axis.Reversed());
}

void TAxisForm::Check() const {
    if (!m_ui->cb_AutoSizing->isChecked()) {
        const double min = Number(*m_ui->e_Min);
        if (!(min < Number(*m_ui->e_Max)))
            throw EScaleError("The minimum of an axis must be below its maximum");
        if (m_ui->cb_LogScale->isChecked() && !(min > 0))
            throw EScaleError("The minimum of a logarithmic axis must be above 0");
    }
    if (!m_ui->cb_AutoStepping->isChecked() && !(Number(*m_ui->e_StepSize) > 0))
        throw EScaleError("The step of an axis must be above 0");
}

void TAxisForm::Store(TAxis& axis) const {
    if (const std::string title = m_ui->e_Title->text().toStdString(); title != axis.Title()) {
        axis.SetEnableAutoTitle(false);
        axis.SetTitle(title);
    }
    axis.SetShowAxis(m_ui->cb_ShowAxis->isChecked());
    axis.SetGridlines(m_ui->cb_Gridlines->isChecked());
    axis.SetReversed(m_ui->cb_Reversed->isChecked());
    axis.SetLogScale(m_ui->cb_LogScale->isChecked());
    axis.SetAutoSizing(m_ui->cb_AutoSizing->isChecked());
    axis.SetAutoStepping(m_ui->cb_AutoStepping->isChecked());
    // A number that was not typed keeps the digits that are not shown.
    const auto typed = [](const QLineEdit& edit) { return edit.isEnabled() && edit.isModified(); };
    if (typed(*m_ui->e_Min)) axis.SetMin(Number(*m_ui->e_Min));
    if (typed(*m_ui->e_Max)) axis.SetMax(Number(*m_ui->e_Max));
    if (typed(*m_ui->e_StepSize)) axis.SetStepSize(Number(*m_ui->e_StepSize));
}

} // namespace lumoplot
