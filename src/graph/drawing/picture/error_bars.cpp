#include "graph/drawing/picture/error_bars.h"

#include "graph/drawing/lines/polylines.h"
#include "graph/drawing/strokes/stroke_mask.h"
#include "graph/model/graph.h"
#include "graph/plotted/paired_points.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumoplot {
namespace {

constexpr double kBarWidth = 1;             // units
constexpr double kCapWidth = 7;             // units, the bar included
constexpr std::size_t kMostVectors = 20000; // bars that are shapes of their own
constexpr double kFinestColumns = 6;        // of merged bars in a unit

/// In device pixels; on paper, in the units that stand for them.
struct TErrorBar {
    double X;
    double Top;
    double Bottom;
    bool HasTopCap;
    bool HasBottomCap;
};

// The end of a bar: where the axis has no place for it, that of the axis.
struct TBarEnd {
    double Place;
    bool HasCap;
};

TBarEnd EndAt(const TScaleMap& map, double value) {
    const double place = FarthestPlace(map.Position(value));
    if (std::isfinite(value) && std::isfinite(place)) return {place, true};
    return {map.Position(map.Min()), false};
}

template <class TTake>
void ForEachBar(const TSeries& series, const TScaleMap& xMap, const TScaleMap& yMap, TTake take) {
    TDrawnPoints(series).ForEachRun([&](const TDrawnRun& run) {
        for (std::size_t i = 0; i < run.YErrors.size(); ++i) {
            const double error = run.YErrors[i];
            const double x = FarthestPlace(xMap.Position(run.X[i]));
            const double y = yMap.Position(run.Y[i]);
            if (!(error > 0) || !std::isfinite(x) || !std::isfinite(y)) continue;
            TBarEnd low = EndAt(yMap, run.Y[i] - error);
            TBarEnd high = EndAt(yMap, run.Y[i] + error);
            if (low.Place < high.Place) std::swap(low, high); // a reversed axis
            take(TErrorBar{x, high.Place, low.Place, high.HasCap, low.HasCap});
        }
    });
}

/// Covers whole pixels of a mask.
class TBarCover {
public:
    TBarCover(TStrokeMask& mask, double pixelsPerUnit)
        : m_mask(mask), m_width(std::max(1, qRound(kBarWidth * pixelsPerUnit))),
          m_cap(std::max(m_width + 2, qRound(kCapWidth * pixelsPerUnit))) {
        m_cap += (m_cap - m_width) % 2; // the bar stands in its middle
        m_covered.resize(static_cast<std::size_t>(std::max(mask.Width(), 0)));
    }

    void Take(const TErrorBar& bar) {
        const double x = bar.X - m_mask.Area().left();
        if (!(x > -m_cap) || !(x < m_mask.Width() + m_cap)) return;
        const int left = static_cast<int>(std::lround(x - m_width / 2.0));
        const int top = RowOf(bar.Top);
        const int bottom = RowOf(bar.Bottom);
        FillBar(left, {top - m_width / 2, std::max(top, bottom) - m_width / 2 + m_width});
        const int capLeft = left - (m_cap - m_width) / 2;
        if (bar.HasTopCap) Fill(capLeft, top - m_width / 2, m_cap, m_width);
        if (bar.HasBottomCap) Fill(capLeft, bottom - m_width / 2, m_cap, m_width);
    }

private:
    /// From a row to before another one.
    struct TRows {
        int First = 0;
        int End = 0;
    };

    // Of many bars in a column only what stands out from those before is filled.
    void FillBar(int left, TRows rows) {
        if (left < 0 || left >= m_mask.Width()) return Fill(left, rows.First, m_width, rows.End - rows.First);
        TRows& covered = m_covered[static_cast<std::size_t>(left)];
        if (rows.First >= covered.End || rows.End <= covered.First) {
            Fill(left, rows.First, m_width, rows.End - rows.First);
            covered = rows;
            return;
        }
        Fill(left, rows.First, m_width, covered.First - rows.First);
        Fill(left, covered.End, m_width, rows.End - covered.End);
        covered = {std::min(covered.First, rows.First), std::max(covered.End, rows.End)};
    }

    int RowOf(double y) const {
        constexpr double kBeyond = 64;
        return static_cast<int>(
            std::floor(std::clamp(y - m_mask.Area().top(), -kBeyond, m_mask.Height() + kBeyond)));
    }

