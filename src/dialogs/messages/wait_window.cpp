#include "dialogs/messages/wait_window.h"

#include "dialogs/messages/window_place.h"
#include "ui_wait_window.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QShowEvent>
#include <utility>

namespace lumoplot {

TfrmWait::TfrmWait(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::TfrmWait>()) {
    m_ui->setupUi(this);
}

TfrmWait::~TfrmWait() {
    RestoreCursor();
}

void TfrmWait::SetPosition(int percent) {
    m_ui->progressBar->setValue(percent);
}

void TfrmWait::showEvent(QShowEvent* event) {
    if (!event->spontaneous()) {
        adjustSize();
        CentreOnScreen(*this);
        if (!std::exchange(m_hasCursor, true)) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    QDialog::showEvent(event);
}

void TfrmWait::hideEvent(QHideEvent* event) {
    if (!event->spontaneous()) RestoreCursor();
    QDialog::hideEvent(event);
}

void TfrmWait::RestoreCursor() {
    if (std::exchange(m_hasCursor, false)) QGuiApplication::restoreOverrideCursor();
}

std::unique_ptr<QWidget> ShowWait(QWidget* owner, const QString& caption) {
    auto window = std::make_unique<TfrmWait>(owner);
    window->setWindowTitle(caption);
    window->show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents); // it paints itself
    return window;
}

} // namespace lumoplot
