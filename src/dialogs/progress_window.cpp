#include "dialogs/progress_window.h"

#include <algorithm>

namespace lumoplot {
namespace {

// The bar counts in parts, because files are longer than its int.
constexpr int kParts = 1000;

} // namespace

TProgressWindow::TProgressWindow()
    : m_window(ShowProgress(QObject::tr("Processing..."), kParts, /*withCancel*/ true, /*showNow*/ true)) {
}

void TProgressWindow::Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) {
    m_window->ResetProgress(QString::fromStdString(caption), kParts);
    m_minimum = minimum;
    m_maximum = maximum;
    m_partsDone = 0;
}

bool TProgressWindow::StepTo(std::int64_t position) {
    const double length = std::max(1.0, static_cast<double>(m_maximum) - static_cast<double>(m_minimum));
    const double done = (static_cast<double>(position) - static_cast<double>(m_minimum)) / length;
    const int parts = static_cast<int>(std::clamp(done, 0.0, 1.0) * kParts);
    m_window->StepProgress(parts - m_partsDone);
    m_partsDone = parts;
    return !m_window->Cancelled();
}

TBusyWindow::TBusyWindow(const std::string& reason) : m_window(ShowBusy(QString::fromStdString(reason))) {
}

void TBusyWindow::Begin(const std::string&, std::int64_t, std::int64_t) {
}

bool TBusyWindow::StepTo(std::int64_t) {
    m_window->StepProgress();
    return !m_window->Cancelled();
}

} // namespace lumoplot
