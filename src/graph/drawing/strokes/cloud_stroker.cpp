#include "graph/drawing/strokes/cloud_stroker.h"

#include "graph/drawing/strokes/clipping.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

namespace lumoplot {
namespace {

constexpr int kCloudLanes = TCloudStroker::kLanes;
constexpr double kPart = 256;      // coverage of a whole pixel
constexpr int kChunk = 64;         // columns that are looked at together
constexpr double kNoLength = 1e-6; // pixels
constexpr double kLevel = 1e-9; // pixels that a line falls in a step, at least, so that it can be divided by
constexpr double kTurn = 4294967296.0;

using TRamp = std::array<std::int16_t, kCloudLanes>;

// Covers a part of what is still free of sixteen pixels: as much as the lesser of two coverages of which one
// grows by the ramp and both together are `sum`. Written so that the compiler sees the sixteen.
void CoverMore(std::uint8_t* target, int one, int sum, const TRamp& ramp, const std::uint8_t* shown) {
    std::array<std::uint8_t, kCloudLanes> pixels;
    std::array<std::int8_t, kCloudLanes> isShown;
    std::memcpy(pixels.data(), target, kCloudLanes);
    std::memcpy(isShown.data(), shown, kCloudLanes);
    for (std::size_t i = 0; i < kCloudLanes; ++i) {
        const auto a = static_cast<std::int16_t>(one + ramp[i]);
        const auto b = static_cast<std::int16_t>(sum - a);
        const auto part = std::clamp<std::int16_t>(std::min(a, b), 0, 256) & isShown[i];
        const auto clear = static_cast<std::uint16_t>(static_cast<std::uint8_t>(~pixels[i]));
        const auto rest = static_cast<std::uint16_t>(clear * static_cast<std::uint16_t>(256 - part));
        pixels[i] = static_cast<std::uint8_t>(~static_cast<std::uint8_t>(rest >> 8));
    }
    std::memcpy(target, pixels.data(), kCloudLanes);
}

constexpr std::array<std::uint8_t, 2 * kCloudLanes> kShownThenNot = [] {
    std::array<std::uint8_t, 2 * kCloudLanes> shown{};
    std::fill_n(shown.begin(), kCloudLanes, std::uint8_t(255));
    return shown;
}();

constexpr TRamp kSteepRamp = [] {
    TRamp ramp{};
    for (int i = 0; i < kCloudLanes; ++i)
        ramp[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(256 * i);
    return ramp;
}();

// Of the pixels whose middle lies beyond the place the first.
int BorderAt(double place, int length) {
    return static_cast<int>(std::clamp(std::ceil(place - 0.5), 0.0, static_cast<double>(length)));
}

} // namespace

/// How a segment runs along its longer side.
struct TCloudStroker::TSlant {
    double Slope; ///< pixels across a step
    double Span;  ///< pixels across that the pen covers
    std::uint32_t PhasePerStep;
};

/// Columns, rows that the pen covers there, and how low the pen begins in the middle of column 0.
struct TCloudStroker::TColumns {
    int First;
    int End;
    int Top;
    int Bottom;
    double Low;
};

TCloudStroker::TCloudStroker(TStrokeMask& mask, double width, std::span<const double> dashes)
    : m_mask(mask), m_raster(mask, width), m_width(width), m_reach(static_cast<int>(width / 2) + 2),
      m_canSkip(mask.Width() > 2 * m_reach && mask.Height() > 2 * m_reach) {
    ReadDashes(dashes);
}

void TCloudStroker::ReadDashes(std::span<const double> dashes) {
    const double period = std::accumulate(dashes.begin(), dashes.end(), 0.0);
    if (!(period > 0)) return;
    m_isSolid = false;
    m_phasePerPixel = kTurn / period;
    m_shown.resize(static_cast<std::size_t>(m_mask.Width()) + kLanes);
    double end = 0;
    std::size_t place = 0;
    for (std::size_t dash = 0; dash < dashes.size(); ++dash) {
        end += dashes[dash] / period * static_cast<double>(m_dashes.size());
        for (; static_cast<double>(place) + 0.5 < end && place < m_dashes.size(); ++place)
            m_dashes[place] = dash % 2 == 0 ? 255 : 0;
    }
}

void TCloudStroker::Stroke(std::span<const QPointF> line) {
    for (const QPointF place : line) LineTo(place.x(), place.y());
    End();
}

TCloudStroker::TPlace TCloudStroker::PlaceAt(double x, double y) const {
    const QPointF at = QPointF(x, y) - m_mask.Area().topLeft();
    const auto inside = [this](double place, int length) {
        return static_cast<int>(std::max<double>(m_reach, std::min<double>(place, length - 1 - m_reach)));
    };
    return {at, inside(at.x(), m_mask.Width()), inside(at.y(), m_mask.Height())};
}

void TCloudStroker::Add(std::span<const double> x, std::span<const double> y) {
    FindCovered();
    const double left = m_covered.left(), right = m_covered.right();
    const double top = m_covered.top(), bottom = m_covered.bottom();
    const auto isCovered = [&](std::size_t i) {
        return (x[i] > left) & (x[i] < right) & (y[i] > top) & (y[i] < bottom);
    };
    for (std::size_t i = 0; i < x.size(); ++i) {
        // Of a run of places that are covered only the first and the last one matter.
        if (isCovered(i) && i > 0 && isCovered(i - 1)) {
            while (i + 1 < x.size() && isCovered(i + 1)) ++i;
            m_from = PlaceAt(x[i], y[i]);
            continue;
        }
        if (x[i] != x[i] || y[i] != y[i]) {
            End();
            continue;
        }
        LineTo(x[i], y[i]);
    }
}

void TCloudStroker::FindCovered() {
    constexpr int kWorthLooking = 32; // parts of the tiles that have become whole since
    const QRect& area = m_mask.Area();
    const int tiles = area.width() * area.height() / (TStrokeMask::kTileWidth * TStrokeMask::kTileHeight);
    if ((m_mask.WholeCount() - m_wholeThen) * kWorthLooking <= tiles) return;
    m_wholeThen = m_mask.WholeCount();
    const QRectF whole = m_mask.LargestWhole().adjusted(m_reach, m_reach, -m_reach, -m_reach);
    m_covered = whole.isValid() ? whole.translated(area.topLeft()) : QRectF();
}

void TCloudStroker::LineTo(double x, double y) {
    const TPlace to = PlaceAt(x, y);
    if (m_from) {
        const int left = std::min(m_from->X, to.X), right = std::max(m_from->X, to.X);
        const int top = std::min(m_from->Y, to.Y), bottom = std::max(m_from->Y, to.Y);
        const bool isCovered = m_canSkip && m_mask.IsWholeBetween(left - m_reach, top - m_reach,
                                                                  right + m_reach, bottom + m_reach);
        if (!isCovered) TakeSegment(m_from->At, to.At);
    }
    m_from = to;
}

void TCloudStroker::End() {
    if (m_from) TakeCorner(m_from->At);
    m_from.reset();
    m_phase = 0;
}

void TCloudStroker::TakeCorner(QPointF corner) {
    if (IsOn(m_phase) && !m_raster.IsCovered(corner, corner)) m_raster.TakeDisc(corner);
}

void TCloudStroker::TakeSegment(QPointF from, QPointF to) {
    const double beyond = m_width + 2;
    const QRectF reach =
        QRectF(0, 0, m_mask.Width(), m_mask.Height()).adjusted(-beyond, -beyond, beyond, beyond);
    if (!reach.contains(from) || !reach.contains(to)) {
        const auto part = ClippedSegment(from, to, reach);
        if (!part) return;
        std::tie(from, to) = *part;
    }
    const QPointF along = to - from;
    const double length = std::sqrt(QPointF::dotProduct(along, along));
    if (length < kNoLength) return;
    TakeCorner(from);
    const bool isLevel = std::abs(along.x()) >= std::abs(along.y());
    const double longer = isLevel ? along.x() : along.y();
    const double perStep = length / std::abs(longer);
    const TSlant slant{(isLevel ? along.y() : along.x()) / longer, m_width * perStep,
                       m_isSolid ? 0
                                 : static_cast<std::uint32_t>(std::fmod(perStep * m_phasePerPixel, kTurn))};
    const bool isBackwards = longer < 0;
    if (isLevel)
        TakeLevel(isBackwards ? to : from, isBackwards ? from : to, slant);
    else
        TakeSteep(isBackwards ? to : from, isBackwards ? from : to, slant);
    if (!m_isSolid)
        m_phase += static_cast<std::uint32_t>(static_cast<std::int64_t>(length * m_phasePerPixel));
}

// Columns whose middle lies between the two places.
void TCloudStroker::TakeLevel(QPointF from, QPointF to, const TSlant& slant) {
    const int first = BorderAt(from.x(), m_mask.Width());
    const int end = BorderAt(to.x(), m_mask.Width());
    TRamp ramp;
    for (int i = 0; i < kLanes; ++i)
        ramp[static_cast<std::size_t>(i)] = static_cast<std::int16_t>(-slant.Slope * kPart * i);
    const double low =
        from.y() + (0.5 - from.x()) * slant.Slope - slant.Span / 2; // at the middle of column 0
    for (int x = first; x < end;) {
        const int stop = std::min(end, (x / kChunk + 1) * kChunk);
        const auto [least, most] = std::minmax({low + x * slant.Slope, low + (stop - 1) * slant.Slope});
        const int top = std::max(0, static_cast<int>(least));
        const int bottom = std::min(m_mask.Height() - 1, static_cast<int>(most + slant.Span));
        if (top <= bottom && !m_mask.IsWholeBetween(x, top, stop - 1, bottom)) {
            if (!m_isSolid)
                ShowDashes(x, stop, m_phase + static_cast<std::uint32_t>(x - first) * slant.PhasePerStep,
                           slant.PhasePerStep);
            TakeColumns({x, stop, top, bottom, low}, slant, ramp);
        }
        x = stop;
    }
}

// Of each row the columns where the pen's lower end is above the row's end, and its upper one below its
// start.
void TCloudStroker::TakeColumns(const TColumns& columns, const TSlant& slant, const TRamp& ramp) {
    const double slope = std::abs(slant.Slope) < kLevel ? kLevel : slant.Slope;
    const double columnsPerRow = 1 / slope;
    const double beyond = slope > 0 ? slant.Span : -1;
    double enters = (columns.Top - beyond - columns.Low) * columnsPerRow;
    const double length = (slant.Span + 1) * std::abs(columnsPerRow) + 1;
    const int sum = static_cast<int>((slant.Span + 1) * kPart);
    const int perRun = static_cast<int>(-slant.Slope * kPart * kLanes);
    const auto columnAt = [&columns](double x) {
        return static_cast<int>(std::clamp<double>(x, columns.First, columns.End));
    };
    for (int y = columns.Top; y <= columns.Bottom;) {
        const int tileRow = y / TStrokeMask::kTileHeight;
        const int stop = std::min(columns.Bottom + 1, (tileRow + 1) * TStrokeMask::kTileHeight);
        const double last = enters + (stop - 1 - y) * columnsPerRow;
        const int left = columnAt(std::min(enters, last));
        const int right = columnAt(std::max(enters, last) + length) - 1;
        if (left > right || m_mask.IsWhole(tileRow, left, right)) {
            enters += (stop - y) * columnsPerRow;
            y = stop;
            continue;
        }
        m_mask.Touch(tileRow, left, right, stop - y);
        for (; y < stop; ++y, enters += columnsPerRow) {
            const int begin = columnAt(enters);
            const int end = columnAt(enters + length);
            int one = static_cast<int>((y + 1 - columns.Low - begin * slant.Slope) * kPart);
            std::uint8_t* pixels = m_mask.Row(y);
            for (int x = begin; x < end; x += kLanes, one += perRun)
                CoverMore(pixels + x, one, sum, ramp, ShownFrom(x, end - x));
        }
    }
}

// Rows whose middle lies between the two places.
void TCloudStroker::TakeSteep(QPointF from, QPointF to, const TSlant& slant) {
    const int first = BorderAt(from.y(), m_mask.Height());
    const int end = BorderAt(to.y(), m_mask.Height());
    const double left = from.x() + (0.5 - from.y()) * slant.Slope - slant.Span / 2; // at the middle of row 0
    const int sum = static_cast<int>((slant.Span + 1) * kPart);
    std::uint32_t phase = m_phase;
    for (int y = first; y < end;) {
        const int tileRow = y / TStrokeMask::kTileHeight;
        const int stop = std::min(end, (tileRow + 1) * TStrokeMask::kTileHeight);
        const auto [least, most] = std::minmax({left + y * slant.Slope, left + (stop - 1) * slant.Slope});
        const int outerLeft = static_cast<int>(std::max(0.0, least));
        const int outerRight = static_cast<int>(std::min(m_mask.Width() - 1.0, most + slant.Span));
        if (outerLeft > outerRight || m_mask.IsWhole(tileRow, outerLeft, outerRight)) {
            phase += static_cast<std::uint32_t>(stop - y) * slant.PhasePerStep;
            y = stop;
            continue;
        }
        m_mask.Touch(tileRow, outerLeft, outerRight, stop - y);
        for (; y < stop; ++y, phase += slant.PhasePerStep) {
            if (!IsOn(phase)) continue;
            const double here = left + y * slant.Slope;
            const int begin = static_cast<int>(std::max(0.0, here));
            const int last = static_cast<int>(std::min(m_mask.Width() - 1.0, here + slant.Span));
            int one = static_cast<int>((begin + 1 - here) * kPart);
            std::uint8_t* pixels = m_mask.Row(y);
            for (int x = begin; x <= last; x += kLanes, one += kLanes * static_cast<int>(kPart))
                CoverMore(pixels + x, one, sum, kSteepRamp, kShownThenNot.data());
        }
    }
}

const std::uint8_t* TCloudStroker::ShownFrom(int column, int left) const {
    if (m_isSolid) return kShownThenNot.data() + kLanes - std::min(left, kLanes);
    return m_shown.data() + column;
}

void TCloudStroker::ShowDashes(int first, int end, std::uint32_t phase, std::uint32_t phasePerColumn) {
    for (int x = first; x < end; ++x, phase += phasePerColumn)
        m_shown[static_cast<std::size_t>(x)] = m_dashes[phase >> kDashShift];
    std::fill_n(m_shown.begin() + end, kLanes, std::uint8_t(0));
}

} // namespace lumoplot
