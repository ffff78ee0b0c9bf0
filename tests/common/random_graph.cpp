#include "common/random_graph.h"

#include "graph/model/graph.h"

namespace lumoplot {

TBytes FileOf(const TxyGraph& graph, TPoints points) {
    TBytes bytes;
    graph.SaveToStream(bytes, points);
    return bytes;
}

void LoadBytes(TxyGraph& graph, const TBytes& bytes) {
    TByteSource source(bytes);
    graph.LoadFromStream(source);
}

} // namespace lumoplot
