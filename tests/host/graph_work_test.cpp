// What a person does with a shown graph: edits its data, its axes, its templates, and takes pictures of it.
#include "host/printing.h"
#include "host/window_fixture.h"
#include "support/errors.h"
#include "support/progress.h"

#include <QCheckBox>
#include <QImage>
#include <QPrinter>
#include <QSvgRenderer>
#include <QTabWidget>

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
    AnswerPath(PathOf("winds.ltp"));
    Press(Qt::Key_N, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(Graph().Appearance()->GraphTitle(), "Trade winds");
    EXPECT_EQ(First().Count(), 168) << "data sets are read from their sources again";
    EXPECT_TRUE(Window->Document().FileName().isEmpty());
}

TEST_F(GraphWork, AxesDialogRefusesRangesThatNoAxisCanHave) {
    struct TCase {
        const char* min;
        const char* max;
        bool log;
        const char* text;
    };
    const TCase cases[] = {
        {"5", "5", false, "The minimum of an axis must be below its maximum"},
        {"1e2", "7", false, "The minimum of an axis must be below its maximum"},
        {"0", "10", true, "The minimum of a logarithmic axis must be above 0"},
        {"five", "10", false, "'five' is not a valid floating point value"},
        {"nan", "10", false, "An axis needs finite numbers"},
    };
    const TBytes before = Content();
    for (const TCase& wrong : cases) {
        SCOPED_TRACE(wrong.min);
        Sink.Texts.clear();
        WhenModal<QDialog>([&](QDialog& dialog) {
            auto& form = Control<QWidget>(dialog, "axisX");
            Click(form, "cb_AutoSizing");
            if (wrong.log) Click(form, "cb_LogScale");
            Type(form, "e_Min", QString::fromLatin1(wrong.min));
            Type(form, "e_Max", QString::fromLatin1(wrong.max));
            QTest::keyClick(&dialog, Qt::Key_Return);
            EXPECT_TRUE(dialog.isVisible());
            dialog.reject();
        });
        Press(Qt::Key_T);
        EXPECT_EQ(Sink.Only(), wrong.text);
        EXPECT_EQ(Content(), before);
    }
}

TEST_F(GraphWork, AxesDialogSetsTheRangeAndResetScaleTakesItBack) {
    WhenModal<QDialog>([&](QDialog& dialog) {
        Type(dialog, "e_GraphTitle", QStringLiteral("Southern Oscillation"));
        auto& form = Control<QWidget>(dialog, "axisX");
        Click(form, "cb_AutoSizing");
        Type(form, "e_Min", QStringLiteral("12"));
        Type(form, "e_Max", QStringLiteral("24"));
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
    EXPECT_EQ(QSvgRenderer(exportAs(1, "plot.svg")).viewBoxF().size(), QSizeF(1000, 600)) << "units";
    EXPECT_TRUE(Read(exportAs(2, "plot.pdf")).startsWith("%PDF"));
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
