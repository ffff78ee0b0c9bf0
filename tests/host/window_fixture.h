// The main window of the plotting application, shown and driven by input events, with settings and files of
// its own.
#pragma once

#include "common/places.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "host/main_window.h"

#include <QClipboard>
#include <QFile>
#include <QLabel>
#include <QMessageBox>
#include <QSettings>
#include <QTemporaryDir>

namespace lumoplot {

class TWindowTest : public testing::Test {
protected:
    TWindowTest() {
        QLocale::setDefault(QLocale::c());
        QCoreApplication::setOrganizationName(QStringLiteral("lumoplot-tests"));
        QSettings::setDefaultFormat(QSettings::IniFormat);
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, PathOf("settings"));
        Window = std::make_unique<TMainWindow>(PathOf("templates"));
        Window->show();
        Window->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(Window.get()));
    }

    QString PathOf(const char* name) const { return Folder.filePath(QString::fromUtf8(name)); }
    static QString Example(const char* name) {
        return QString::fromStdString(SourceFile("examples/")) + QString::fromUtf8(name);
    }
    QString Write(const char* name, const QByteArray& content) const {
        QFile file(PathOf(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(content);
        return file.fileName();
    }
    static QByteArray Read(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void Open(const QString& file) { Window->OpenFiles({file}); }
    void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        Window->activateWindow(); // without a window manager nobody does so when a dialog closes
        ASSERT_TRUE(QTest::qWaitForWindowActive(Window.get()));
        QTest::keyClick(Window.get(), key, modifiers);
    }
    /// Presses a button of the message box that is shown next.
    static void AnswerBox(QMessageBox::StandardButton button, std::function<void()> before = {}) {
        WhenModal<QMessageBox>([button, before](QMessageBox& box) {
            if (before) before();
            QTest::mouseClick(box.button(button), Qt::LeftButton);
        });
    }

    /// Pastes a path into a file dialog, as a whole: typed letter by letter, the toolkit's dialog selects
    /// each folder on the way and goes into it first.
    static void EnterPath(QFileDialog& dialog, const QString& path) {
        auto& edit = Control<QLineEdit>(dialog, "fileNameEdit");
        edit.setCompleter(nullptr); // its list would take the keys
        QGuiApplication::clipboard()->setText(path);
        edit.setFocus();
        QTest::keyClick(&edit, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_V, Qt::ControlModifier);
        QTest::keyClick(&edit, Qt::Key_Return);
    }
    /// Does so in the file dialog that is shown next.
    static void AnswerPath(const QString& path) {
        WhenModal<QFileDialog>([path](QFileDialog& dialog) { EnterPath(dialog, path); });
    }
    /// Runs `action` in the data editor when it is shown next.
    static void InEditor(std::function<void(QDialog&)> action) {
        auto* timer = new QTimer(qApp);
        QObject::connect(timer, &QTimer::timeout, qApp, [timer, action] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (!dialog || !dialog->objectName().endsWith(QStringLiteral("dataEdit"))) return;
            timer->stop();
            timer->deleteLater();
            action(*dialog);
        });
        timer->start(10);
    }

    TxyGraph& Graph() const { return Window->Graph(); }
    TSeries& First() const { return *Graph().FirstSeries(); }
    /// The graph as a file holds it.
    TBytes Content() const {
        Graph().PrepareForDrawing();
        TBytes bytes;
        Graph().SaveToStream(bytes, TPoints::Include);
        return bytes;
    }
    QString Rows() const { return Control<QLabel>(*Window, "l_Rows").text(); }

    TRecordingSink Sink;
    QTemporaryDir Folder;
    std::unique_ptr<TMainWindow> Window;
};

} // namespace lumoplot
