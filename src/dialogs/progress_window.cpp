#include "dialogs/progress_window.h"

#include "ui_progress_window.h"

#include <QCoreApplication>
#include <algorithm>

namespace lumoplot {
namespace {

// The bar counts in parts, because files are longer than its int.
constexpr int kParts = 1000;

} // namespace

TProgressWindow::TProgressWindow(QWidget* parent)
    : QDialog(parent), m_ui(std::make_unique<Ui::TProgressWindow>()) {
    m_ui->setupUi(this);
    setWindowModality(Qt::ApplicationModal);
    m_ui->progressBar->setRange(0, kParts);
    connect(m_ui->btnCancel, &QPushButton::clicked, this, &TProgressWindow::reject);
    m_sinceStart.start();
    m_sinceEvents.start();
}

TProgressWindow::~TProgressWindow() = default;

void TProgressWindow::Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) {
    m_ui->lblReason->setText(QString::fromStdString(caption));
    m_minimum = m_position = minimum;
    m_maximum = maximum;
    ShowPosition();
}

bool TProgressWindow::StepTo(std::int64_t position) {
    m_position = position;
    if (m_processing || m_sinceEvents.elapsed() < kEventsEveryMs) return !m_cancelled;
    m_processing = true;
    ShowPosition();
    if (!isVisible() && m_sinceStart.elapsed() >= kShowAfterMs) show();
    // Before the window is there to hold it back, input would reach the other windows.
    if (isVisible()) QCoreApplication::processEvents();
    m_sinceEvents.start();
    m_processing = false;
    return !m_cancelled;
}

void TProgressWindow::ShowPosition() {
    const double length = static_cast<double>(std::max<std::int64_t>(1, m_maximum - m_minimum));
    const double done = static_cast<double>(m_position - m_minimum) / length;
    m_ui->progressBar->setValue(static_cast<int>(std::clamp(done, 0.0, 1.0) * kParts));
}

} // namespace lumoplot
