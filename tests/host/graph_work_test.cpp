// What a person does with a shown graph: edits its data, its axes, its templates, and takes pictures of it.
#include "graph/mouse/graph_mouse.h"
#include "host/printing.h"
#include "host/window_fixture.h"
#include "support/errors.h"
#include "support/progress.h"

#include <QCheckBox>
#include <QImage>
#include <QListWidget>
#include <QMenu>
#include <QPrinter>
#include <QSpinBox>
#if defined(QT_SVG_LIB)
#include <QSvgRenderer>
#endif
#include <QTimer>

namespace lumoplot {
namespace {

class GraphWork : public TWindowTest {
protected:
    GraphWork() {
        Open(Example("enso.csv"));
        Window->Document().SaveTo(PathOf("graph.ltp"));
    }
};

TEST_F(GraphWork, EditorChangesTheGraphOnlyWithOk) {
    const TBytes before = Content();
    const auto rename = [](const char* button) {
        InEditor([button](QDialog& dialog) {
            Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
            Click(dialog, button);
        });
    };
    rename("btnCancel");
    Press(Qt::Key_D);
    EXPECT_EQ(Content(), before);
    EXPECT_FALSE(Window->isWindowModified());
    rename("btnOk");
    Press(Qt::Key_D);
    EXPECT_EQ(First().SeriesName(), "renamed");
    EXPECT_TRUE(Window->isWindowModified());
}

TEST_F(GraphWork, EditorThatChangesNothingLeavesTheGraphUnmodified) {
    InEditor([](QDialog& dialog) { Click(dialog, "btnOk"); });
    Press(Qt::Key_D);
    EXPECT_FALSE(Window->isWindowModified());
    EXPECT_EQ(First().Count(), 168);
}

TEST_F(GraphWork, FileOpenedWithTheEditorBecomesADataSet) {
    WhenModal<QFileDialog>([](QFileDialog& chooser) {
        InEditor([](QDialog& dialog) { Click(dialog, "btnOk"); });
        EnterPath(chooser, Example("gauss1.dat"));
    });
    Press(Qt::Key_D, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_EQ(Graph().Series().size(), 2u);
    EXPECT_TRUE(Window->isWindowModified());
}

TEST_F(GraphWork, DefaultOfTheEditorIsTheLookOfNewGraphs) {
    Graph().Appearance()->SetGridColor(kMaroon);
    InEditor([](QDialog& dialog) { Click(dialog, "btnSetDefault"); });
    Press(Qt::Key_D); // the sink says Yes
    EXPECT_NE(Sink.Only().find("default.ltp"), std::string::npos) << Sink.Only();
    EXPECT_TRUE(QFile::exists(PathOf("templates/default.ltp")));
    Window->Document().New();
    EXPECT_EQ(Graph().Appearance()->GridColor(), kMaroon);
    EXPECT_TRUE(Graph().Series().empty());
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "");
}

TEST_F(GraphWork, ADefaultThatCanNotBeSavedTakesNoEditBack) {
    Write("templates", "a file where the folder should be");
    InEditor([](QDialog& dialog) {
        Type(dialog, "e_SeriesName", QStringLiteral("renamed"));
        Click(dialog, "btnSetDefault");
    });
    Press(Qt::Key_D); // the sink says Yes
    ASSERT_EQ(Sink.Texts.size(), 2u);
    EXPECT_TRUE(Sink.Texts[1].starts_with("Can not save to file ")) << Sink.Texts[1];
    EXPECT_EQ(First().SeriesName(), "renamed");
    EXPECT_TRUE(Window->isWindowModified());
    Press(Qt::Key_Z);
    EXPECT_NE(First().SeriesName(), "renamed");
}

TEST_F(GraphWork, BrokenDefaultTemplateIsToldAndNotUsed) {
    QDir().mkpath(PathOf("templates"));
    Write("templates/default.ltp", "nothing of a graph");
    Press(Qt::Key_N);
    ASSERT_EQ(Sink.Texts.size(), 1u);
    EXPECT_NE(Sink.Texts[0].find("Not a valid graph file"), std::string::npos);
    EXPECT_TRUE(Graph().Series().empty());
    EXPECT_GT(Graph().Appearance()->CaptionFont().Size, TFontSpec().Size);
}

TEST_F(GraphWork, TemplatesCarryTheLookWithoutPoints) {
    Graph().Appearance()->SetGraphTitle("Trade winds");
    AnswerPath(PathOf("winds.ltp"));
    Control<QAction>(*Window, "a_SaveAsTemplate").trigger();
    EXPECT_EQ(Window->Document().FileName(), PathOf("graph.ltp"));
    {
        TxyGraph kept;
        kept.LoadFromFile(PathOf("winds.ltp").toStdString());
        ASSERT_EQ(kept.Series().size(), 1u);
        EXPECT_EQ(kept.FirstSeries()->Count(), 0);
    }
    AnswerPath(PathOf("winds.ltp"));
    QString offered;
    auto* asking = new QTimer(qApp); // until the question comes behind the file dialog
    QObject::connect(asking, &QTimer::timeout, qApp, [asking, &offered] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) return;
        offered = box->text();
        asking->deleteLater();
        Click(*box, "b_SameFiles");
    });
    asking->start(10);
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(offered.contains(QStringLiteral("enso.csv"))) << offered.toStdString();
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "Trade winds");
    EXPECT_EQ(First().Count(), 168) << "data sets are read from their sources again";
    EXPECT_TRUE(Window->Document().FileName().isEmpty());
}

