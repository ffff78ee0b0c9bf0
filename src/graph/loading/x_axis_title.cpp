#include "graph/loading/x_axis_title.h"

#include "graph/model/axis.h"
#include "graph/model/graph.h"
#include "sources/text/text_format.h"

#include <algorithm>

namespace lumoplot {
namespace {

constexpr const char* kUntouchedTitle = "X axis";

} // namespace

void TakeXTitle(TSeries& series, const TTextFormat& format) {
    TxyGraph& graph = series.Graph();
    const auto column = static_cast<std::size_t>(std::max(format.xColumn, 0));
    if (format.xColumn < 0 || column >= format.columns.size() || format.columns[column].name.empty()) return;
    if (graph.Series().size() == 1 && graph.XAxis()->Title() == kUntouchedTitle)
        graph.XAxis()->SetTitle(format.columns[column].name);
}

} // namespace lumoplot
