#include "controls/tab_focus.h"

#include <QEvent>
#include <QTabBar>

namespace lumoplot {
namespace {

class TTabKeyFilter : public QObject {
public:
    explicit TTabKeyFilter(QTabBar& tabs) : QObject(&tabs), m_tabs(tabs) { tabs.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Shortcut) m_tabs.setFocus(Qt::ShortcutFocusReason);
        return QObject::eventFilter(watched, event);
    }

private:
    QTabBar& m_tabs;
};

} // namespace

void FocusByItsKeys(QTabBar& tabs) {
    new TTabKeyFilter(tabs);
}

} // namespace lumoplot
