#include "common/keyboard_walk.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QTabBar>
#include <algorithm>
#include <gtest/gtest.h>
#include <map>

namespace lumoplot {
namespace {

constexpr int kLongestRound = 500;

bool IsInside(const QWidget& control) {
    const QWidget* parent = control.parentWidget();
    if (qobject_cast<const QHeaderView*>(&control) || control.objectName().startsWith(QLatin1String("qt_")))
        return true;
    // What a tool bar has, the menus have too.
    if (parent && parent->inherits("QToolBar") && qobject_cast<const QAbstractButton*>(&control)) return true;
    return parent &&
           (qobject_cast<const QAbstractSpinBox*>(parent) || qobject_cast<const QComboBox*>(parent) ||
            qobject_cast<const QLineEdit*>(parent) || qobject_cast<const QTabBar*>(parent) ||
            qobject_cast<const QMenuBar*>(parent) || qobject_cast<const QAbstractItemView*>(parent));
}

bool IsControl(const QWidget& widget) {
    return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QLineEdit*>(&widget) ||
           qobject_cast<const QComboBox*>(&widget) || qobject_cast<const QAbstractSpinBox*>(&widget) ||
           qobject_cast<const QPlainTextEdit*>(&widget) || qobject_cast<const QAbstractItemView*>(&widget) ||
           qobject_cast<const QTabBar*>(&widget) || widget.inherits("lumoplot::TxyGraph");
}

/// Those that can be used now.
std::vector<QWidget*> ControlsOf(const QWidget& window) {
    std::vector<QWidget*> controls;
    for (QWidget* widget : window.findChildren<QWidget*>())
        if (widget->isVisible() && widget->isEnabled() && widget->window() == &window && IsControl(*widget) &&
            !IsInside(*widget))
            controls.push_back(widget);
    return controls;
}

std::string NameOf(const QWidget& control) {
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    const QString text = button ? button->text() : QString();
    return std::string(control.metaObject()->className()) + " " + control.objectName().toStdString() + " " +
           text.toStdString();
}

/// Of a group of which one is chosen Tab finds that one, and the cursor keys the others.
bool IsUnchosen(const QWidget& control) {
    const auto* button = qobject_cast<const QAbstractButton*>(&control);
    const bool isOneOf =
        button && (button->autoExclusive() || (button->group() && button->group()->exclusive()));
    return isOneOf && button->isCheckable() && !button->isChecked();
}

std::string Joined(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

void AddKey(std::map<QString, std::vector<std::string>>& keys, const QString& caption,
            const QKeySequence& key) {
    if (!key.isEmpty() && key.toString().startsWith(QLatin1String("Alt+")))
        keys[key.toString()].push_back(caption.toStdString());
}

} // namespace

std::vector<QWidget*> TabRound(QWidget& window, Qt::Key key) {
    std::vector<QWidget*> round;
    for (int i = 0; i < kLongestRound; ++i) {
        QWidget* focus = window.focusWidget();
        if (!focus || std::ranges::find(round, focus) != round.end()) break;
        round.push_back(focus);
        QKeyEvent press(QEvent::KeyPress, key, key == Qt::Key_Backtab ? Qt::ShiftModifier : Qt::NoModifier);
        QApplication::sendEvent(focus, &press);
    }
    return round;
}

void ExpectEveryControlReached(QWidget& window) {
    const std::vector<QWidget*> controls = ControlsOf(window);
    for (const Qt::Key key : {Qt::Key_Tab, Qt::Key_Backtab}) {
        QWidget* start = window.focusWidget();
        const std::vector<QWidget*> round = TabRound(window, key);
        EXPECT_EQ(window.focusWidget(), start)
            << "from " << NameOf(*start) << " the round ends in a ring at " << NameOf(*window.focusWidget());
        std::vector<std::string> missed;
        for (QWidget* control : controls) {
            const auto isIt = [&](QWidget* w) { return w == control || w->focusProxy() == control; };
            if (!IsUnchosen(*control) && std::ranges::none_of(round, isIt))
                missed.push_back(NameOf(*control));
        }
        EXPECT_TRUE(missed.empty()) << (key == Qt::Key_Tab ? "Tab" : "Shift+Tab") << " misses "
                                    << Joined(missed);
    }
}

void ExpectKeysAreClear(QWidget& window) {
    std::map<QString, std::vector<std::string>> keys;
    for (QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible() || !widget->isEnabled() || widget->window() != &window) continue;
        if (const auto* button = qobject_cast<QAbstractButton*>(widget))
            AddKey(keys, button->text(), button->shortcut());
        if (const auto* label = qobject_cast<QLabel*>(widget); label && label->buddy())
            AddKey(keys, label->text(), QKeySequence::mnemonic(label->text()));
        if (const auto* tabs = qobject_cast<QTabBar*>(widget))
            for (int i = 0; i < tabs->count(); ++i)
                AddKey(keys, tabs->tabText(i), QKeySequence::mnemonic(tabs->tabText(i)));
        if (const auto* bar = qobject_cast<QMenuBar*>(widget))
            for (const QAction* action : bar->actions())
                AddKey(keys, action->text(), QKeySequence::mnemonic(action->text()));
    }
    const auto expectOnce = [](const auto& captionsOfKeys) {
        for (const auto& [key, captions] : captionsOfKeys)
            EXPECT_EQ(captions.size(), 1u) << key.toStdString() << ": " << Joined(captions);
    };
    expectOnce(keys);
    for (const QMenu* menu : window.findChildren<QMenu*>()) {
        std::map<QString, std::vector<std::string>> entries;
        for (const QAction* action : menu->actions())
            AddKey(entries, action->text(), QKeySequence::mnemonic(action->text()));
        expectOnce(entries);
    }
}

void ExpectEveryControlNamed(QWidget& window) {
    for (QWidget* control : ControlsOf(window)) {
        QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(control);
        ASSERT_TRUE(seen) << NameOf(*control);
        const bool isTabs = qobject_cast<QTabBar*>(control) != nullptr;
        EXPECT_TRUE(isTabs || !seen->text(QAccessible::Name).trimmed().isEmpty()) << NameOf(*control);
    }
}

} // namespace lumoplot
