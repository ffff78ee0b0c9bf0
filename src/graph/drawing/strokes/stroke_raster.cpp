#include "graph/drawing/strokes/stroke_raster.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace lumoplot {
namespace {

constexpr int kLanes = TStrokeMask::kTileWidth;
constexpr double kFull = 255;
constexpr double kFarInside = 16000; // leaves the lanes room in 16 bits
constexpr int kPhases = 8;           // places inside a pixel that have stamps of their own
constexpr double kLargestStamp = 32; // radius

using TLanes = std::array<std::int16_t, kLanes>;

// The coverage that one edge of a piece leaves: a number that grows by Across a column and by Down a row.
struct TEdge {
    double Start; ///< at the centre of pixel 0, 0
    double Across;
    double Down;
    int Side = 0;    ///< of its zero on which the edge lets something through; 0 where it hardly cuts a row
    double Zero = 0; ///< column where nothing is left in row 0
    double ZeroStep = 0; ///< by which it moves in a row
    TLanes Lanes;

    /// `normal` points inside and has length 1; the edge runs through `on`, `beyond` pixels further out.
    TEdge(QPointF normal, QPointF on, double beyond)
        : Start((normal.x() * (0.5 - on.x()) + normal.y() * (0.5 - on.y()) + beyond + 0.5) * kFull),
          Across(normal.x() * kFull), Down(normal.y() * kFull) {
        constexpr double kHardly = 1e-3;
        if (std::abs(normal.x()) > kHardly) {
            Side = normal.x() > 0 ? 1 : -1;
            Zero = -Start / Across;
            ZeroStep = -Down / Across;
        }
        for (std::size_t i = 0; i < kLanes; ++i)
            Lanes[i] = static_cast<std::int16_t>(static_cast<int>(Across * static_cast<double>(i)));
    }

    std::int16_t At(int x, double rowStart) const {
        return static_cast<std::int16_t>(std::clamp(rowStart + x * Across, -kFarInside, kFarInside));
    }
    double RowStart(int y) const { return Start + y * Down; }
    double ZeroAt(int y) const { return Zero + y * ZeroStep; }
};

// The columns of a row where edges let something through.
struct TColumnRange {
    double First;
    double Last;