TEST_F(GraphWork, TheLegendKeepsWhatIsNotToBeInIt) {
    Open(Write("b.csv", "t,p\n0,1\n1,2\n"));
    const auto toggle = [&] { Control<QAction>(*Window, "a_ShowLegend").trigger(); };
    if (Graph().Legend()->visible()) toggle();
    First().SetShowInLegend(false);
    toggle();
    EXPECT_FALSE(First().ShowInLegend());
    toggle();
    for (TSeries* series : Graph().Series()) series->SetShowInLegend(false);
    toggle();
    EXPECT_TRUE(First().ShowInLegend()) << "a legend without anything is none";
}

TEST_F(GraphWork, SettingsSetTheRangeAndResetScaleTakesItBack) {
    WhenModal<QDialog>([&](QDialog& dialog) {
        Type(dialog, "m_Appearance_TitleOfGraph", QStringLiteral("Southern Oscillation"));
        Control<QListWidget>(dialog, "lst_Pages").setCurrentRow(2);
        Type(dialog, "e_From_X_Min", QStringLiteral("12"));
        Type(dialog, "e_To_X_Min", QStringLiteral("24"));
        QTest::keyClick(&dialog, Qt::Key_Return);
    });
    Press(Qt::Key_T);
    Graph().PrepareForDrawing();
    EXPECT_EQ(Graph().XAxis()->Min(), 12);
    EXPECT_EQ(Graph().XAxis()->Max(), 24);
    EXPECT_TRUE(Graph().YAxis()->AutoSizing());
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "Southern Oscillation");
    EXPECT_TRUE(Window->isWindowModified());
    Press(Qt::Key_0);
    Graph().PrepareForDrawing();
    EXPECT_LE(Graph().XAxis()->Min(), 1);
    EXPECT_GE(Graph().XAxis()->Max(), 168);
}

