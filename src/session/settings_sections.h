// The sections of settings that make up a graph, each a table of rows with its object, in one order.
#pragma once

#include "graph/model/graph.h"
#include "graph/model/setting_rows.h"
#include "stream/reader.h"

#include <span>

namespace lumoplot {

template <class TGraph, class TVisitor>
void VisitSections(TGraph& graph, TVisitor visit) {
    visit(AppearanceRows(), *graph.Appearance());
    visit(DimensionsRows(), *graph.Dimensions());
    for (auto* axis : {graph.XAxis(), graph.YAxis(), graph.YAxis_Second()}) visit(AxisRows(), *axis);
    visit(LegendRows(), *graph.Legend());
}

/// Gives the object what the bytes of its section say.
template <class T>
void ReadSection(std::span<const TSectionRow<T>> rows, std::span<const std::uint8_t> bytes, T& object) {
    TByteSource source(bytes);
    TxyReader reader(source);
    ReadEntries(reader, rows, object);
}

} // namespace lumoplot
