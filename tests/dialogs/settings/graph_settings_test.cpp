#include "dialogs/settings/graph_settings_dialog.h"

#include "common/recording_sink.h"
#include "common/window_driver.h"
#include "session/graph_session.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <set>

namespace lumoplot {
namespace {

class GraphSettings : public testing::Test {
protected:
    GraphSettings() {
        Graph.resize(640, 480);
        for (int i = 1; i <= 10; ++i) Series.AddPoint(i, i * i);
        Graph.PrepareForDrawing();
        Session.Start();
    }
    void Show(TGraphPart part = TGraphPart::None) {
        Dialog = std::make_unique<TGraphSettingsDialog>(Graph, part, nullptr);
        Dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(Dialog.get()));
    }
    void Find(const char* words) { Type(*Dialog, "e_Find", QString::fromLatin1(words)); }
    /// Labels of the rows that are shown.
    std::set<QString> Rows() const {
        std::set<QString> labels;
        for (const auto* label : Dialog->findChildren<QLabel*>())
            if (label->isVisible() && label->buddy()) labels.insert(label->text());
        for (const auto* box : Dialog->findChildren<QCheckBox*>())
            if (box->isVisible()) labels.insert(box->text());
        labels.erase(QStringLiteral("&Find:"));
        return labels;
    }
    void TypeRange(const char* from, const char* to) {
        Type(*Dialog, "e_From_X_Min", QString::fromLatin1(from));
        Type(*Dialog, "e_To_X_Min", QString::fromLatin1(to));
    }

    TRecordingSink Sink;
    TxyGraph Graph;
    TSeries& Series = *Graph.FindSeries(Graph.AddSeries());
    TGraphSession Session{Graph};
    std::unique_ptr<TGraphSettingsDialog> Dialog;
};

template <class T>
void CollectKeys(T& object, std::initializer_list<std::span<const TSettingWords>> words,
                 std::set<std::string> named, std::vector<std::string>& missing) {
    for (const auto& list : words)
        for (const TSettingWords& one : list)
            for (const TBoundSetting& setting : SettingsOf(object))
                if (setting.Key == one.Key || (one.Edit == TSettingEdit::Range && setting.Key == 7))
                    named.insert(setting.Name);
    for (const TBoundSetting& setting : SettingsOf(object))
        if (!named.contains(setting.Name)) missing.push_back(setting.Name);
}

// Which data set is current or serves as X is no look, and the place in a parent is changed with the mouse.
TEST_F(GraphSettings, EverySettingOfTheFileHasARow) {
    std::vector<std::string> missing;
    TGraphMark mark;
    CollectKeys(*Graph.Appearance(),
                {TitleWords(), AxesInCommonWords(), DataAndPaperWords(), MarksInCommonWords()},
                {"XAxisSerIndex", "CurrSerIndex"}, missing);
    CollectKeys(*Graph.Dimensions(), {MarginWords(), PaperWords()},
                {"HorPosition", "VerPosition", "HorSize", "VerSize"}, missing);
    CollectKeys(*Graph.XAxis(), {AxisWords()}, {}, missing);
    CollectKeys(*Graph.Legend(), {LegendWords()}, {}, missing);
    CollectKeys(mark, {MarkWords()}, {"ID "}, missing);
    EXPECT_EQ(missing, std::vector<std::string>());
}

TEST_F(GraphSettings, WhatIsChangedIsOneStepAndCancelLeavesNothing) {
    for (const bool isKept : {false, true}) {
        Show(TGraphPart::XAxis);
        Type(*Dialog, "m_X_AxisTitle", QStringLiteral("Time"));
        Click(*Dialog, "cb_X_TightRange");
        TypeRange("2", "7.5");
        auto& pages = Control<QListWidget>(*Dialog, "lst_Pages");
        pages.setCurrentRow(1);
        Click(*Dialog, "cb_Appearance_FrameIsShown");
        EXPECT_EQ(Graph.XAxis()->Title(), "X axis") << "the graph waits for OK";
        if (isKept) {
            Dialog->accept();
            EXPECT_TRUE(Dialog->Store());
        } else {
            Dialog->reject();
        }
        EXPECT_EQ(Session.StepsBack(), isKept ? 1 : 0);
    }
    EXPECT_EQ(Graph.XAxis()->Title(), "Time");
    EXPECT_FALSE(Graph.XAxis()->EnableAutoTitle()) << "a typed title stays";
    EXPECT_TRUE(Graph.XAxis()->TightRange());
    EXPECT_EQ(Graph.XAxis()->Min(), 2);
    EXPECT_EQ(Graph.XAxis()->Max(), 7.5);
    EXPECT_FALSE(Graph.XAxis()->AutoSizing());
    EXPECT_TRUE(Graph.Appearance()->ShowFrame());
    Session.Undo();
    EXPECT_EQ(Graph.XAxis()->Title(), "X axis");
    EXPECT_TRUE(Graph.XAxis()->AutoSizing());
    EXPECT_FALSE(Graph.Appearance()->ShowFrame());
}

TEST_F(GraphSettings, OkWithoutAChangeIsNoStep) {
    Show();
    Dialog->accept();
    EXPECT_FALSE(Dialog->Store());
    EXPECT_EQ(Session.StepsBack(), 0);
}

TEST_F(GraphSettings, RangesThatNoAxisCanHaveAreNotTaken) {
    struct TCase {
        const char* from;
        const char* to;
        bool log;
        const char* text;
    };
    const TCase cases[] = {
        {"5", "5", false, "The minimum of an axis must be below its maximum"},
        {"1e2", "7", false, "The minimum of an axis must be below its maximum"},
        {"0", "10", true, "The minimum of a logarithmic axis must be above 0"},
        {"five", "10", false, "'five' is not a valid floating point value"},
    };
    for (const TCase& wrong : cases) {
        SCOPED_TRACE(wrong.from);
        Sink.Texts.clear();
        Show(TGraphPart::XAxis);
        if (wrong.log) Click(*Dialog, "cb_X_useLogScale");
        TypeRange(wrong.from, wrong.to);
        QTest::keyClick(Dialog.get(), Qt::Key_Return);
        EXPECT_TRUE(Dialog->isVisible());
        EXPECT_EQ(Sink.Only(), wrong.text);
    }
}

TEST_F(GraphSettings, WordsFindSettingsOnAllPages) {
    Show(TGraphPart::Legend);
    Find("grid line");
    EXPECT_EQ(Rows(),
              (std::set<QString>{QStringLiteral("Line style of the grid:"), QStringLiteral("Grid lines")}));
    Find("tightrange"); // as in files
    EXPECT_EQ(Rows(), std::set<QString>{QStringLiteral("Range ends at the data")});
    Find("second tightrange");
    QTest::keyClick(&Control<QLineEdit>(*Dialog, "e_Find"), Qt::Key_Return);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), QStringLiteral("cb_Y2_TightRange"));
    Find("Font size"); // as people call it
    EXPECT_TRUE(Rows().contains(QStringLiteral("Font of the labels:")));
    EXPECT_FALSE(Rows().contains(QStringLiteral("Show ticks")));
    Find("Minimum");
    EXPECT_TRUE(Rows().contains(QStringLiteral("Range, from and to:")));
    Find("no such thing");
    EXPECT_TRUE(Control<QLabel>(*Dialog, "l_NothingFound").isVisible());
    QTest::keyClick(&Control<QLineEdit>(*Dialog, "e_Find"), Qt::Key_Escape);
    EXPECT_TRUE(Dialog->isVisible());
    EXPECT_TRUE(Rows().contains(QStringLiteral("Show the legend")));
}