    void CutBy(const TEdge& edge, int y) {
        const double zero = edge.ZeroAt(y);
        if (edge.Side > 0)
            First = std::max(First, zero);
        else if (edge.Side < 0)
            Last = std::min(Last, zero);
    }
};

// Sixteen pixels at once, written so that the compiler sees it.
void CoverBetween(std::uint8_t* target, std::int16_t one, const TLanes& oneLanes, std::int16_t two,
                  const TLanes& twoLanes) {
    std::array<std::uint8_t, kLanes> pixels;
    std::memcpy(pixels.data(), target, kLanes);
    for (std::size_t i = 0; i < kLanes; ++i) {
        const auto a = static_cast<std::int16_t>(one + oneLanes[i]);
        const auto b = static_cast<std::int16_t>(two + twoLanes[i]);
        auto least = std::min(a, b);
        least = std::clamp<std::int16_t>(least, 0, 255);
        pixels[i] = std::max(pixels[i], static_cast<std::uint8_t>(least));
    }
    std::memcpy(target, pixels.data(), kLanes);
}

void CoverInside(std::uint8_t* target, const std::array<TEdge, 4>& edges,
                 const std::array<std::int16_t, 4>& at) {
    std::array<std::uint8_t, kLanes> pixels;
    std::memcpy(pixels.data(), target, kLanes);
    for (std::size_t i = 0; i < kLanes; ++i) {
        const auto a = static_cast<std::int16_t>(at[0] + edges[0].Lanes[i]);
        const auto b = static_cast<std::int16_t>(at[1] + edges[1].Lanes[i]);
        const auto c = static_cast<std::int16_t>(at[2] + edges[2].Lanes[i]);
        const auto d = static_cast<std::int16_t>(at[3] + edges[3].Lanes[i]);
        auto least = std::min(std::min(a, b), std::min(c, d));
        least = std::clamp<std::int16_t>(least, 0, 255);
        pixels[i] = std::max(pixels[i], static_cast<std::uint8_t>(least));
    }
    std::memcpy(target, pixels.data(), kLanes);
}

void CoverAlike(std::uint8_t* target, const std::uint8_t* stamp) {
    std::array<std::uint8_t, kLanes> pixels, more;
    std::memcpy(pixels.data(), target, kLanes);
    std::memcpy(more.data(), stamp, kLanes);
    for (std::size_t i = 0; i < kLanes; ++i) pixels[i] = std::max(pixels[i], more[i]);
    std::memcpy(target, pixels.data(), kLanes);
}

std::uint8_t DiscCoverage(double distance, double radius) {
    return static_cast<std::uint8_t>(std::clamp((radius + 0.5 - distance) * kFull, 0.0, kFull));
}

// One piece as the four edges around it: its two sides, then its two ends.
class TPieceRaster {
public:
    TPieceRaster(TStrokeMask& mask, const TStrokePiece& piece, QPointF direction, double radius)
        : m_mask(mask), m_edges{TEdge({-direction.y(), direction.x()}, piece.A, radius),
                                TEdge({direction.y(), -direction.x()}, piece.A, radius),
                                TEdge(direction, piece.A, piece.BeyondA),
                                TEdge(-direction, piece.B, piece.BeyondB)} {
        const double beyond = std::max(piece.BeyondA, piece.BeyondB) + 0.5;
        const double high = (radius + 0.5) * std::abs(direction.x());
        const double top = std::min(piece.A.y(), piece.B.y());
        const double bottom = std::max(piece.A.y(), piece.B.y());
        const double past = beyond * std::abs(direction.y());
        const double wide = (radius + 0.5) * std::abs(direction.y()) + beyond * std::abs(direction.x());
        m_left = std::max(0.0, std::min(piece.A.x(), piece.B.x()) - wide);
        m_right = std::min(mask.Width() - 1.0, std::max(piece.A.x(), piece.B.x()) + wide);
        m_first = RowOf(top - high - past);
        m_last = RowOf(bottom + high + past);
        // Rows where the ends leave everything to the sides.
        const double inside = high + 2 * std::abs(direction.y()) + 1;
        m_plainFirst = RowOf(top + inside + 1);
        m_plainLast = RowOf(bottom - inside - 1);
    }

    void Take() {
        if (m_first >= m_mask.Height() || m_last < 0) return;
        const int last = std::min(m_last, m_mask.Height() - 1);
        for (int y = std::max(m_first, 0); y <= last;) {
            const int tileRow = y / TStrokeMask::kTileHeight;
            const int stop = std::min(last, (tileRow + 1) * TStrokeMask::kTileHeight - 1);
            TakeBand(tileRow, y, stop);
            y = stop + 1;
        }
    }

private:
    static int RowOf(double y) { return static_cast<int>(std::floor(std::clamp(y, -1e6, 1e6))); }

    bool IsPlain(int y) const { return y >= m_plainFirst && y <= m_plainLast; }

    TColumnRange ColumnsOf(int y) const {
        TColumnRange columns{0, m_mask.Width() - 1.0};
        columns.CutBy(m_edges[0], y);
        columns.CutBy(m_edges[1], y);
        if (IsPlain(y)) return columns;
        columns.CutBy(m_edges[2], y);
        columns.CutBy(m_edges[3], y);
        return columns;
    }

    // Whether the rows of a band change nothing. Between its ends a piece keeps inside its sides; near them
    // it keeps inside the columns that it spans.
    bool IsWhole(int tileRow, int first, int last) const {
        double left = m_left;
        double right = m_right;
        if (IsPlain(first) && IsPlain(last)) {
            const TColumnRange atFirst = ColumnsOf(first);
            const TColumnRange atLast = ColumnsOf(last);
            left = std::min(atFirst.First, atLast.First);
            right = std::max(atFirst.Last, atLast.Last);
        }
        if (left > right) return true;
        return m_mask.IsWhole(tileRow, static_cast<int>(left), static_cast<int>(right));
    }

