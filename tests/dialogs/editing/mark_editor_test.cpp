#include "dialogs/editing/mark_editor.h"

#include "common/keyboard_walk.h"
#include "common/recording_sink.h"
#include "common/window_driver.h"

#include <QListWidget>
#include <QPlainTextEdit>

namespace lumoplot {
namespace {

class MarkEditor : public testing::Test {
protected:
    /// Shows the editor on these marks.
    void Show(std::initializer_list<TGraphMark> marks) {
        for (const TGraphMark& mark : marks) Graph.AddMark(mark);
        Editor = std::make_unique<TxyMark>(Graph, nullptr);
        Editor->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Editor.get()));
    }
    template <class TControl>
    TControl& Find(const char* name) {
        return Control<TControl>(*Editor, name);
    }
    QListWidget& List() { return Find<QListWidget>("m_Marks"); }
    std::string Entry(int row) { return List().item(row)->text().toStdString(); }
    void Select(int row) {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {},
                          List().visualItemRect(List().item(row)).center());
    }
    const TGraphMark& Mark(int id) { return *Graph.Marks().Find(id); }

    TRecordingSink Sink;
    TxyGraph Graph;
    std::unique_ptr<TxyMark> Editor;
};

TEST_F(MarkEditor, CoordinatesAreWrittenWhenTheirEditIsLeftAndByEnter) {
    Show({{.X1 = 1, .TypeOfMark = TMarkType::Line}});
    Select(0);
    Type(*Editor, "e_X1", "2.5");
    Find<QWidget>("e_Y1").setFocus();
    EXPECT_EQ(Mark(1).X1, 2.5);
    Type(*Editor, "e_Y1", "7");
    EXPECT_EQ(Mark(1).Y1, 0);
    QTest::keyClick(&Find<QLineEdit>("e_Y1"), Qt::Key_Return);
    EXPECT_EQ(Mark(1).Y1, 7);
    EXPECT_TRUE(Editor->isVisible());
    for (const char* text : {".", "", "abc"}) {
        Type(*Editor, "e_X1", QString::fromLatin1(text));
        Find<QWidget>("e_Y1").setFocus();
        EXPECT_EQ(Mark(1).X1, 2.5) << text;
        EXPECT_EQ(Find<QLineEdit>("e_X1").text(), "2.5") << text;
    }
    Type(*Editor, "e_X1", "9");
    Editor->close();
    EXPECT_EQ(Mark(1).X1, 9);
}

TEST_F(MarkEditor, TheListShowsTheFirstLineOfTheText) {
    Show({{.Caption = "a"}, {.Caption = "b"}});
    Select(1);
    auto& text = Find<QPlainTextEdit>("m_Text");
    text.setFocus();
    QTest::keyClicks(&text, "lower");
    QTest::keyClick(&text, Qt::Key_Return);
    EXPECT_EQ(Entry(1), "2: lower\xE2\x80\xA6");
    QCoreApplication::processEvents();
    EXPECT_EQ(Mark(2).Caption, "lower\nb") << "Enter takes it";
    QTest::keyClicks(&text, "our ");
    Find<QWidget>("btnNew").setFocus();
    EXPECT_EQ(Mark(2).Caption, "lower\nour b") << "so does to leave it";
    text.setFocus();
    QTest::keyClicks(&text, "limit ");
    Select(0);
    EXPECT_EQ(Mark(2).Caption, "lower\nour limit b");
    EXPECT_EQ(Mark(1).Caption, "a");
    EXPECT_EQ(text.toPlainText(), "a");
}

TEST_F(MarkEditor, MarksAreAddedDeletedAndCleared) {
    Show({});
    Click(*Editor, "btnClearAll");
    EXPECT_TRUE(Sink.Texts.empty());
    Click(*Editor, "btnNew");
    Click(*Editor, "btnNew");
    EXPECT_EQ(List().currentRow(), 1);
    Click(*Editor, "btnDelete");
    EXPECT_EQ(Graph.Marks().Count(), 1);
    EXPECT_EQ(List().currentRow(), -1);
    Sink.Answer = false;
    Click(*Editor, "btnClearAll");
    EXPECT_EQ(Sink.Only(), "Clear All Marks?");
    EXPECT_EQ(Graph.Marks().Count(), 1);
    Sink.Answer = true;
    Click(*Editor, "btnClearAll");
    EXPECT_EQ(List().count(), 0);
    Click(*Editor, "cb_ShowMarks");
    EXPECT_TRUE(Graph.Appearance()->ShowMarks());
}

TEST_F(MarkEditor, TheResultTellsWhetherItWasClosedByOk) {
    WhenModal<TxyMark>([](TxyMark& editor) { lumoplot::Click(editor, "btnOk"); });
    EXPECT_TRUE(EditMarks(nullptr, Graph));
    WhenModal<TxyMark>([](TxyMark& editor) { QTest::keyClick(&editor, Qt::Key_Escape); });
    EXPECT_FALSE(EditMarks(nullptr, Graph));
}

TEST_F(MarkEditor, TheKeyboardReachesEverything) {
    Show({{.X1 = 1, .TypeOfMark = TMarkType::Line}});
    Select(0);
    ExpectEveryControlReached(*Editor);
    ExpectKeysAreClear(*Editor);
    ExpectEveryControlNamed(*Editor);
}

} // namespace
} // namespace lumoplot
