// What holds for every picture, over random graphs: texts keep off each other and stay inside, and the work
// of a frame has a limit.
#include "graph/drawing/picture/drawing.h"
#include "graph/drawing/recording_device.h"
#include "graph/model/appearance.h"
#include "graph/model/axis.h"
#include "graph/model/settings.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

constexpr QRectF kPage(0, 0, 640, 480);

class TRandomGraph {
public:
    explicit TRandomGraph(unsigned seed) : m_random(seed) {
        Graph.resize(640, 480);
        Graph.ResetToDefaults();
        const int count = Pick(3) + 1;
        for (int k = 0; k < count; ++k) AddData();
        for (TAxis* axis : {Graph.XAxis(), Graph.YAxis(), Graph.YAxis_Second()}) SetUp(*axis);
        Graph.YAxis_Second()->SetShowAxis(Pick(2) == 0);
        TFontSpec font;
        font.Size = Pick(3) == 0 ? 14 : 9;
        Graph.Appearance()->SetLabelFont(font);
        if (Pick(2) == 0) Graph.Appearance()->SetGraphTitle("A title of the graph x_{max}");
        Graph.Appearance()->SetTicksInside(Pick(3) == 0);
        if (Pick(2) == 0) AddLegend();
        if (Pick(2) == 0) AddMarks();
    }

    TxyGraph Graph;

private:
    int Pick(int count) { return std::uniform_int_distribution<>(0, count - 1)(m_random); }
    double Between(double low, double high) { return std::uniform_real_distribution<>(low, high)(m_random); }

    void AddLegend() {
        Graph.Legend()->Setvisible(true);
        Graph.Legend()->SetAutoPlace(true);
        Graph.Legend()->SetLayout(Pick(2) == 0 ? TLegend::lsDown : TLegend::lsAcross);
        for (const auto& series : Graph.Series()) {
            series->SetShowInLegend(true);
            series->SetSeriesName(Pick(2) == 0 ? "a data set" : "one with a much longer name");
        }
    }

    void AddMarks() {
        Graph.Appearance()->SetShowMarks(true);
        Graph.PrepareForDrawing();
        const TAxis& x = *Graph.XAxis();
        const TAxis& y = *Graph.YAxis();
        for (int k = Pick(6); k >= 0; --k) {
            const auto on = [&](const TAxis& axis) { return Between(axis.Min(), axis.Max()); };
            Graph.AddMark(
                {0, on(x), on(y), on(x), on(y), kRed, "a caption", static_cast<TMarkType>(Pick(4))});
        }
    }

    void AddData() {
        TSeries& series = *Graph.FindSeries(Graph.AddSeries());
        const double size = std::pow(10.0, Pick(5) == 0 ? Between(-300, 290) : Between(-9, 12));
        const double offset = Pick(3) == 0 ? size * 1e4 : 0;
        for (int i = 0; i < 20; ++i) series.AddPoint(offset + size * i, size * Between(Pick(2) - 1, 1));
        if (Pick(3) == 0) series.SetYAxisOfSeries(Graph.YAxis_Second());
    }

    void SetUp(TAxis& axis) {
        axis.SetTitle(Pick(2) == 0 ? "A longer title of an axis" : "t");
        axis.SetLogScale(Pick(4) == 0);
        axis.SetShowAsTime(Pick(5) == 0);
        axis.SetReversed(Pick(3) == 0);
        switch (Pick(6)) {
        case 0: axis.SetOffsetType(TAxis::ao_Maximum); break;
        case 1:
            axis.SetOffsetType(TAxis::ao_percentage);
            axis.SetOffset(Between(0, 100));
            break;
        }
    }

    std::mt19937 m_random;
};

// The ink of a text: digits and capitals reach from the base line up, which is what a reader sees collide.
QRectF InkOf(const TRecordedText& text) {
    const double high = text.Height * 0.6;
    const QRectF box = text.IsUpright
                           ? QRectF(text.Place.x(), text.Place.y() - high, text.Width, high)
                           : QRectF(text.Place.x() - high, text.Place.y() - text.Width, high, text.Width);
    return box.adjusted(0.5, 0.5, -0.5, -0.5);
}

TEST(RandomGraphs, TextsKeepOffEachOtherAndStayInside) {
    for (unsigned seed = 0; seed < 500; ++seed) {
        TRandomGraph random(seed);
        random.Graph.PrepareForDrawing();
        TRecordingDevice device;
        QPainter painter(&device);
        DrawGraph(painter, random.Graph, kPage);
        const auto& texts = device.Record().Texts;
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_TRUE(kPage.contains(InkOf(texts[i]))) << seed << ' ' << texts[i].Text.toStdString();
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_FALSE(InkOf(texts[i]).intersects(InkOf(texts[j])))
                    << seed << ' ' << texts[i].Text.toStdString() << " / " << texts[j].Text.toStdString()
                    << ' ' << texts[i].Place.x() << ' ' << texts[i].Place.y() << ' ' << texts[j].Place.x()
                    << ' ' << texts[j].Place.y();
        }
        const std::size_t work = device.Record().Lines.size() + texts.size() + device.Record().Shapes.size();
        EXPECT_LE(work, 3000u) << seed;
    }
}

} // namespace
} // namespace lumoplot
