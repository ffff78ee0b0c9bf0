#include "graph/drawing/lines/cloud_line.h"

#include "graph/drawing/lines/line_painter.h"
#include "graph/drawing/strokes/cloud_stroker.h"

#include <optional>

namespace lumoplot {
namespace {

constexpr std::int64_t kWorthReadingOnce = 12000; // points
constexpr std::size_t kJudged = 4096;             // points at the beginning that show how the line runs

class TCloudLine {
public:
    TCloudLine(const QRect& area, std::int64_t count, double width, std::span<const double> dashes)
        : m_area(area), m_count(count), m_width(width), m_mask(area, TStrokeMask::kByCloud),
          m_stroker(m_mask, width, dashes) {}

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

    void Draw(QPainter& painter, const QColor& color) {
        m_stroker.End();
        m_mask.Draw(painter, color);
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
    TStrokeMask m_mask;
    TCloudStroker m_stroker;
};

} // namespace

bool DrawAsCloud(const TCanvas& canvas, const TSeries& series, const TSeriesPositions& positions,
                 const QPen& pen) {
    if (!canvas.IsRaster() || !XSeriesOf(series) || series.Count() < kWorthReadingOnce) return false;
    const TCanvas::TDeviceUnits deviceUnits(canvas);
    const QRect area = canvas.Painter().clipBoundingRect().toAlignedRect();
    const double width = PixelsOf(canvas, pen);
    const std::vector<double> dashes = DashesOf(pen, width);
    if (area.isEmpty()) return false;
    TCloudLine line(area, series.Count(), width, dashes);
    positions.ForEachRun([&](std::span<const double> x, std::span<const double> y) { line.Take(x, y); });
    if (line.IsCloud()) line.Draw(canvas.Painter(), pen.color());
    return line.IsCloud();
}

} // namespace lumoplot
