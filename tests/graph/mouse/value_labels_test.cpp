// What the mouse tells of a place: values with the digits that a pixel is worth, in a label inside the plot.
#include "graph/drawing/recording_device.h"
#include "graph/model/graph.h"
#include "graph/mouse/hand_editing.h"
#include "graph/plotted/value_text.h"

#include <QPainter>
#include <gtest/gtest.h>

namespace lumoplot {
namespace {

TEST(ValueLabels, DigitsEndOneBehindTheResolution) {
    struct TCase {
        bool date;
        double value, resolution;
        const char* text;
    };
    // Day 45000 is 2023-03-15.
    const TCase cases[] = {{false, 1234.5678, 0.1, "1234.57"},
                           {false, -1234.5678, 1, "−1234.6"},
                           {false, 0.000123456, 1e-5, "0.000123"},
                           {false, 0.04, 0.1, "0"},
                           {false, 1.0 / 3, 0, "0.333333333333"},
                           {false, std::numeric_limits<double>::infinity(), 1, "–"},
                           {true, 45000.3, 1, "2023-03-15"},
                           {true, 45000, 0, "2023-03-15"},
                           {true, 45000.25, 0.01, "2023-03-15 06:00"},
                           {true, 45000.25, 1e-4, "2023-03-15 06:00:00"},
                           {true, 45000.25, 1e-6, "2023-03-15 06:00:00.000"},
                           {true, 1e9, 1e6, "1e+09"}};
    TxyGraph graph;
    for (const TCase& c : cases) {
        graph.XAxis()->SetShowAsTime(c.date);
        EXPECT_EQ(ValueText(*graph.XAxis(), c.value, c.resolution).toStdString(), c.text);
    }
}

TEST(ValueLabels, WhatIsPointedAtHasTheDigitsOfAPixel) {
    struct TCase {
        bool date;
        double value, resolution, rounded;
    };
    const TCase cases[] = {{false, 2.4039459459459462, 0.00676, 2.404},
                           {false, 2.4039459459459462, 0.01, 2.4},
                           {false, 123456.7, 30, 123460},
                           {false, -0.123456, 1e-3, -0.123},
                           {false, 1.25e-7, 3e-9, 1.25e-7},
                           {false, 4.2, 0, 4.2},
                           {true, 45000.26, 0.02, 45000.25 + 1.0 / 1440 * 14},
                           {true, 45000.26, 0.05, 45000.25},
                           {true, 45000.6, 3, 45001}};
    TxyGraph graph;
    for (const TCase& c : cases) {
        graph.XAxis()->SetShowAsTime(c.date);
        EXPECT_DOUBLE_EQ(RoundedTo(*graph.XAxis(), c.value, c.resolution), c.rounded) << c.value;
    }
}

TEST(ValueLabels, TheLabelOfADragStaysInThePlot) {
    const QRectF plot(50, 40, 400, 300);
    const TScaleMap xMap(0, 1, plot.left(), plot.right());
    const TScaleMap yMap(0, 1, plot.bottom(), plot.top());
    const TPlotMap map{plot, xMap, yMap, yMap, {}};
    const QString text = QStringLiteral("12.34, 56.78");
    for (const QPointF place : {plot.topLeft(), plot.topRight(), plot.bottomLeft(), plot.bottomRight()}) {
        TRecordingDevice device;
        {
            TxyGraph graph;
            QPainter painter(&device);
            PaintDragLabel(painter, graph, map, place, text);
        }
        const TRecordedText* label = device.FindText(text);
        ASSERT_TRUE(label);
        EXPECT_TRUE(plot.contains(label->Place)) << place.x() << ' ' << place.y();
        EXPECT_TRUE(plot.contains(label->Place + QPointF(label->Width, -label->Height * 0.7)));
    }
}

} // namespace
} // namespace lumoplot