TEST_F(GraphSettings, OtherAxesTakeOverHowAnAxisIsLabelled) {
    Show(TGraphPart::YAxis);
    Choose(*Dialog, "cbx_Y_LabelFormat", 1);
    Click(*Dialog, "cb_Y_ShowGridlines");
    Click(*Dialog, "b_AllAxes");
    Dialog->accept();
    Dialog->Store();
    for (TAxis* axis : {Graph.XAxis(), Graph.YAxis(), Graph.YAxis_Second()}) {
        EXPECT_EQ(axis->LabelFormat(), TAxis::lfExp);
        EXPECT_FALSE(axis->Gridlines());
    }
    EXPECT_EQ(Graph.XAxis()->Title(), "X axis");
    EXPECT_FALSE(Graph.YAxis_Second()->ShowAxis());
}

TEST_F(GraphSettings, MarksAndNamesAreEdited) {
    Show(TGraphPart::Legend);
    Type(*Dialog, "e_Name_1", QStringLiteral("Run 7"));
    Control<QListWidget>(*Dialog, "lst_Pages").setCurrentRow(8);
    EXPECT_FALSE(Control<QWidget>(*Dialog, "m_Mark_Caption").isEnabled());
    Click(*Dialog, "b_NewMark");
    Type(*Dialog, "m_Mark_Caption", QStringLiteral("peak"));
    Dialog->accept();
    EXPECT_TRUE(Dialog->Store());
    EXPECT_EQ(Series.SeriesName(), "Run 7");
    ASSERT_EQ(Graph.Marks().Count(), 1);
    EXPECT_EQ(Graph.Marks().Find(1)->Caption, "peak");
    EXPECT_TRUE(Graph.Appearance()->ShowMarks());
}

TEST_F(GraphSettings, FitsASmallScreen) {
    Show();
    EXPECT_LE(Dialog->minimumSizeHint().width(), 760);
    EXPECT_LE(Dialog->minimumSizeHint().height(), 440);
    for (int page = 0; page < 9; ++page) {
        Control<QListWidget>(*Dialog, "lst_Pages").setCurrentRow(page);
        const auto& area = Control<QWidget>(*Dialog, "scrollArea");
        EXPECT_LE(Control<QWidget>(*Dialog, "sheets").width(), area.width()) << page;
    }
}

} // namespace
} // namespace lumoplot
