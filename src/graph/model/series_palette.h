// The colours and shapes that data sets get by their numbers, one after the other.
#pragma once

#include "graph/model/series.h"
#include "support/look.h"

#include <array>

namespace lumoplot {

inline constexpr std::array<TColor, 16> kSeriesColors = {
    kGray,    kGreen, kBlue, kRed,    kNavy,    kMaroon, kLime,       kOlive,
    kFuchsia, kAqua,  kTeal, kPurple, kSkyBlue, kGray,   kMoneyGreen, kPurple};

inline constexpr std::array<TPointShape, 8> kSeriesShapes = {
    TPointShape::XCross,     TPointShape::Circle,       TPointShape::Square, TPointShape::Diamond,
    TPointShape::UpTriangle, TPointShape::DownTriangle, TPointShape::Star,   TPointShape::Cross};

/// Gives a new data set the first colour, and its shape, from that of its number on that no other data set of
/// the graph has; that of its number where all are taken.
XYGRAPH_EXPORT void TakeNextStyle(TSeries& series);
/// As TakeNextStyle, for a data set that has come with a style, where another one has its colour.
XYGRAPH_EXPORT void TakeOwnStyle(TSeries& series);

} // namespace lumoplot
