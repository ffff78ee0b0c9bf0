#include "graph/drawing/strokes/cloud_stroker.h"

#include <algorithm>
#include <cmath>

namespace lumoplot {
namespace {

constexpr int kFraction = 16; // bits behind the point of places across
constexpr std::int64_t kOnePixel = std::int64_t(1) << kFraction;
constexpr double kPartLength = 96; // pixels; longer segments are looked at in halves whether they show
constexpr double kNoLength = 1e-6; // pixels

std::int64_t ToFixed(double place) {
    return static_cast<std::int64_t>(std::floor(place * static_cast<double>(kOnePixel)));
}

// Covers a part (of kOnePixel) of what is still free of the pixel.
void CoverMore(std::uint8_t& pixel, std::int64_t part) {
    const auto more = static_cast<unsigned>(255 - pixel) * static_cast<unsigned>(part) + kOnePixel / 2;
    pixel = static_cast<std::uint8_t>(pixel + (more >> kFraction));
}

// Mask and places as a walk along rows or columns sees them.
template <Qt::Orientation kWay>
struct TAlong {
    static constexpr bool kIsAcross = kWay == Qt::Horizontal;
    static constexpr int kTile = kIsAcross ? TStrokeMask::kTileWidth : TStrokeMask::kTileHeight;

    static double Along(QPointF p) { return kIsAcross ? p.x() : p.y(); }
    static double Across(QPointF p) { return kIsAcross ? p.y() : p.x(); }

    explicit TAlong(TStrokeMask& mask)
        : Mask(mask), Length(kIsAcross ? mask.Width() : mask.Height()),
          Room(kIsAcross ? mask.Height() : mask.Width()),
          Stride(kIsAcross ? 1 : static_cast<std::ptrdiff_t>(mask.Stride())),
          StrideAcross(kIsAcross ? static_cast<std::ptrdiff_t>(mask.Stride()) : 1) {}

    bool IsWhole(int tile, int first, int last) const {
        if constexpr (!kIsAcross) return Mask.IsWhole(tile, first, last);
        constexpr int kHeight = TStrokeMask::kTileHeight;
        for (int row = first / kHeight; row <= last / kHeight; ++row)
            if (!Mask.IsWhole(row, tile * kTile, tile * kTile)) return false;
        return true;
    }

    void Touch(int tile, int first, int last, int steps) const {
        if constexpr (!kIsAcross) return Mask.Touch(tile, first, last, steps);
        constexpr int kHeight = TStrokeMask::kTileHeight;
        for (int row = first / kHeight; row <= last / kHeight; ++row)
            Mask.Touch(row, tile * kTile, tile * kTile, steps);
    }

    TStrokeMask& Mask;
    int Length;
    int Room; ///< across
    std::ptrdiff_t Stride;
    std::ptrdiff_t StrideAcross;
};

} // namespace

/// What walks along a segment need to know of it.
struct TCloudStroker::TSegment {
    double Slope;      ///< pixels across a step
    double PerStep;    ///< pixels of the line a step
    std::int64_t Span; ///< pixels across that the pen covers
    bool IsShallow;
};

namespace {

// Takes the columns (or rows) whose middle lies between two places, tile by tile, from the lower number on:
// with dashes that may be against the line's direction, which nobody sees in a cloud.
template <Qt::Orientation kWay, class TSegment>
class TWalk {
public:
    TWalk(TStrokeMask& mask, TDashWalk& dashes, const TSegment& segment)
        : m_way(mask), m_dashes(dashes), m_segment(segment), m_slope(ToFixed(segment.Slope)) {}

    void Take(QPointF from, QPointF to) {
        const double start = TWay::Along(from);
        const double stop = TWay::Along(to);
        const int end = BorderAt(std::max(start, stop));
        m_place = BorderAt(std::min(start, stop));
        m_low = ToFixed(TWay::Across(from) + (m_place + 0.5 - start) * m_segment.Slope) - m_segment.Span / 2;
        while (m_place < end) TakeTile(std::min(end, (m_place / TWay::kTile + 1) * TWay::kTile) - m_place);
    }

private:
    using TWay = TAlong<kWay>;

    int BorderAt(double place) const {
        return static_cast<int>(std::clamp(std::ceil(place - 0.5), 0.0, static_cast<double>(m_way.Length)));
    }

    void Skip(int steps) {
        m_dashes.Skip(steps * m_segment.PerStep);
        m_low += steps * m_slope;
        m_place += steps;
    }

    void TakeTile(int steps) {
        const std::int64_t lowAtEnd = m_low + (steps - 1) * m_slope;
        const std::int64_t firstPixel = std::min(m_low, lowAtEnd) >> kFraction;
        const std::int64_t lastPixel = (std::max(m_low, lowAtEnd) + m_segment.Span) >> kFraction;
        if (lastPixel < 0 || firstPixel >= m_way.Room) return Skip(steps);
        const int tile = m_place / TWay::kTile;
        const int first = static_cast<int>(std::max<std::int64_t>(firstPixel, 0));
        const int last = static_cast<int>(std::min<std::int64_t>(lastPixel, m_way.Room - 1));
        if (m_way.IsWhole(tile, first, last)) return Skip(steps);
        const bool isInside = firstPixel >= 0 && lastPixel < m_way.Room;
        for (int left = steps; left > 0;) {
            const int run = StepsOfDash(left);
            if (m_dashes.IsOn()) isInside ? CoverInside(run) : CoverAtEdge(run);
            Skip(run);
            left -= run;
        }
        m_way.Touch(tile, first, last, steps);
    }

