#include "host/axis_form.h"

#include "graph/axis.h"
#include "support/errors.h"
#include "support/number_text.h"
#include "ui_axis_form.h"

#include <cmath>

namespace lumoplot {
namespace {

QString Text(double value) {
    return QString::fromStdString(FormatShortest(value));
}

double Number(const QLineEdit& edit) {
    const double value = ParseFloat(edit.text().toStdString());
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
    m_ui->e_Min->setText(Text(axis.Min()));
    m_ui->e_Max->setText(Text(axis.Max()));
    m_ui->cb_AutoStepping->setChecked(axis.AutoStepping());
    m_ui->e_StepSize->setText(Text(axis.StepSize()));
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
    if (!m_ui->cb_AutoSizing->isChecked()) {
        axis.SetMin(Number(*m_ui->e_Min));
        axis.SetMax(Number(*m_ui->e_Max));
    }
    axis.SetAutoSizing(m_ui->cb_AutoSizing->isChecked());
    if (!m_ui->cb_AutoStepping->isChecked()) axis.SetStepSize(Number(*m_ui->e_StepSize));
    axis.SetAutoStepping(m_ui->cb_AutoStepping->isChecked());
}

} // namespace lumoplot