    // Rows between the ends of the piece, whose two sides move on by the same step from row to row.
    void TakePlainBand(int tileRow, int first, int last) {
        const bool isFirstLeft = m_edges[0].Side > 0;
        const TEdge& left = m_edges[isFirstLeft ? 0 : 1];
        const TEdge& right = m_edges[isFirstLeft ? 1 : 0];
        const double end = m_mask.Width() - 1.0;
        double from = left.ZeroAt(first);
        double to = right.ZeroAt(first);
        int outerLeft = m_mask.Width();
        int outerRight = -1;
        std::uint8_t* row = m_mask.Row(first);
        for (int y = first; y <= last;
             ++y, from += left.ZeroStep, to += right.ZeroStep, row += m_mask.Stride()) {
            if (to < 0 || from > end) continue;
            int x = static_cast<int>(std::max(from, 0.0));
            const int stop = static_cast<int>(std::min(to, end));
            outerLeft = std::min(outerLeft, x);
            outerRight = std::max(outerRight, stop);
            for (; x <= stop; x += kLanes)
                CoverBetween(row + x, Rising(left, x - from), left.Lanes, Rising(right, x - to), right.Lanes);
        }
        if (outerLeft <= outerRight) m_mask.Touch(tileRow, outerLeft, outerRight, last - first + 1);
    }

    static std::int16_t Rising(const TEdge& edge, double columns) {
        return static_cast<std::int16_t>(std::clamp(columns * edge.Across, -kFarInside, kFarInside));
    }

    void TakeBand(int tileRow, int first, int last) {
        if (IsWhole(tileRow, first, last)) return;
        if (m_edges[0].Side != 0 && IsPlain(first) && IsPlain(last))
            return TakePlainBand(tileRow, first, last);
        int left = m_mask.Width();
        int right = -1;
        for (int y = first; y <= last; ++y) {
            const TColumnRange columns = ColumnsOf(y);
            if (!(columns.First <= columns.Last)) continue;
            const int from = static_cast<int>(columns.First);
            const int to = static_cast<int>(columns.Last);
            TakeRow(y, from, to);
            left = std::min(left, from);
            right = std::max(right, to);
        }
        if (left <= right) m_mask.Touch(tileRow, left, right, last - first + 1);
    }

    void TakeRow(int y, int from, int to) {
        std::uint8_t* row = m_mask.Row(y);
        const double one = m_edges[0].RowStart(y);
        const double two = m_edges[1].RowStart(y);
        if (IsPlain(y)) {
            for (int x = from; x <= to; x += kLanes)
                CoverBetween(row + x, m_edges[0].At(x, one), m_edges[0].Lanes, m_edges[1].At(x, two),
                             m_edges[1].Lanes);
            return;
        }
        const double three = m_edges[2].RowStart(y);
        const double four = m_edges[3].RowStart(y);
        for (int x = from; x <= to; x += kLanes)
            CoverInside(row + x, m_edges,
                        {m_edges[0].At(x, one), m_edges[1].At(x, two), m_edges[2].At(x, three),
                         m_edges[3].At(x, four)});
    }

    TStrokeMask& m_mask;
    std::array<TEdge, 4> m_edges;
    double m_left; ///< columns that the piece spans
    double m_right;
    int m_first;
    int m_last;
    int m_plainFirst;
    int m_plainLast;
};

} // namespace

TStrokeRaster::TStrokeRaster(TStrokeMask& mask, double width)
    : m_mask(mask), m_radius(width / 2),
      m_stampReach(static_cast<int>(std::ceil(std::min(m_radius, kLargestStamp) + 0.5))),
      m_stampStride((2 * m_stampReach + kLanes) / kLanes * kLanes),
      m_stamps(static_cast<std::size_t>(kPhases * kPhases)) {
}

void TStrokeRaster::TakePiece(const TStrokePiece& piece) {
    const QPointF along = piece.B - piece.A;
    const double length = std::sqrt(QPointF::dotProduct(along, along));
    if (!(length > 0)) return;
    TPieceRaster(m_mask, piece, along / length, m_radius).Take();
}

