// What the window says follows from the graph that it shows, and texts that are made of files and their names
// are one line each.
#include "host/window_fixture.h"

#include "graph/mouse/graph_mouse.h"
#include "support/message_text.h"

#include <QMenu>
#include <QStatusBar>

namespace lumoplot {
namespace {

class StatusTexts : public TWindowTest {
protected:
    QString Notice() {
        Graph().grab();
        QCoreApplication::processEvents();
        return Control<QLabel>(*Window, "l_Notice").text();
    }
    void SetLogarithmic(bool value) {
        Window->Document().Session().Change("axis", [&] { Graph().YAxis()->SetLogScale(value); });
    }
};

TEST_F(StatusTexts, AValueThatALogarithmicAxisCanNotShowIsToldAsLongAsThereIsOne) {
    const QString text = QStringLiteral("counts has values that a logarithmic axis can not show");
    Open(Write("counts.csv", "t,counts\n1,0\n2,20\n3,5\n"));
    Window->Document().SaveTo(PathOf("counts.ltp"));
    EXPECT_EQ(Notice(), "");
    SetLogarithmic(true);
    EXPECT_EQ(Notice(), text);
    Window->Document().Session().Undo();
    EXPECT_EQ(Notice(), "");
    Window->Document().Session().Redo();
    EXPECT_EQ(Notice(), text);
    Window->Document().Open(PathOf("counts.ltp"));
    EXPECT_EQ(Notice(), "") << "another graph is shown";
    SetLogarithmic(true);
    Window->Document().New();
    EXPECT_EQ(Notice(), "");
}

TEST_F(StatusTexts, TheCountOfRowsFollowsDeletionsAndUndo) {
    Open(Write("run.csv", "1,10\n2,20\n3,5\n4,12\n"));
    EXPECT_EQ(Rows(), "1 data set, all 4 rows");
    Window->Document().Session().Change("delete point", [&] { First().DeletePoint(First().First().Id()); });
    EXPECT_EQ(Rows(), "1 data set, drawn from 3 of 4 rows");
    Window->Document().Session().Undo();
    EXPECT_EQ(Rows(), "1 data set, all 4 rows");
    Window->Document().Session().Change("delete data set", [&] { Graph().DeleteSeries(1); });
    EXPECT_EQ(Rows(), "No data");
}

TEST_F(StatusTexts, PointsByHandAreNoRows) {
    Open(Write("run.csv", "1,10\n2,20\n3,5\n4,12\n"));
    Click(*Window, "btnDeletePoint");
    Graph().grab();
    const TPlotMap& map = *Graph().Mouse().Map();
    const TSeriesPoint point = First().Points().First().Next().Point();
    const QPoint place = QPointF(map.X.Position(point.X), map.Y.Position(point.Y)).toPoint();
    for (int i = 0; i < 2; ++i) QTest::mouseClick(&Graph(), Qt::LeftButton, {}, place); // asks first
    EXPECT_EQ(First().Count(), 3);
    EXPECT_EQ(Rows(), "1 data set, 3 points");
}

// Windows takes no control characters.
#if defined(Q_OS_WIN)
constexpr const char* kTwoLines = "two\xE2\x80\xA8lines";
#else
constexpr const char* kTwoLines = "two\nlines\x1b[2J";
#endif

TEST_F(StatusTexts, ABrokenFileIsToldInOneLineThatNamesIt) {
    const QByteArray longName(100, 'n');
    for (const QByteArray& name :
         {QByteArray("plain"), QByteArray(kTwoLines), QByteArray("safe\xE2\x80\xAEvsc"), longName})
        for (const char* suffix : {".ltp", ".lds", ".csv"}) {
            const QByteArray file = name + suffix;
            SCOPED_TRACE(file.toStdString());
            Sink.Texts.clear();
            for (const QByteArray& content : {QByteArray(), QByteArray("\x01\x02 nothing\n of use")})
                Open(Write(file.constData(), content));
            ASSERT_EQ(Sink.Texts.size(), 2u);
            for (const std::string& text : Sink.Texts) {
                EXPECT_EQ(text, ShownLine(text));
                EXPECT_NE(text.find(ShownLine(file.toStdString()).substr(0, 4)), std::string::npos) << text;
                EXPECT_EQ(text.find("conversion error"), std::string::npos) << text;
                EXPECT_EQ(text.find("Stream"), std::string::npos) << text;
                const bool isText = file.endsWith(".csv");
                EXPECT_TRUE(isText || text.find(". Choose ") != std::string::npos) << text << ": what to do";
            }
        }
    EXPECT_TRUE(Graph().Series().empty());
}

TEST_F(StatusTexts, TheNameOfAFileIsShownInOneLine) {
    for (const QByteArray& name : {kTwoLines + QByteArray(".ltp"), QByteArray(120, 'n') + ".ltp"}) {
        const QString file = PathOf(name.constData());
        Graph().SaveTemplate(file.toStdString(), TPoints::Include);
        Open(file);
        ASSERT_EQ(Sink.Texts.size(), 0u) << Sink.Only();
        Press(Qt::Key_S);
        QStringList shown = {Window->windowTitle(), Window->statusBar()->currentMessage()};
        auto& menu = Control<QMenu>(*Window, "m_Recent");
        Q_EMIT menu.aboutToShow();
        shown += menu.actions().value(0)->text();
        shown += menu.actions().value(0)->statusTip();
        for (const QString& text : shown) {
            EXPECT_FALSE(text.isEmpty());
            EXPECT_EQ(text.toStdString(), ShownLine(text.toStdString()));
        }
    }
}

} // namespace
} // namespace lumoplot
