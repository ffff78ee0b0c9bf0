#include "host/progress_box.h"

namespace lumoplot {
namespace {

constexpr int kSteps = 1000;
constexpr int kMillisecondsBetweenRedraws = 50;

} // namespace

TProgressBox::TProgressBox(QWidget* parent) : m_dialog(parent) {
    m_dialog.setWindowModality(Qt::ApplicationModal);
    m_dialog.setRange(0, kSteps);
    m_dialog.setMinimumDuration(500);
    m_dialog.setAutoReset(false);
    m_dialog.setAutoClose(false);
    m_dialog.reset();
}

void TProgressBox::Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) {
    m_minimum = minimum;
    m_maximum = maximum;
    m_dialog.setLabelText(QString::fromStdString(caption));
    m_dialog.setValue(0);
    m_sinceShown.start();
}

bool TProgressBox::StepTo(std::int64_t position) {
    if (m_sinceShown.isValid() && m_sinceShown.elapsed() < kMillisecondsBetweenRedraws)
        return !m_dialog.wasCanceled();
    m_sinceShown.start();
    const double length = static_cast<double>(m_maximum) - static_cast<double>(m_minimum);
    const double done = static_cast<double>(position) - static_cast<double>(m_minimum);
    if (length > 0) m_dialog.setValue(static_cast<int>(std::clamp(done / length, 0.0, 1.0) * kSteps));
    return !m_dialog.wasCanceled();
}

} // namespace lumoplot
