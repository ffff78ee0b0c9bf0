// Covers a mask with lines that run to and fro until they fill it. Each segment is covered row by row,
// sixteen pixels at once; what segments leave free of a pixel multiplies, as lines that cross at random
// places cover it. What lies in tiles that are covered whole is passed over, so that the cost is limited by
// the pixels of the mask and hardly grows with the length of the lines.
#pragma once

#include "graph/drawing/strokes/stroke_raster.h"

#include <optional>
#include <span>

namespace lumoplot {

class TCloudStroker {
public:
    static constexpr int kLanes = TStrokeMask::kTileWidth; ///< pixels that are covered at once
    static constexpr double kWidestPen = 64; ///< pixels; of wider ones coverage has no room in 16 bits

    /// As for TLineStroker. Dashes end at whole rows or columns and go on where a line becomes visible again.
    TCloudStroker(TStrokeMask& mask, double width, std::span<const double> dashes);

    /// Goes on to these places, in device pixels; where one is not-a-number the line has a gap.
    void Add(std::span<const double> x, std::span<const double> y);
    /// Ends the line.
    void End();
    /// A whole line.
    void Stroke(std::span<const QPointF> line);

private:
    struct TSlant;
    struct TColumns;
    using TRamp = std::array<std::int16_t, kLanes>; ///< how coverage grows from pixel to pixel of a row
    /// A place and its pixel, moved so far inside that what the pen covers around it lies inside, too.
    struct TPlace {
        QPointF At;
        int X;
        int Y;
    };

    void ReadDashes(std::span<const double> dashes);
    bool IsOn(std::uint32_t phase) const { return m_isSolid || m_dashes[phase >> kDashShift] != 0; }

    TPlace PlaceAt(double x, double y) const;
    void LineTo(double x, double y);
    void FindCovered();
    void TakeSegment(QPointF from, QPointF to);
    void TakeLevel(QPointF from, QPointF to, const TSlant& slant);
    void TakeSteep(QPointF from, QPointF to, const TSlant& slant);
    void TakeColumns(const TColumns& columns, const TSlant& slant, const TRamp& ramp);
    const std::uint8_t* ShownFrom(int column, int left) const;
    void ShowDashes(int first, int end, std::uint32_t phase, std::uint32_t phasePerColumn);
    void TakeCorner(QPointF corner);

    static constexpr int kDashShift = 24; ///< from a phase to the place in m_dashes

    TStrokeMask& m_mask;
    TStrokeRaster m_raster;
    double m_width;
    int m_reach;
    bool m_canSkip; ///< the mask is large enough for places inside
    bool m_isSolid = true;
    double m_phasePerPixel = 0;
    std::uint32_t m_phase = 0; ///< of the dashes, a whole turn to all of them
    std::array<std::uint8_t, 256> m_dashes{};
    std::vector<std::uint8_t> m_shown; ///< by column, of the segment that is covered
    std::optional<TPlace> m_from;
    QRectF m_covered;    ///< device pixels: a line between places in it changes nothing; null for none
    int m_wholeThen = 0; ///< whole tiles when it was found
};

} // namespace lumoplot