    int StepsOfDash(int most) const {
        const double steps = m_dashes.Left() / m_segment.PerStep;
        return steps >= most ? most : static_cast<int>(steps) + 1;
    }

    std::uint8_t* Pixels() const { return m_way.Mask.Row(0) + m_place * m_way.Stride; }

    // A pen is at least a pixel wide: its first and its last pixel are not the same.
    void CoverInside(int steps) const {
        std::int64_t low = m_low;
        std::uint8_t* pixels = Pixels();
        const std::ptrdiff_t stride = m_way.StrideAcross;
        for (int i = 0; i < steps; ++i, low += m_slope, pixels += m_way.Stride) {
            const std::int64_t high = low + m_segment.Span;
            std::uint8_t* pixel = pixels + (low >> kFraction) * stride;
            std::uint8_t* const last = pixels + (high >> kFraction) * stride;
            CoverMore(*pixel, kOnePixel - (low & (kOnePixel - 1)));
            for (pixel += stride; pixel != last; pixel += stride) *pixel = 255;
            CoverMore(*last, high & (kOnePixel - 1));
        }
    }

    void CoverAtEdge(int steps) const {
        std::int64_t low = m_low;
        std::uint8_t* pixels = Pixels();
        for (int i = 0; i < steps; ++i, low += m_slope, pixels += m_way.Stride) {
            const std::int64_t high = low + m_segment.Span;
            const std::int64_t first = std::max<std::int64_t>(low >> kFraction, 0);
            const std::int64_t last = std::min<std::int64_t>(high >> kFraction, m_way.Room - 1);
            for (std::int64_t pixel = first; pixel <= last; ++pixel) {
                const std::int64_t begins = std::max(low, pixel << kFraction);
                CoverMore(pixels[pixel * m_way.StrideAcross],
                          std::min(high, (pixel + 1) << kFraction) - begins);
            }
        }
    }

    TWay m_way;
    TDashWalk& m_dashes;
    const TSegment& m_segment;
    std::int64_t m_slope;
    std::int64_t m_low = 0; ///< where the pen's span of the next step begins
    int m_place = 0;
};

} // namespace

TCloudStroker::TCloudStroker(TStrokeMask& mask, double width, std::span<const double> dashes)
    : m_mask(mask), m_raster(mask, width), m_width(width), m_dashes(dashes) {
}

void TCloudStroker::Stroke(std::span<const QPointF> line) {
    m_dashes.Restart();
    const QPointF corner = m_mask.Area().topLeft();
    QPointF from = line.front() - corner;
    for (const QPointF place : line.subspan(1)) {
        const QPointF to = place - corner;
        TakeSegment(from, to);
        from = to;
    }
    TakeCorner(from);
}

void TCloudStroker::TakeCorner(QPointF corner) {
    if (m_dashes.IsOn() && !m_raster.IsCovered(corner, corner)) m_raster.TakeDisc(corner);
}

void TCloudStroker::TakeSegment(QPointF from, QPointF to) {
    const QPointF along = to - from;
    if (m_raster.IsCovered(from, to)) {
        if (!m_dashes.IsSolid()) m_dashes.Skip(std::sqrt(QPointF::dotProduct(along, along)));
        return;
    }
    const double length = std::sqrt(QPointF::dotProduct(along, along));
    if (length < kNoLength) return;
    TakeCorner(from);
    const bool isShallow = std::abs(along.x()) >= std::abs(along.y());
    const double longer = isShallow ? along.x() : along.y();
    const double perStep = length / std::abs(longer);
    TakePart(from, to,
             {(isShallow ? along.y() : along.x()) / longer, perStep, ToFixed(m_width * perStep), isShallow});
}

void TCloudStroker::TakePart(QPointF from, QPointF to, const TSegment& segment) {
    if (m_mask.HasWholeTiles()) {
        const double steps = segment.IsShallow ? std::abs(to.x() - from.x()) : std::abs(to.y() - from.y());
        if (m_raster.IsCovered(from, to)) return m_dashes.Skip(steps * segment.PerStep);
        if (steps > kPartLength) {
            const QPointF middle = (from + to) / 2;
            TakePart(from, middle, segment);
            return TakePart(middle, to, segment);
        }
    }
    if (segment.IsShallow)
        TWalk<Qt::Horizontal, TSegment>(m_mask, m_dashes, segment).Take(from, to);
    else
        TWalk<Qt::Vertical, TSegment>(m_mask, m_dashes, segment).Take(from, to);
}

} // namespace lumoplot
