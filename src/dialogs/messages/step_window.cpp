#include "dialogs/messages/step_window.h"

#include <QApplication>
#include <QCloseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumoplot {
namespace {

/// The bar moves by this part of its length at least, which the eye takes for single steps: a bar that moves
/// more often takes more time than the work.
constexpr int kMovesOfBar = 1000;

} // namespace

TStepWindow::TStepWindow(QWidget* owner) : QDialog(owner, Qt::Dialog | Qt::WindowStaysOnTopHint) {
    setWindowModality(Qt::ApplicationModal);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TStepWindow::ShowUnlessAsked);
}

void TStepWindow::StartTimer(int milliseconds) {
    m_over = QApplication::activeModalWidget();
    m_timer.start(milliseconds);
}

void TStepWindow::ShowUnlessAsked() {
    if (m_noAutoShow) return;
    const QWidget* asking = QApplication::activeModalWidget();
    if (asking && asking != m_over)
        m_timer.start();
    else
        show();
}

void TStepWindow::SetControls(QProgressBar* bar, QPushButton* cancel) {
    m_bar = bar;
    m_cancel = cancel;
    connect(m_cancel, &QPushButton::clicked, this, &TStepWindow::close);
}

void TStepWindow::ResetProgress(const QString& caption, int count) {
    setWindowTitle(caption);
    m_bar->setRange(0, std::max(1, count));
    m_bar->setValue(0);
    m_hiddenSteps = m_stepsToShow = 0;
}

void TStepWindow::StepProgress(int steps) {
    ProcessPending();
    if (m_cancelled) return;
    if (isVisible())
        Advance(steps);
    else
        m_hiddenSteps += steps;
}

void TStepWindow::ProcessPending() {
    if (m_processing || (m_sinceEvents.isValid() && m_sinceEvents.elapsed() < kEventsEveryMs)) return;
    m_processing = true;
    QCoreApplication::processEvents(isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    m_processing = false;
    m_sinceEvents.start();
}

void TStepWindow::Advance(int steps) {
    m_stepsToShow += steps;
    if (std::abs(m_stepsToShow) < m_bar->maximum() / kMovesOfBar) return;
    m_bar->setValue(std::min(m_bar->value() + std::exchange(m_stepsToShow, 0), m_bar->maximum()));
}

void TStepWindow::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous()) Advance(m_hiddenSteps);
}

void TStepWindow::hideEvent(QHideEvent* event) {
    QDialog::hideEvent(event);
    if (!event->spontaneous()) m_hiddenSteps = 0;
}

void TStepWindow::closeEvent(QCloseEvent* event) {
    m_cancelled = true;
    m_timer.stop();
    QDialog::closeEvent(event);
}

void TStepWindow::reject() {
    if (m_cancelled)
        QDialog::reject();
    else if (!m_cancel->isHidden())
        close();
}

} // namespace lumoplot
