#include "graph/drawing/lines/column_reducer.h"
#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/lines/symbol_cloud.h"
#include "graph/drawing/recording_device.h"
#include "graph/drawing/strokes/line_stroker.h"

#include <QImage>
#include <cmath>
#include <gtest/gtest.h>
#include <random>

namespace lumoplot {
namespace {

constexpr int kWidth = 300;
constexpr int kHeight = 200;

struct TPath {
    std::vector<double> X;
    std::vector<double> Y;

    void Add(double x, double y) {
        X.push_back(x);
        Y.push_back(y);
    }
};

TPath Noise(int count, double spread) {
    std::mt19937 random(7);
    std::uniform_real_distribution<> noise(-spread, spread);
    TPath path;
    for (int i = 0; i < count; ++i) {
        const double x = 5 + 290.0 * i / count;
        path.Add(x, 100 + 60 * std::sin(x / 20) + noise(random));
    }
    return path;
}

TPath Wandering(int count) {
    std::mt19937 random(11);
    std::uniform_real_distribution<> noise(-3, 3);
    TPath path;
    for (int i = 0; i < count; ++i)
        path.Add(150 + 100 * std::cos(i / 900.0) + noise(random),
                 100 + 80 * std::sin(i / 700.0) + noise(random));
    return path;
}

TPolylines Reduced(const TPath& path) {
    TColumnReducer reducer(0, kWidth);
    // Runs of uneven length, as a chain of points hands them over.
    for (std::size_t place = 0, run = 1; place < path.X.size(); place += run, run = run % 61 + 7) {
        run = std::min(run, path.X.size() - place);
        reducer.Add(std::span(path.X).subspan(place, run), std::span(path.Y).subspan(place, run));
    }
    return reducer.Finish();
}

template <class TDraw>
QImage Drawn(TDraw draw, bool smooth = false) {
    QImage image(kWidth, kHeight, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, smooth);
    painter.setPen(QPen(Qt::black, 1));
    draw(painter);
    return image;
}

bool IsInk(const QImage& image, int x, int y) {
    return qGray(image.pixel(x, y)) < 128;
}

template <class TPredicate>
int CountPixels(TPredicate isCounted) {
    int count = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) count += isCounted(x, y);
    return count;
}

int InkOf(const QImage& image) {
    return CountPixels([&](int x, int y) { return IsInk(image, x, y); });
}

int DifferentPixels(const QImage& a, const QImage& b) {
    return CountPixels([&](int x, int y) { return IsInk(a, x, y) != IsInk(b, x, y); });
}

/// Pixels with ink in `a` whose neighbourhood has none in `b`.
int FarFrom(const QImage& a, const QImage& b) {
    const auto hasInkNear = [&b](int x, int y) {
        for (int v = std::max(0, y - 1); v <= std::min(kHeight - 1, y + 1); ++v)
            for (int u = std::max(0, x - 1); u <= std::min(kWidth - 1, x + 1); ++u)
                if (IsInk(b, u, v)) return true;
        return false;
    };
    return CountPixels([&](int x, int y) { return IsInk(a, x, y) && !hasInkNear(x, y); });
}

std::size_t CornersOf(const TPolylines& lines) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < lines.Count(); ++i) count += lines.Line(i).size();
    return count;
}

TEST(ColumnReducer, WhatIsNoPlaceBreaksTheLine) {
    const double nan = std::nan("");
    TPath path;
    for (const double y : {1.0, 2.0, nan, 3.0, nan, nan, 4.0, 5.0}) path.Add(10, y);
    const TPolylines lines = Reduced(path);
    ASSERT_EQ(lines.Count(), 3u);
    EXPECT_EQ(lines.Line(0).size(), 2u);
    EXPECT_EQ(lines.Line(1).size(), 1u);
    EXPECT_EQ(lines.Line(2)[1], QPointF(10, 5));
}

TEST(Polylines, AreCutOffAtTheRectangle) {
    TPolylines lines;
    for (const QPointF p :
         {QPointF(-10, 5), QPointF(10, 5), QPointF(10, 500), QPointF(12, 500), QPointF(12, 5)})
        lines.Add(p);
    lines.End();
    lines.Add({5, 5});
    lines.End();
    lines.Add({50, 50});
    lines.End();
    const TPolylines clipped = Clipped(lines, QRectF(0, 0, 20, 20));
    ASSERT_EQ(clipped.Count(), 3u);
    EXPECT_EQ(clipped.Line(0)[0], QPointF(0, 5));
    EXPECT_EQ(clipped.Line(0)[2], QPointF(10, 20));
    EXPECT_EQ(clipped.Line(1)[0], QPointF(12, 20));
    EXPECT_EQ(clipped.Line(2).size(), 1u);
}