    void Fill(int left, int top, int width, int height) {
        constexpr int kTile = TStrokeMask::kTileHeight;
        const int x0 = std::max(left, 0);
        const int x1 = std::min(left + width, m_mask.Width());
        const int y1 = std::min(top + height, m_mask.Height());
        if (x0 >= x1) return;
        for (int y = std::max(top, 0); y < y1;) {
            const int tileRow = y / kTile;
            const int stop = std::min(y1, (tileRow + 1) * kTile);
            const int rows = stop - y;
            if (m_mask.IsWhole(tileRow, x0, x1 - 1)) {
                y = stop;
                continue;
            }
            for (; y < stop; ++y) std::memset(m_mask.Row(y) + x0, 255, static_cast<std::size_t>(x1 - x0));
            m_mask.Touch(tileRow, x0, x1 - 1, rows);
        }
    }

    TStrokeMask& m_mask;
    int m_width;
    int m_cap;
    std::vector<TRows> m_covered; ///< by the column of a bar's left edge
};

// Those that overlap in a narrow column become one without caps.
void MergeBars(std::vector<TErrorBar>& bars, double column) {
    for (TErrorBar& bar : bars) bar.X = std::round(bar.X / column) * column;
    std::ranges::sort(
        bars, [](const TErrorBar& a, const TErrorBar& b) { return a.X != b.X ? a.X < b.X : a.Top < b.Top; });
    std::size_t kept = 0;
    for (std::size_t i = 1; i < bars.size(); ++i) {
        TErrorBar& last = bars[kept];
        if (bars[i].X == last.X && bars[i].Top <= last.Bottom) {
            last.Bottom = std::max(last.Bottom, bars[i].Bottom);
            last.HasTopCap = last.HasBottomCap = false;
        } else {
            bars[++kept] = bars[i];
        }
    }
    bars.resize(std::min(bars.size(), kept + 1));
}

void DrawAsVectors(const TCanvas& canvas, std::vector<TErrorBar> bars, const QRectF& visible,
                   const QColor& color) {
    if (bars.size() > kMostVectors) MergeBars(bars, canvas.PixelsPerUnit() / kFinestColumns);
    std::vector<QLineF> lines;
    for (const TErrorBar& bar : bars) {
        const double x = canvas.FromDeviceX(bar.X);
        const double top = canvas.FromDeviceY(bar.Top);
        const double bottom = canvas.FromDeviceY(bar.Bottom);
        if (x < visible.left() || x > visible.right()) continue;
        // Not every vector format cuts off what lies outside a clip rectangle.
        const double shownTop = std::max(top, visible.top());
        const double shownBottom = std::min(bottom, visible.bottom());
        if (shownTop > shownBottom) continue;
        lines.emplace_back(x, shownTop, x, shownBottom);
        const auto addCap = [&](double y) {
            lines.emplace_back(std::max(x - kCapWidth / 2, visible.left()), y,
                               std::min(x + kCapWidth / 2, visible.right()), y);
        };
        if (bar.HasTopCap && shownTop == top) addCap(top);
        if (bar.HasBottomCap && shownBottom == bottom) addCap(bottom);
    }
    canvas.Painter().setPen(QPen(color, canvas.FittingWidth(kBarWidth), Qt::SolidLine, Qt::FlatCap));
    canvas.Painter().drawLines(lines.data(), static_cast<int>(lines.size()));
}

} // namespace

void DrawErrorBars(const TCanvas& canvas, const TSeries& series, const TGraphLayout& layout,
                   const QRectF& visible) {
    if (!IsDrawn(series) || !series.HasYErrors() || !(series.PointsShown() || series.LinesShown())) return;
    const QRectF plot = canvas.ToDevice(layout.Plot());
    const TScaleMap xMap = MapOf(*series.Graph().XAxis(), plot);
    const TScaleMap yMap = MapOf(*series.YAxisOfSeries(), plot);
    const QColor color = ToQColor(series.PointsShown() ? series.PointColor() : series.LineColor());
    if (canvas.IsRaster()) {
        const TCanvas::TDeviceUnits deviceUnits(canvas);
        TStrokeMask mask(canvas.ToDevice(visible).toAlignedRect());
        TBarCover cover(mask, canvas.PixelsPerUnit());
        ForEachBar(series, xMap, yMap, [&](const TErrorBar& bar) { cover.Take(bar); });
        mask.Draw(canvas.Painter(), color);
        return;
    }
    std::vector<TErrorBar> bars;
    ForEachBar(series, xMap, yMap, [&](const TErrorBar& bar) { bars.push_back(bar); });
    DrawAsVectors(canvas, std::move(bars), visible, color);
}

} // namespace lumoplot
