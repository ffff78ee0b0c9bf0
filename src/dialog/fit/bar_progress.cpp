#include "dialog/fit/bar_progress.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QProgressBar>
#include <QPushButton>

namespace lumoplot {
namespace {

constexpr int kEventsEveryMs = 20;
constexpr int kBarSteps = 1000;

} // namespace

TBarProgress::TBarProgress(QProgressBar& bar, QPushButton& cancel, std::initializer_list<QWidget*> waiting)
    : m_bar(&bar), m_cancel(&cancel), m_waiting(waiting.begin(), waiting.end()) {
    for (const auto& widget : m_waiting) widget->setEnabled(false);
    bar.setRange(0, kBarSteps);
    bar.setValue(0);
    bar.show();
    cancel.setEnabled(true);
    cancel.show();
    cancel.setFocus();
    connect(&cancel, &QPushButton::clicked, this, [this] { m_wasCancelled = true; });
    bar.window()->installEventFilter(this);
    m_sinceEvents.start();
}

TBarProgress::~TBarProgress() {
    for (const auto& widget : m_waiting)
        if (widget) widget->setEnabled(true);
    if (m_bar) m_bar->hide();
    if (m_cancel) m_cancel->hide();
}

void TBarProgress::Begin(const std::string& caption, std::int64_t minimum, std::int64_t maximum) {
    if (m_bar) m_bar->setFormat(QString::fromStdString(caption) + QStringLiteral(" %p%"));
    m_minimum = minimum;
    m_maximum = maximum;
}

bool TBarProgress::StepTo(std::int64_t position) {
    if (m_sinceEvents.elapsed() < kEventsEveryMs) return !m_wasCancelled;
    if (m_bar && m_maximum > m_minimum)
        m_bar->setValue(static_cast<int>(kBarSteps * (position - m_minimum) / (m_maximum - m_minimum)));
    QCoreApplication::processEvents();
    m_sinceEvents.restart();
    return !m_wasCancelled;
}

// The window stays until the work has stopped.
bool TBarProgress::eventFilter(QObject* watched, QEvent* event) {
    const bool isEscape =
        event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    if (event->type() == QEvent::Close || isEscape) {
        m_wasCancelled = true;
        event->ignore();
        return true;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace lumoplot