QImage DrawnAsSegments(const TPath& path, const QPen& pen) {
    const auto draw = [&](QPainter& painter) {
        painter.setPen(pen);
        for (std::size_t i = 1; i < path.X.size(); ++i)
            painter.drawLine(QPointF(path.X[i - 1], path.Y[i - 1]), QPointF(path.X[i], path.Y[i]));
    };
    return Drawn(draw, true);
}

QImage DrawnAsLine(const TPath& path, const QPen& pen) {
    const auto draw = [&](QPainter& painter) {
        DrawPolylines(TCanvas(painter, TDrawPurpose::Show), Reduced(path), pen);
    };
    return Drawn(draw, true);
}

// Against all segments drawn one by one: no ink is lost and none appears further than a pixel away.
TEST(LinePainter, DenseLinesCoverWhatAllTheirSegmentsCover) {
    EXPECT_LE(CornersOf(Reduced(Noise(100000, 50))), 4u * kWidth);
    const TPath paths[] = {Noise(5000, 50),    Noise(1500, 50), Noise(600, 60),
                           Noise(100000, 0.5), Noise(20, 60),   Wandering(4000)};
    for (const double width : {1.0, 2.0, 3.0, 5.0, 8.0})
        for (const TPath& path : paths) {
            const QPen pen(Qt::black, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
            const QImage segments = DrawnAsSegments(path, pen);
            const QImage quick = DrawnAsLine(path, pen);
            const int few = InkOf(segments) / 200;
            EXPECT_LE(FarFrom(segments, quick), few) << width << " " << path.X.size();
            EXPECT_LE(FarFrom(quick, segments), few) << width << " " << path.X.size();
        }
}

TPath Scattered(int count) {
    std::mt19937 random(13);
    std::normal_distribution<> x(150, 45), y(100, 25);
    TPath path;
    for (int i = 0; i < count; ++i) path.Add(x(random), y(random));
    return path;
}

// Lines that fill the picture: as dark as all their segments drawn one above the other, pixel by pixel.
TEST(LinePainter, CloudsAreAsDarkAsTheirSegments) {
    for (const Qt::PenStyle style : {Qt::SolidLine, Qt::DashLine})
        for (const double width : {1.0, 2.0, 5.0})
            for (const int count : {700, 3000}) {
                const TPath path = Scattered(count);
                const QPen pen(Qt::black, width, style, Qt::FlatCap, Qt::RoundJoin);
                const QImage segments = DrawnAsSegments(path, pen);
                const QImage quick = DrawnAsLine(path, pen);
                double sum = 0;
                for (int y = 0; y < kHeight; ++y)
                    for (int x = 0; x < kWidth; ++x)
                        sum += std::abs(qGray(segments.pixel(x, y)) - qGray(quick.pixel(x, y)));
                // Dashes of segments begin elsewhere than those of the line; of the fewest and thinnest lines
                // the one that covers more of a pixel counts.
                const double most = style == Qt::SolidLine ? 7 : 16;
                EXPECT_LE(sum / (kWidth * kHeight), most) << width << " " << count << " " << style;
            }
}

// The part of each pixel that lies in a line with round ends and corners, or in the dashes of its segments,
// from 64 samples a pixel.
class TSampledCoverage {
public:
    TSampledCoverage(const TPath& path, double radius, double dash)
        : m_path(path), m_radius(radius), m_dash(dash) {}

    double At(int x, int y) const {
        int inside = 0;
        for (int i = 0; i < 36; ++i) inside += Contains(x + (i % 6 + 0.5) / 6, y + (i / 6 + 0.5) / 6);
        return inside / 36.0;
    }

private:
    bool Contains(double x, double y) const {
        double drawn = 0;
        for (std::size_t i = 1; i < m_path.X.size(); ++i) {
            const double dx = m_path.X[i] - m_path.X[i - 1], dy = m_path.Y[i] - m_path.Y[i - 1];
            const double length = std::hypot(dx, dy);
            const double px = x - m_path.X[i - 1], py = y - m_path.Y[i - 1];
            const double along = (px * dx + py * dy) / length;
            const double end = std::clamp(along, 0.0, length);
            const double distance = std::hypot(px - end * dx / length, py - end * dy / length);
            const bool isOn = m_dash == 0 || (along == end && std::fmod(drawn + along, 2 * m_dash) < m_dash);
            if (distance <= m_radius && isOn) return true;
            drawn += length;
        }
        return false;
    }

    const TPath& m_path;
    double m_radius;
    double m_dash;
};

TPath Path(std::initializer_list<QPointF> corners) {
    TPath path;
    for (const QPointF corner : corners) path.Add(corner.x(), corner.y());
    return path;
}

TEST(LineStroker, CoversWhatLiesWithinTheRadius) {
    TPath circle;
    for (int i = 0; i <= 40; ++i) circle.Add(20 + 15 * std::cos(i * 0.16), 21 + 15 * std::sin(i * 0.16));
    TPath fine;
    for (int i = 0; i <= 100; ++i) fine.Add(3 + i * 0.32, 20 + 12 * std::sin(i * 0.12));
    const TPath paths[] = {Path({{5, 20}, {35, 20}}),
                           Path({{20.3, -10}, {20.3, 60}}),
                           Path({{3, 3}, {37.4, 30.8}}),
                           Path({{8, 35}, {14, 4}, {20, 36}, {22.5, 5}, {31, 34}, {33, 20}}),
                           Path({{-50, 10}, {90, 31}, {-40, 33}}),
                           Path({{12, 12}, {28, 12}, {28, 28}, {12, 28}, {12, 12}}),
                           circle,
                           fine};
    constexpr int kSide = 40;
    constexpr double kOffAtFork = 0.4; // two legs that share a pixel count as the one that covers more of it
    for (const double width : {1.0, 2.0, 5.0, 80.0})
        for (const double dash : {0.0, 7.0})
            for (std::size_t k = 0; k < std::size(paths); ++k) {
                const bool hasCorners = paths[k].X.size() > 2;
                if (dash > 0 && hasCorners) continue;
                TStrokeMask mask(QRect(0, 0, kSide, kSide));
                const double dashes[] = {dash, dash};
                std::vector<QPointF> corners;
                for (std::size_t i = 0; i < paths[k].X.size(); ++i)
                    corners.emplace_back(paths[k].X[i], paths[k].Y[i]);
                TLineStroker(mask, width,
                             dash > 0 ? std::span<const double>(dashes) : std::span<const double>())
                    .Stroke(corners, 0);
                const TSampledCoverage exact(paths[k], width / 2, dash);
                double sum = 0, largest = 0;
                for (int y = 0; y < kSide; ++y)
                    for (int x = 0; x < kSide; ++x) {
                        const double off = std::abs(mask.Row(y)[x] / 255.0 - exact.At(x, y));
                        sum += off;
                        largest = std::max(largest, off);
                    }
                EXPECT_LE(largest, kOffAtFork) << "path " << k << " width " << width << " dash " << dash;
                EXPECT_LE(sum, 0.01 * kSide * kSide)
                    << "path " << k << " width " << width << " dash " << dash;
            }
}

// What is skipped because it is covered must not be missing: against every segment in a mask of its own.
TEST(LineStroker, SkipsOnlyWhatIsCovered) {
    std::mt19937 random(5);
    std::uniform_real_distribution<> place(-20, 220);
    std::vector<QPointF> corners;
    for (int i = 0; i < 4000; ++i) corners.emplace_back(place(random), place(random));
    const QRect area(0, 0, 200, 200);
    TStrokeMask all(area);
    TLineStroker(all, 3, {}).Stroke(corners, 0);
    std::vector<std::uint8_t> most(200 * 200);
    for (std::size_t i = 0; i + 2 < corners.size(); i += 2) {
        TStrokeMask part(area);
        TLineStroker(part, 3, {}).Stroke(std::span(corners).subspan(i, 3), 0);
        for (int y = 0; y < 200; ++y)
            for (int x = 0; x < 200; ++x) {
                auto& pixel = most[static_cast<std::size_t>(200 * y + x)];
                pixel = std::max(pixel, part.Row(y)[x]);
            }
    }
    for (int y = 0; y < 200; ++y)
        for (int x = 0; x < 200; ++x)
            ASSERT_NEAR(all.Row(y)[x], most[static_cast<std::size_t>(200 * y + x)], 64) << x << " " << y;
}

// Many points are merged into one picture, few are stamped: the two must look alike.
TEST(SymbolCloud, MergedSymbolsLookLikeStampedOnes) {
    const TPath path = Wandering(6000);
    for (const bool filled : {false, true})
        for (const TPointShape shape : {TPointShape::Circle, TPointShape::Star, TPointShape::WidePoint}) {
            const TSymbol symbol{shape, 20, 1, filled, Qt::black};
            const auto drawn = [&](std::size_t pointsAtOnce) {
                return Drawn([&](QPainter& painter) {
                    const TCanvas canvas(painter, TDrawPurpose::Show);
                    for (std::size_t i = 0; i < path.X.size(); i += pointsAtOnce) {
                        TSymbolCloud cloud(canvas, symbol, QRectF(0, 0, kWidth, kHeight));
                        cloud.Add(std::span(path.X).subspan(i, pointsAtOnce),
                                  std::span(path.Y).subspan(i, pointsAtOnce));
                        cloud.Draw();
                    }
                });
            };
            EXPECT_LE(DifferentPixels(drawn(6000), drawn(50)), 200) << static_cast<int>(shape);
        }
}

// Where every symbol would be kept as a shape of its own, very many become one picture at the same place.
TEST(SymbolCloud, VeryManySymbolsGoIntoAFileAsOnePicture) {
    for (const int count : {5000, 40000}) {
        const TPath path = Noise(count, 100);
        TRecordingDevice device;
        QPainter painter(&device);
        const TCanvas canvas(painter, TDrawPurpose::Show);
        const double scale = canvas.PixelsPerUnit();
        TSymbolCloud cloud(canvas, {TPointShape::Circle, 6, 1, true, Qt::red},
                           QRectF(0, 0, kWidth * scale, kHeight * scale));
        for (std::size_t i = 0; i < path.X.size(); ++i) {
            const double x[] = {path.X[i] * scale}, y[] = {path.Y[i] * scale};
            cloud.Add(x, y);
        }
        cloud.Draw();
        if (count < 20000) {
            EXPECT_GT(device.ShapesIn(Qt::red).size(), 4000u);
            continue;
        }
        EXPECT_TRUE(device.ShapesIn(Qt::red).empty());
        ASSERT_EQ(device.Record().Pictures.size(), 1u);
        const QRectF picture = device.Record().Pictures[0];
        EXPECT_TRUE(picture.contains(QRectF(0, 0, kWidth, kHeight).adjusted(5, 5, -5, -5)));
        EXPECT_TRUE(QRectF(-8, -8, kWidth + 16, kHeight + 16).contains(picture));
    }
}

QRect InkPlace(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qGray(image.pixel(x, y)) < 128) ink |= QRect(x, y, 1, 1);
    return ink;
}

