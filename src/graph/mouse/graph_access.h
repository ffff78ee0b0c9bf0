// What those hear of a graph who do not see it: its title and how many data sets it has, each data set with
// its extent, each point with its X and Y, and the point that the keys have walked to.
#pragma once

namespace lumoplot {

class TxyGraph;

/// Tells that the keys or the mouse are at another point.
void TellNearPoint(TxyGraph& graph);

} // namespace lumoplot
