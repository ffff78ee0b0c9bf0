#include "dialogs/messages/progress_window.h"

#include "dialogs/messages/progress_bar.h"
#include "dialogs/messages/window_place.h"

#include <algorithm>

namespace lumoplot {
namespace {

// The bar counts in parts, because files are longer than its int.
constexpr int kParts = 1000;

int PartsDone(std::int64_t minimum, std::int64_t maximum, std::int64_t position) {
    const double length = std::max(1.0, static_cast<double>(maximum) - static_cast<double>(minimum));
    const double done = (static_cast<double>(position) - static_cast<double>(minimum)) / length;
    return static_cast<int>(std::clamp(done, 0.0, 1.0) * kParts);
}

class TLargeProgress : public TProgress {
public:
    explicit TLargeProgress(const std::string& reason) : m_window(MainWindow()) {
        m_window.SetReason(QString::fromStdString(reason));
        m_window.StartTimer(TStepWindow::kLongWorkMs);
    }
    void Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) override {
        m_window.ResetProgress(QString::fromStdString(caption), kParts);
        m_minimum = minimum;
        m_maximum = maximum;
        m_partsDone = 0;
    }
    [[nodiscard]] bool StepTo(std::int64_t position) override {
        const int parts = PartsDone(m_minimum, m_maximum, position);
        m_window.SetProgressText(QStringLiteral("%1 %").arg(100 * parts / kParts));
        m_window.StepProgress(parts - m_partsDone);
        m_partsDone = parts;
        return !m_window.Cancelled();
    }

private:
    TfrmPrBar m_window;
    std::int64_t m_minimum = 0;
    std::int64_t m_maximum = 0;
    int m_partsDone = 0;
};

class TBusyProgress : public TProgress {
public:
    explicit TBusyProgress(const std::string& reason) : m_window(ShowBusy(QString::fromStdString(reason))) {
        m_window->StartTimer(TStepWindow::kLongWorkMs);
    }
    void Begin(const std::string&, std::int64_t, std::int64_t) override {}
    [[nodiscard]] bool StepTo(std::int64_t) override {
        m_window->StepProgress();
        return !m_window->Cancelled();
    }

private:
    std::unique_ptr<TfrmSmallPrBar> m_window;
};

} // namespace

std::unique_ptr<TProgress> MakeBusyProgress(const std::string& reason) {
    return std::make_unique<TBusyProgress>(reason);
}

std::unique_ptr<TProgress> MakeLargeProgress(const std::string& reason) {
    return std::make_unique<TLargeProgress>(reason);
}

TProgressWindow::TProgressWindow()
    : m_window(ShowProgress(QObject::tr("Processing..."), kParts, /*withCancel*/ true, /*showNow*/ true)) {
    m_window->StartTimer(TStepWindow::kLongWorkMs);
}

TProgressWindow::~TProgressWindow() = default;

void TProgressWindow::Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) {
    m_window->ResetProgress(QString::fromStdString(caption), kParts);
    m_minimum = minimum;
    m_maximum = maximum;
    m_partsDone = 0;
}

bool TProgressWindow::StepTo(std::int64_t position) {
    const int parts = PartsDone(m_minimum, m_maximum, position);
    m_window->StepProgress(parts - m_partsDone);
    m_partsDone = parts;
    return !m_window->Cancelled();
}

} // namespace lumoplot