TEST(SymbolCloud, EveryShapeHasItsSizeAroundItsPoint) {
    for (int shape = 0; shape <= 8; ++shape)
        for (const bool filled : {false, true})
            for (const double size : {12.0, 20.0}) {
                const TSymbol symbol{static_cast<TPointShape>(shape), size, 2, filled, Qt::black};
                const QImage image = Drawn([&](QPainter& painter) {
                    const TCanvas canvas(painter, TDrawPurpose::Show);
                    TSymbolCloud cloud(canvas, symbol, QRectF(0, 0, kWidth, kHeight));
                    const double x[] = {100.5}, y[] = {60.5};
                    cloud.Add(x, y);
                    cloud.Draw();
                });
                const QRect ink = InkPlace(image);
                EXPECT_NEAR(ink.width(), size, 2.5) << shape;
                EXPECT_NEAR(ink.x() + ink.width() / 2.0, 100, 1) << shape;
                EXPECT_NEAR(ink.y() + ink.height() / 2.0, 60, shape >= 7 ? 2 : 1) << shape;
                const double height = symbol.Shape == TPointShape::WidePoint ? std::round(size / 3) : size;
                EXPECT_NEAR(ink.height(), height, shape >= 7 ? 4 : 2.5) << shape;
            }
}

} // namespace
} // namespace lumoplot
