#include "dialogs/edit_script.h"

#include "common/window_driver.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTemporaryDir>
#include <QToolButton>

namespace lumoplot {
namespace {

using TLines = std::vector<std::string>;

class EditScriptTest : public testing::Test {
protected:
    /// Runs the editor on the lines, lets `act` work in it, and returns whether they were accepted.
    bool Edit(std::function<void(TfrmEditScript&)> act) {
        WhenModal<TfrmEditScript>([act](TfrmEditScript& window) {
            act(window);
            if (window.isVisible()) window.reject();
        });
        return EditScript(nullptr, &Lines, "Settings", &Changed);
    }
    static QPlainTextEdit& Text(TfrmEditScript& window) {
        return Control<QPlainTextEdit>(window, "m_Script");
    }
    /// Opens the context menu and clicks an entry.
    static void Choose(TfrmEditScript& window, const QString& caption) {
        auto* timer = new QTimer(&window);
        QObject::connect(timer, &QTimer::timeout, &window, [timer, caption] {
            auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!menu) return;
            timer->stop();
            timer->deleteLater();
            for (const QAction* action : menu->actions())
                if (action->text() == caption)
                    return QTest::mouseClick(menu, Qt::LeftButton, {},
                                             menu->actionGeometry(const_cast<QAction*>(action)).center());
            ADD_FAILURE() << "no entry " << caption.toStdString();
            menu->close();
        });
        timer->start(10);
        QWidget& viewport = *Text(window).viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(20, 20),
                                viewport.mapToGlobal(QPoint(20, 20)));
        QApplication::sendEvent(&viewport, &event);
    }

    TLines Lines = {"one", "two", "three"};
    bool Changed = false;
};

TEST_F(EditScriptTest, OkHandsTheEditedLinesBack) {
    EXPECT_TRUE(Edit([](TfrmEditScript& window) {
        EXPECT_EQ(window.windowTitle(), "Settings");
        QTest::keyClicks(&Text(window), "zero");
        QTest::keyClick(&Text(window), Qt::Key_Return);
        Click(window, "btnOk");
    }));
    EXPECT_EQ(Lines, (TLines{"zero", "one", "two", "three"}));
    EXPECT_TRUE(Changed);
}

TEST_F(EditScriptTest, CloseDiscardsWhatWasTyped) {
    EXPECT_FALSE(Edit([](TfrmEditScript& window) {
        QTest::keyClicks(&Text(window), "x");
        QTest::keyClick(&Text(window), Qt::Key_Backspace);
        Click(window, "btnClose");
    }));
    EXPECT_EQ(Lines, (TLines{"one", "two", "three"}));
    EXPECT_TRUE(Changed) << "whatever the text is now";
}

TEST_F(EditScriptTest, PrintsIntoAFileAndShowsAPreview) {
    QTemporaryDir folder;
    const QString file = folder.filePath("script.pdf");
    Lines.assign(200, "a line");
    Edit([&](TfrmEditScript& window) {
        const auto printTo = [&](const QString& entry) {
            WhenModal<QPrintDialog>([&](QPrintDialog& dialog) {
                dialog.printer()->setOutputFormat(QPrinter::PdfFormat);
                dialog.printer()->setOutputFileName(file);
                dialog.done(QDialog::Accepted);
            });
            Choose(window, entry);
            QFile printed(file);
            EXPECT_TRUE(printed.open(QIODevice::ReadOnly)) << entry.toStdString();
            return printed.readAll().count("/Type /Page\n");
        };
#if defined(Q_OS_WIN) // whose own dialog wants a printer
        static_cast<void>(printTo);
#else
        EXPECT_GT(printTo("&Print"), 2);
        QTest::keyClick(&Text(window), Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(printTo("Print &Selection"), 1);
#endif
        bool isShown = false;
        WhenModal<QPrintPreviewDialog>([&](QPrintPreviewDialog& dialog) {
            isShown = true;
            dialog.reject();
        });
        Choose(window, "Print Pre&view");
        EXPECT_TRUE(isShown);
    });
}

} // namespace
} // namespace lumoplot
