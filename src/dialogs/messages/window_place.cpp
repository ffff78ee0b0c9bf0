#include "dialogs/messages/window_place.h"

#include <QApplication>
#include <QScreen>
#include <QWidget>

namespace lumoplot {
namespace {

constexpr QSize kFrame(16, 48); // about what a window manager adds

} // namespace

QWidget* MainWindow() {
    if (QWidget* active = QApplication::activeWindow()) return active;
    for (QWidget* window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->isWindow()) return window;
    return nullptr;
}

QSize RoomOnScreen(const QWidget& window) {
    return window.screen()->availableSize() - kFrame;
}

void CentreOnScreen(QWidget& window) {
    const QWidget* owner = window.parentWidget();
    const QRect room = (owner ? owner->screen() : window.screen())->availableGeometry();
    window.move(room.center() - QRect(QPoint(), window.size()).center());
}

} // namespace lumoplot
