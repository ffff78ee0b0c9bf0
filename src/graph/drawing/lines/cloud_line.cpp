#include "graph/drawing/lines/cloud_line.h"

#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/strokes/cloud_stroker.h"

#include <algorithm>
#include <list>
#include <memory>
#include <optional>

namespace lumoplot {
namespace {

constexpr std::int64_t kWorthReadingOnce = 12000; // points
constexpr std::size_t kJudged = 4096;             // points at the beginning that show how the line runs

constexpr std::size_t kMostKept = 4; // masks: a byte for each pixel of a plot

/// All that the coverage of a cloud depends on.
struct TCloudKey {
    std::uint64_t Stamp;
    std::uint64_t XStamp;
    QRect Area;
    std::vector<double> Numbers; ///< of the maps and the pen

    bool operator==(const TCloudKey&) const = default;
};

void AddMap(std::vector<double>& numbers, const TScaleMap& map) {
    for (const double value : {map.Min(), map.Max()}) {
        numbers.push_back(value);
        numbers.push_back(map.Position(value));
    }
    numbers.push_back(map.IsLog());
}

struct TKeptCloud {
    TCloudKey Key;
    std::shared_ptr<const TStrokeMask> Mask;
};

// Pictures that differ only beside the line or in its colour need not cover it again. The one used last comes
// first.
std::list<TKeptCloud>& KeptClouds() {
    static std::list<TKeptCloud> kept;
    return kept;
}

std::shared_ptr<const TStrokeMask> KeptMask(const TCloudKey& key) {
    auto& kept = KeptClouds();
    const auto found = std::ranges::find(kept, key, &TKeptCloud::Key);
    if (found == kept.end()) return nullptr;
    kept.splice(kept.begin(), kept, found);
    return found->Mask;
}

void Keep(TCloudKey key, std::shared_ptr<const TStrokeMask> mask) {
    auto& kept = KeptClouds();
    kept.push_front({std::move(key), std::move(mask)});
    if (kept.size() > kMostKept) kept.pop_back();
}

class TCloudLine {
public:
    TCloudLine(const QRect& area, std::int64_t count, double width, std::span<const double> dashes)
        : m_area(area), m_count(count), m_width(width),
          m_mask(std::make_shared<TStrokeMask>(area, TStrokeMask::kByCloud)),
          m_stroker(*m_mask, width, dashes) {}

    void Take(std::span<const double> x, std::span<const double> y) {
        if (m_isCloud) {
            if (*m_isCloud) m_stroker.Add(x, y);
            return;
        }
        m_x.insert(m_x.end(), x.begin(), x.end());
        m_y.insert(m_y.end(), y.begin(), y.end());
        if (m_x.size() < kJudged) return;
        m_isCloud = RunsToAndFro();
        if (*m_isCloud) m_stroker.Add(m_x, m_y);
    }

    bool IsCloud() const { return m_isCloud.value_or(false); }

    /// What the line covers, when it has been read.
    std::shared_ptr<const TStrokeMask> Finish() {
        m_stroker.End();
        return m_mask;
    }

private:
    bool RunsToAndFro() const {
        TLineRun run;
        for (std::size_t i = 1; i < m_x.size(); ++i) run.Take(InArea(i - 1), InArea(i));
        const double parts = static_cast<double>(m_count) / static_cast<double>(m_x.size());
        return CoversAsCloud({run.AlongX * parts, run.AlongY * parts}, m_area, m_width);
    }
    QPointF InArea(std::size_t i) const {
        const double x = std::max<double>(m_area.left(), std::min<double>(m_x[i], m_area.right()));
        const double y = std::max<double>(m_area.top(), std::min<double>(m_y[i], m_area.bottom()));
        return {x, y};
    }

    QRect m_area;
    std::int64_t m_count;
    double m_width;
    std::vector<double> m_x; ///< places, until it is known how the line runs
    std::vector<double> m_y;
    std::optional<bool> m_isCloud;
    std::shared_ptr<TStrokeMask> m_mask;
    TCloudStroker m_stroker;
};

} // namespace

bool DrawAsCloud(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
                 const QPen& pen) {
    const TSeries* xSeries = XSeriesOf(series);
    if (!canvas.IsRaster() || !xSeries || series.Count() < kWorthReadingOnce) return false;
    const TCanvas::TDeviceUnits deviceUnits(canvas);
    const QRect area = canvas.Painter().clipBoundingRect().toAlignedRect();
    const double width = PixelsOf(canvas, pen);
    const std::vector<double> dashes = DashesOf(pen, width);
    if (area.isEmpty()) return false;
    TCloudKey key{series.DataStamp(), xSeries->DataStamp(), area, dashes};
    key.Numbers.push_back(width);
    AddMap(key.Numbers, positions.XMap());
    AddMap(key.Numbers, positions.YMap());
    std::shared_ptr<const TStrokeMask> mask = KeptMask(key);
    if (!mask) {
        TCloudLine line(area, series.Count(), width, dashes);
        positions.ForEachRun([&](std::span<const double> x, std::span<const double> y) { line.Take(x, y); });
        if (!line.IsCloud()) return false;
        mask = line.Finish();
        Keep(std::move(key), mask);
    }
    mask->Draw(canvas.Painter(), pen.color());
    return true;
}

} // namespace lumoplot