TEST_F(GraphWork, StylesChangeTheLookAndLeaveDataAndTitles) {
    TxyGraph style;
    style.AddSeries();
    style.FirstSeries()->SetLineColor(kLime);
    style.FirstSeries()->SetSeriesName("of the style");
    style.Appearance()->SetGraphTitle("of the style");
    style.Appearance()->SetShowFrame(true);
    style.XAxis()->SetTitle("of the style");
    style.XAxis()->SetGridlines(false);
    style.XAxis()->SetMax(1e6);
    style.XAxis()->SetLogScale(true);
    QDir().mkpath(PathOf("templates"));
    style.SaveTemplate(PathOf("templates/plain.ltp").toStdString(), TPoints::LeaveOut);
    const auto before = Content();
    const std::string name = First().SeriesName();
    const std::string title = Graph().XAxis()->Title();
    auto& menu = Control<QMenu>(*Window, "m_Styles");
    Q_EMIT menu.aboutToShow();
    menu.actions().constFirst()->trigger();
    EXPECT_TRUE(Graph().Appearance()->ShowFrame());
    EXPECT_FALSE(Graph().XAxis()->Gridlines());
    EXPECT_EQ(First().LineColor(), kLime);
    EXPECT_EQ(First().SeriesName(), name);
    EXPECT_EQ(First().Count(), 168);
    EXPECT_EQ(Graph().XAxis()->Title(), title);
    EXPECT_FALSE(Graph().XAxis()->LogScale());
    EXPECT_TRUE(Graph().XAxis()->AutoSizing());
    EXPECT_NE(Graph().Appearance()->GraphTitle(), "of the style");
    EXPECT_EQ(Window->Document().Session().UndoName(), "apply style plain");
    Press(Qt::Key_Z);
    EXPECT_EQ(Content(), before);
}

TEST_F(GraphWork, LegendIsDraggedAndPartsOpenTheirSettings) {
    Graph().Legend()->Setvisible(true);
    Graph().Legend()->SetAutoPlace(true);
    First().SetShowInLegend(true);
    Graph().grab();
    const QRectF place = Graph().Mouse().Map()->LegendPlace;
    const QPoint from = place.center().toPoint();
    QTest::mousePress(&Graph(), Qt::LeftButton, {}, from);
    QTest::mouseMove(&Graph(), from - QPoint(100, -50));
    QTest::mouseRelease(&Graph(), Qt::LeftButton, {}, from - QPoint(100, -50));
    Graph().grab();
    const QRectF moved = Graph().Mouse().Map()->LegendPlace;
    EXPECT_NEAR(moved.left(), place.left() - 100, 1);
    EXPECT_NEAR(moved.top(), place.top() + 50, 1);
    EXPECT_NEAR(moved.width(), place.width(), 1);
    EXPECT_EQ(Window->Document().Session().UndoName(), "move legend");
    const TPlotMap map = *Graph().Mouse().Map();
    const std::pair<QPointF, int> parts[] = {
        {moved.center(), 5}, {map.AxisPlaces[0].center(), 2}, {map.AxisPlaces[1].center(), 3}};
    for (const auto& [where, page] : parts) {
        int shown = -1;
        WhenModal<QDialog>([&](QDialog& dialog) {
            shown = Control<QListWidget>(dialog, "lst_Pages").currentRow();
            dialog.reject();
        });
        QTest::mouseDClick(&Graph(), Qt::LeftButton, {}, where.toPoint());
        EXPECT_EQ(shown, page);
    }
}

