// Drives windows as a person does: finds a control by its name, clicks and types with input events.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <functional>
#include <gtest/gtest.h>

namespace lumoplot {

/// The control of that name below a window; a failure and a crash-free stop when there is none.
template <class TControl>
TControl& Control(QWidget& window, const char* name) {
    auto* control = window.findChild<TControl*>(QString::fromLatin1(name));
    if (!control) throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

inline void Click(QWidget& window, const char* name) {
    auto& button = Control<QAbstractButton>(window, name);
    QTest::mouseClick(&button, Qt::LeftButton, {},
                      QPoint(std::min(8, button.width() / 2), button.height() / 2));
}

/// Selects all of an edit and types a text over it.
inline void Type(QWidget& window, const char* name, const QString& text) {
    auto& edit = Control<QWidget>(window, name);
    edit.setFocus();
    QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
    if (text.isEmpty())
        QTest::keyClick(&edit, Qt::Key_Delete);
    else
        QTest::keyClicks(&edit, text);
}

/// Walks a list to an item with the cursor keys.
inline void Choose(QWidget& window, const char* name, int item) {
    auto& list = Control<QComboBox>(window, name);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Home);
    for (int i = 0; i < item; ++i) QTest::keyClick(&list, Qt::Key_Down);
    ASSERT_EQ(list.currentIndex(), item) << name;
}

/// Runs `action` as soon as a modal window of that type (and of that name, where one is given) is shown.
template <class TWindow>
void WhenModal(std::function<void(TWindow&)> action, const char* name = nullptr) {
    auto* timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, qApp, [timer, action, name] {
        auto* window = qobject_cast<TWindow*>(QApplication::activeModalWidget());
        if (!window || !window->windowHandle() || !window->windowHandle()->isExposed()) return;
        if (name && window->objectName() != QLatin1String(name)) return;
        timer->deleteLater();
        timer->stop();
        action(*window);
    });
    timer->start(10);
}

/// Closes the window of the next long work, as its Cancel button does, when that looks at its events for the
/// first time.
inline void CancelNextWork() {
    const auto cancel = [] {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->inherits("lumoplot::TStepWindow")) return static_cast<void>(window->close());
        QTimer::singleShot(1, qApp, &CancelNextWork);
    };
    QMetaObject::invokeMethod(qApp, cancel, Qt::QueuedConnection);
}

/// Types a file name into a file dialog and accepts it by its button.
inline void EnterFileName(QFileDialog& dialog, const QString& fileName) {
    Control<QLineEdit>(dialog, "fileNameEdit").setCompleter(nullptr); // its list would take the click
    Type(dialog, "fileNameEdit", fileName);
    const bool saving = dialog.acceptMode() == QFileDialog::AcceptSave;
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    auto* button = buttons->button(saving ? QDialogButtonBox::Save : QDialogButtonBox::Open);
    // The dialog looks for the file in a thread of its own.
    EXPECT_TRUE(QTest::qWaitFor([button] { return button->isEnabled(); })) << fileName.toStdString();
    QTest::mouseClick(button, Qt::LeftButton);
}

/// Does so in the file dialog that is shown next.
inline void AnswerFileDialog(const QString& fileName) {
    WhenModal<QFileDialog>([fileName](QFileDialog& dialog) { EnterFileName(dialog, fileName); });
}

} // namespace lumoplot
