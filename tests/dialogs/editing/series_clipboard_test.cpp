// Data sets leave as text, table and whole, and come back from each of them.
#include "common/thrown_text.h"
#include "common/values_of.h"
#include "dialogs/editing/series_clipboard.h"
#include "graph/file/graph_file.h"
#include "graph/model/axis.h"
#include "graph/model/graph.h"

#include <QMimeData>

namespace lumoplot {
namespace {

class SeriesClipboardTest : public testing::Test {
protected:
    SeriesClipboardTest() : From(*m_from.FindSeries(m_from.AddSeries())) {
        From.SetSeriesName("a <b> & c");
        From.SetDuplicatesAllowed(true);
        From.SetLineWidth(7);
        for (const double x : {0.1, 0.1, 1e300, -2.0}) From.AddPoint(x, x / 3);
    }

    TSeries& Paste(const QMimeData& data) { return *To.FindSeries(AddSeriesFromMime(To, data)); }

    TxyGraph To;

private:
    TxyGraph m_from;

protected:
    TSeries& From;
};

TEST_F(SeriesClipboardTest, TheWholeFormLosesNothing) {
    const std::unique_ptr<QMimeData> data(SeriesToMime(From));
    EXPECT_EQ(SeriesBytes(Paste(*data)), SeriesBytes(From));
}

TEST_F(SeriesClipboardTest, TheSecondAxisIsSwitchedOn) {
    From.SetYAxisOfSeries(From.Graph().YAxis_Second());
    const std::unique_ptr<QMimeData> data(SeriesToMime(From));
    EXPECT_TRUE(Paste(*data).IsOnSecondY());
    EXPECT_TRUE(To.YAxis_Second()->ShowAxis());
}

TEST_F(SeriesClipboardTest, TextAndTableKeepEveryDigit) {
    const std::unique_ptr<QMimeData> data(SeriesToMime(From));
    QMimeData text;
    text.setText(data->text());
    QMimeData table;
    table.setHtml(QStringLiteral("<p>before</p>") + data->html() + QStringLiteral("<p>behind</p>"));
    for (const QMimeData* form : {&text, &table}) {
        const TSeries& pasted = Paste(*form);
        EXPECT_EQ(XsOf(pasted), XsOf(From));
        EXPECT_EQ(YsOf(pasted), YsOf(From));
    }
}

TEST_F(SeriesClipboardTest, ATableHasACellForEachError) {
    From.Clear();
    From.AddPoint(1, 2, 0.25);
    From.AddPoint(2, std::numeric_limits<double>::infinity(), 0.5);
    From.AddPoint(3, 4);
    const std::unique_ptr<QMimeData> data(SeriesToMime(From));
    EXPECT_EQ(data->html().count(QStringLiteral("</td>")), 4 * 3);
    QMimeData table;
    table.setHtml(data->html());
    const TSeries& pasted = Paste(table);
    EXPECT_EQ(YsOf(pasted), YsOf(From));
    EXPECT_EQ(pasted.YErrors(), From.YErrors());
}

TEST_F(SeriesClipboardTest, PastedTwiceItHasANameAndAStyleOfItsOwn) {
    const std::unique_ptr<QMimeData> data(SeriesToMime(From));
    const TSeries& first = Paste(*data);
    const TSeries& second = Paste(*data);
    EXPECT_EQ(second.SeriesName(), first.SeriesName() + " 2");
    EXPECT_NE(second.LineColor(), first.LineColor());
    EXPECT_NE(second.PointShape(), first.PointShape());
    EXPECT_EQ(second.LineWidth(), 7);
    EXPECT_EQ(Paste(*data).SeriesName(), first.SeriesName() + " 3");
}

TEST_F(SeriesClipboardTest, WhatSpreadsheetsAndEditorsGiveIsRead) {
    QMimeData table;
    table.setHtml(
        QStringLiteral("<html><body><table><tr><th>t</th><th>volt</th></tr><tr><td>1</td><td>2,5</td></tr>"
                       "<tr><td>2</td><td>3,5</td></tr></table></body></html>"));
    table.setText(QStringLiteral("not this"));
    const TSeries& pasted = Paste(table);
    EXPECT_EQ(YsOf(pasted), (std::vector<double>{2.5, 3.5}));
    EXPECT_EQ(pasted.SeriesName(), "volt");
    QMimeData words;
    words.setText(QStringLiteral("no numbers in here"));
    ThrownText([&] { Paste(words); });
    EXPECT_EQ(To.Series().size(), 1u);
}

} // namespace
} // namespace lumoplot
