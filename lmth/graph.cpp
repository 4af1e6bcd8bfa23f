// lmth/graph.cpp - the interface of directed graphs.
#include <lmth/graph.h>

#include <lmth/graphbsfexecutor.h>
#include <lmth/graphislandbsflistener.h>

namespace lmth {

Graph::Graph() {}

Graph::~Graph() {}

void Graph::GetConnectingIsland(unsigned long const& vertex,
                                lstd::ValSortList<unsigned long>& island) const {
    island.Clear();
    island.Append(vertex);
    GraphIslandBSFListener listener(island);
    GraphBSFExecutor executor(*this);
    executor.SetListener(&listener);
    executor.Execute(vertex);
}
}  // namespace lmth