TEST_F(GraphWork, PicturesHaveTheSizeThatWasAskedFor) {
    const auto exportAs = [this](int format, const char* name) {
        WhenModal<QDialog>([this, format, name](QDialog& dialog) {
            Choose(dialog, "cbx_Format", format);
            Choose(dialog, "cbx_Unit", 1);
            Type(dialog, "se_Resolution", QStringLiteral("192"));
            Click(dialog, "cb_KeepShape");
            Type(dialog, "se_Width", QStringLiteral("1000"));
            Type(dialog, "se_Height", QStringLiteral("600"));
            AnswerPath(PathOf(name));
            auto& buttons = Control<QDialogButtonBox>(dialog, "buttons");
            QTest::mouseClick(buttons.button(QDialogButtonBox::Save), Qt::LeftButton);
        });
        Press(Qt::Key_E);
        return PathOf(name);
    };
    EXPECT_EQ(QImage(exportAs(0, "plot.png")).size(), QSize(1000, 600));
#if defined(QT_SVG_LIB)
    EXPECT_EQ(QSvgRenderer(exportAs(1, "plot.svg")).viewBoxF().size(), QSizeF(1000, 600)) << "units";
#endif
    EXPECT_TRUE(Read(exportAs(2, "plot.pdf")).startsWith("%PDF"));
    const auto exportForPaper = [this](int place) {
        const QString file = PathOf("paper%1.png").arg(place);
        WhenModal<QDialog>([&](QDialog& dialog) {
            Choose(dialog, "cbx_Format", 0);
            Choose(dialog, "cbx_Place", place);
            Type(dialog, "se_Resolution", QStringLiteral("300"));
            Control<QCheckBox>(dialog, "cb_Transparent").setChecked(true);
            AnswerPath(file);
            auto& buttons = Control<QDialogButtonBox>(dialog, "buttons");
            QTest::mouseClick(buttons.button(QDialogButtonBox::Save), Qt::LeftButton);
        });
        Press(Qt::Key_E);
        return QImage(file);
    };
    EXPECT_NEAR(exportForPaper(1).width(), 85 / 25.4 * 300, 1);
    EXPECT_NEAR(exportForPaper(3).width(), 254 / 25.4 * 300, 1);
    const QImage column = exportForPaper(2);
    EXPECT_NEAR(column.width(), 170 / 25.4 * 300, 1);
    EXPECT_NEAR(column.dotsPerMeterX(), 300 / 0.0254, 2);
    EXPECT_EQ(column.pixelColor(1, 1).alpha(), 0);
    WhenModal<QDialog>([](QDialog& dialog) { // what was asked for last is there again
        EXPECT_EQ(Control<QComboBox>(dialog, "cbx_Place").currentIndex(), 2);
        EXPECT_EQ(Control<QSpinBox>(dialog, "se_Resolution").value(), 300);
        EXPECT_TRUE(Control<QCheckBox>(dialog, "cb_Transparent").isChecked());
        dialog.reject();
    });
    Press(Qt::Key_E);
    EXPECT_TRUE(Sink.Texts.empty());
    EXPECT_FALSE(Window->isWindowModified());
}

TEST_F(GraphWork, TheMouseOnTheGraphChangesTheDocument) {
    Graph().grab();
    const QPoint middle = Graph().rect().center();
    QTest::mouseMove(&Graph(), middle);
    EXPECT_FALSE(Window->isWindowModified());
    Graph().setFocus();
    QTest::keyClick(&Graph(), Qt::Key_Plus);
    EXPECT_TRUE(Window->isWindowModified());
    EXPECT_FALSE(Graph().XAxis()->AutoSizing());
    Press(Qt::Key_0);
    EXPECT_TRUE(Graph().XAxis()->AutoSizing());
}

TEST_F(GraphWork, ThePercentagesOfDimensionsPlaceTheGraphOnThePage) {
    struct TCase {
        int x, y, scale;
        QRectF expected;
    };
    const QSizeF page(800, 1000);
    Graph().resize(500, 250); // twice as wide as high
    for (const TCase& place :
         {TCase{5, 20, 90, {40, 200, 720, 360}}, TCase{0, 0, 100, {0, 0, 800, 400}},
          TCase{50, 10, 90, {400, 100, 400, 200}}, TCase{0, 90, 100, {0, 900, 200, 100}}}) {
        Graph().Dimensions()->SetPrintXOffsetPct(place.x);
        Graph().Dimensions()->SetPrintYOffsetPct(place.y);
        Graph().Dimensions()->SetPrintScalePct(place.scale);
        EXPECT_EQ(PlaceOnPage(Graph(), page), place.expected) << place.x;
    }
}

TEST_F(GraphWork, PrintingToAnUnusablePlaceIsAnError) {
    TSilentProgress silent;
    QPrinter printer;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(PathOf("page.pdf"));
    PrintGraph(printer, Graph(), silent);
    EXPECT_TRUE(Read(PathOf("page.pdf")).startsWith("%PDF"));
    printer.setOutputFileName(PathOf("missing/page.pdf"));
    EXPECT_THROW(PrintGraph(printer, Graph(), silent), EFileError);
}

} // namespace
} // namespace lumoplot
