#include "dialogs/edit_script.h"

#include "common/window_driver.h"

#include <QClipboard>
#include <QColorDialog>
#include <QContextMenuEvent>
#include <QFontDialog>
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

TEST_F(EditScriptTest, AcceptedWithoutAnEditNothingHasChanged) {
    Lines = {"", "größer als µ", ""};
    const TLines before = Lines;
    EXPECT_TRUE(Edit([](TfrmEditScript& window) { Choose(window, "O&K"); }));
    EXPECT_EQ(Lines, before);
    EXPECT_FALSE(Changed);
    EXPECT_FALSE(Edit([](TfrmEditScript& window) { Choose(window, "C&lose"); }));
}

TEST_F(EditScriptTest, NoLinesShowNothing) {
    Changed = true;
    EXPECT_FALSE(EditScript(nullptr, nullptr, "Settings", &Changed));
    EXPECT_FALSE(Changed);
}

TEST_F(EditScriptTest, TheMenuEditsTheText) {
    EXPECT_TRUE(Edit([](TfrmEditScript& window) {
        QPlainTextEdit& text = Text(window);
        QTest::keyClick(&text, Qt::Key_End, Qt::ShiftModifier);
        Choose(window, "&Copy");
        EXPECT_EQ(QApplication::clipboard()->text(), "one");
        Choose(window, "Cu&t");
        EXPECT_EQ(text.toPlainText(), "\ntwo\nthree");
        QTest::keyClick(&text, Qt::Key_End, Qt::ControlModifier);
        Choose(window, "&Paste");
        EXPECT_EQ(text.toPlainText(), "\ntwo\nthreeone");
        Choose(window, "C&lear All");
        EXPECT_EQ(text.toPlainText(), "");
        QTest::keyClick(&text, Qt::Key_Z, Qt::ControlModifier);
        EXPECT_EQ(text.toPlainText(), "\ntwo\nthreeone") << "clearing can be undone";
        Choose(window, "C&lear All");
        Click(window, "btnOk");
    }));
    EXPECT_EQ(Lines, TLines());
}

TEST_F(EditScriptTest, WrapFontAndColorAreChosen) {
    Edit([](TfrmEditScript& window) {
        QPlainTextEdit& text = Text(window);
        EXPECT_EQ(text.lineWrapMode(), QPlainTextEdit::NoWrap);
        Choose(window, "&Word Wrap");
        EXPECT_EQ(text.lineWrapMode(), QPlainTextEdit::WidgetWidth);
        Choose(window, "&Word Wrap");
        EXPECT_EQ(text.lineWrapMode(), QPlainTextEdit::NoWrap);
        WhenModal<QFontDialog>([](QFontDialog& dialog) {
            dialog.setCurrentFont(QFont("Liberation Serif", 17));
            dialog.accept();
        });
        Choose(window, "Set &Font");
        EXPECT_EQ(text.font().pointSize(), 17);
        WhenModal<QColorDialog>([](QColorDialog& dialog) {
            dialog.setCurrentColor(QColor(10, 20, 40));
            dialog.accept();
        });
        Choose(window, "Set &Background Color");
        EXPECT_EQ(text.palette().color(QPalette::Base), QColor(10, 20, 40));
        EXPECT_EQ(text.palette().color(QPalette::Text), QColor(Qt::white)) << "readable on it";
        WhenModal<QColorDialog>([](QColorDialog& dialog) { dialog.reject(); });
        Choose(window, "Set &Background Color");
        EXPECT_EQ(text.palette().color(QPalette::Base), QColor(10, 20, 40));
    });
    EXPECT_FALSE(Changed) << "the text is the same";
}

TEST_F(EditScriptTest, TheButtonsKeepTheirDistanceFromTheRightEdge) {
    Edit([](TfrmEditScript& window) {
        for (const int width : {560, 900, 400}) {
            window.resize(width, 300);
            EXPECT_EQ(Control<QWidget>(window, "btnClose").x(), width - 150);
            EXPECT_EQ(Control<QWidget>(window, "btnOk").x(), width - 70);
        }
        EXPECT_EQ(Control<QWidget>(window, "btnOk").toolTip(), "Save changes and close");
        EXPECT_EQ(Control<QWidget>(window, "btnClose").toolTip(), "Discard changes");
    });
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
        EXPECT_GT(printTo("&Print"), 2);
        QTest::keyClick(&Text(window), Qt::Key_Down, Qt::ShiftModifier);
        EXPECT_EQ(printTo("Print &Selection"), 1);
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