const TStrokeRaster::TStamp& TStrokeRaster::StampOf(int phaseX, int phaseY) {
    TStamp& stamp = m_stamps[static_cast<std::size_t>(phaseY * kPhases + phaseX)];
    if (!stamp.Pixels.empty()) return stamp;
    const int side = 2 * m_stampReach + 1;
    stamp.Pixels.resize(static_cast<std::size_t>(side * m_stampStride));
    const double centreX = m_stampReach + (phaseX + 0.5) / kPhases;
    const double centreY = m_stampReach + (phaseY + 0.5) / kPhases;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            stamp.Pixels[static_cast<std::size_t>(y * m_stampStride + x)] =
                DiscCoverage(std::hypot(x + 0.5 - centreX, y + 0.5 - centreY), m_radius);
    return stamp;
}

void TStrokeRaster::TakeDisc(QPointF centre) {
    const double reach = m_radius + 1;
    const bool isOutside = centre.x() < -reach || centre.y() < -reach ||
                           centre.x() > m_mask.Width() + reach || centre.y() > m_mask.Height() + reach;
    if (isOutside) return;
    const double left = std::floor(centre.x());
    const double top = std::floor(centre.y());
    const int x0 = static_cast<int>(left) - m_stampReach;
    const int x1 = x0 + 2 * m_stampReach;
    if (m_radius > kLargestStamp || x0 < 0 || x1 >= m_mask.Width()) return TakeLargeDisc(centre);
    const TStamp& stamp = StampOf(static_cast<int>((centre.x() - left) * kPhases),
                                  static_cast<int>((centre.y() - top) * kPhases));
    const int y0 = static_cast<int>(top) - m_stampReach;
    const int last = std::min(y0 + 2 * m_stampReach, m_mask.Height() - 1);
    for (int y = std::max(y0, 0); y <= last; ++y) {
        const std::uint8_t* source =
            stamp.Pixels.data() + static_cast<std::ptrdiff_t>(y - y0) * m_stampStride;
        for (int x = 0; x < m_stampStride && x0 + x < m_mask.Width(); x += kLanes)
            CoverAlike(m_mask.Row(y) + x0 + x, source + x);
    }
    for (int y = std::max(y0, 0); y <= last;
         y = (y / TStrokeMask::kTileHeight + 1) * TStrokeMask::kTileHeight)
        m_mask.Touch(y / TStrokeMask::kTileHeight, x0, x1, 1);
}

void TStrokeRaster::TakeLargeDisc(QPointF centre) {
    const double reach = m_radius + 0.5;
    const int first = std::max(0, static_cast<int>(std::floor(centre.y() - reach)));
    const int last = static_cast<int>(std::min(m_mask.Height() - 1.0, std::floor(centre.y() + reach)));
    for (int y = first; y <= last; ++y) {
        const double down = y + 0.5 - centre.y();
        const double half = std::sqrt(std::max(0.0, reach * reach - down * down));
        const int from =
            static_cast<int>(std::clamp(std::floor(centre.x() - half), 0.0, m_mask.Width() - 1.0));
        const int to = static_cast<int>(std::clamp(std::floor(centre.x() + half), 0.0, m_mask.Width() - 1.0));
        std::uint8_t* row = m_mask.Row(y);
        for (int x = from; x <= to; ++x)
            row[x] = std::max(row[x], DiscCoverage(std::hypot(x + 0.5 - centre.x(), down), m_radius));
        m_mask.Touch(y / TStrokeMask::kTileHeight, from, to, 1);
    }
}

bool TStrokeRaster::IsCovered(QPointF a, QPointF b) {
    const double reach = m_radius + 1.5;
    return m_mask.IsWholeIn(std::min(a.x(), b.x()) - reach, std::min(a.y(), b.y()) - reach,
                            std::max(a.x(), b.x()) + reach, std::max(a.y(), b.y()) + reach);
}

} // namespace lumoplot
