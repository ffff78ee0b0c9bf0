// The settings of a graph, one row each: key and name in files, getter and setter, and the default that a new
// object and ResetToDefaults give. Files, snapshots and listings walk these tables.
#pragma once

#include "graph/model/mark.h"
#include "stream/section.h"

namespace lumoplot {

class TAppearance;
class TAxis;
class TDimensions;
class TLegend;
class TSeries;

std::span<const TSectionRow<TAppearance>> AppearanceRows();
std::span<const TSectionRow<TDimensions>> DimensionsRows();
std::span<const TSectionRow<TAxis>> AxisRows();
std::span<const TSectionRow<TLegend>> LegendRows();
std::span<const TSectionRow<TSeries>> SeriesRows();
std::span<const TSectionRow<TGraphMark>> MarkRows();

/// Gives every setting of the table that has a default its default, without a notification.
template <class T>
void ResetSettings(std::span<const TSectionRow<T>> rows, T& object) {
    for (const TSectionRow<T>& row : rows)
        if (row.reset) row.reset(object);
}

} // namespace lumoplot
