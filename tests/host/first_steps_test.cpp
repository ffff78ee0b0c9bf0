// The window of somebody who has not read anything.
#include "common/clipping.h"
#include "common/keyboard_walk.h"
#include "graph/mouse/graph_mouse.h"
#include "host/picture_export_dialog.h"
#include "host/window_fixture.h"

#include <QTabWidget>
#include <QTextBrowser>

namespace lumoplot {
namespace {

using TFirstSteps = TWindowTest;

TEST_F(TFirstSteps, AnEmptyGraphOffersThreeWaysToBegin) {
    auto& page = Control<QWidget>(*Window, "startPage");
    EXPECT_TRUE(page.isVisible());
    for (const auto& [button, title] :
         {std::pair("btnOpenData", "Open Data"), {"btnOpenGraph", "Open Graph"}}) {
        QString shown;
        WhenModal<QFileDialog>([&](QFileDialog& dialog) {
            shown = dialog.windowTitle();
            dialog.reject();
        });
        Click(*Window, button);
        EXPECT_EQ(shown.toStdString(), title);
    }
    Click(*Window, "btnExample");
    ASSERT_EQ(Graph().Series().size(), 1u);
    EXPECT_FALSE(page.isVisible());
    EXPECT_FALSE(Window->isWindowModified());
    Press(Qt::Key_Z);
    EXPECT_TRUE(page.isVisible());
}

TEST_F(TFirstSteps, TheKeyboardReachesEverything) {
    ExpectEveryControlReached(*Window);
    ExpectKeysAreClear(*Window);
    ExpectEveryControlNamed(*Window);
    Open(Example("enso.csv"));
    ExpectEveryControlReached(*Window);
    ExpectKeysAreClear(*Window);
    ExpectEveryControlNamed(*Window);
}

TEST_F(TFirstSteps, NothingIsCutInAnyDress) {
    InEveryDress([this] {
        TMainWindow window(PathOf("templates"));
        window.resize(800, 560);
        window.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&window));
        ExpectNothingClipped(window);
        ExpectKeysAreClear(window);
        window.OpenFiles({Example("enso.csv")});
        ExpectNothingClipped(window);
        ExpectKeysAreClear(window);
        TPictureExportDialog picture(QSize(800, 600), &window);
        picture.show();
        ExpectNothingClipped(picture);
        ExpectKeysAreClear(picture);
    });
}

TEST_F(TFirstSteps, ADoubleClickOnACurveOpensItsGeneralPage) {
    Open(Write("a.csv", "t,u\n0,0\n10,0\n"));
    Open(Write("b.csv", "t,v\n0,1\n10,1\n"));
    First().SetLinesShown(true);
    Graph().FindSeries(2)->SetLinesShown(true);
    Graph().repaint();
    const TPlotMap map = *Graph().Mouse().Map();
    for (const int number : {1, 2}) {
        const QPointF place(map.X.Position(3.7), map.Y.Position(number - 1));
        QString page;
        QString name;
        InEditor([&](QDialog& editor) {
            auto& tabs = Control<QTabWidget>(editor, "tabs");
            page = tabs.tabText(tabs.currentIndex());
            name = Control<QLineEdit>(editor, "e_SeriesName").text();
            tabs.setCurrentIndex(2);
            editor.reject();
        });
        QTest::mouseDClick(&Graph(), Qt::LeftButton, {}, place.toPoint());
        EXPECT_EQ(page, "&General");
        EXPECT_EQ(name.toStdString(), Graph().FindSeries(number)->SeriesName());
    }
    QTest::mouseDClick(&Graph(), Qt::LeftButton, {}, map.Plot.center().toPoint()); // between both: no editor
}

TEST_F(TFirstSteps, F1ShowsTheManualAndItsPagesAreThere) {
    Press(Qt::Key_F1, Qt::NoModifier);
    auto* manual = Window->findChild<QDialog*>(QStringLiteral("manualWindow"));
    ASSERT_TRUE(manual && manual->isVisible());
    auto& text = Control<QTextBrowser>(*manual, "m_Manual");
    EXPECT_TRUE(text.toPlainText().contains(QStringLiteral("From a file to a figure")));
    for (const char* page : {"general.md", "text-import.md", "regressions.md", "curve-fitting.md",
                             "filtering.md", "editing.md", "drawing.md", "expressions.md"})
        EXPECT_TRUE(QFile::exists(QStringLiteral(":/lumoplot/manual/") + QString::fromLatin1(page))) << page;
}

} // namespace
} // namespace lumoplot
