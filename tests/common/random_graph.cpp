#include "common/random_graph.h"

#include "graph/file/graph_file.h"

namespace lumoplot {

TBytes FileOf(const TxyGraph& graph, TPoints points) {
    TBytes bytes;
    WriteGraph(bytes, graph, points);
    return bytes;
}

void LoadBytes(TxyGraph& graph, const TBytes& bytes) {
    TByteSource source(bytes);
    graph.LoadFromStream(source);
}

} // namespace lumoplot
