// lmth/adjacentlistgraph.cpp - a directed graph kept as one sorted successor list per vertex.
#include <lmth/adjacentlistgraph.h>

#include <lstd/exception.h>
#include <lstd/string.h>

namespace lmth {

AdjacentListGraph::AdjacentListGraph(unsigned long const& vertexNumber)
    : mAdjacency(vertexNumber) {}

AdjacentListGraph::~AdjacentListGraph() {}

int AdjacentListGraph::GetStructureType() const { return 1; }

bool AdjacentListGraph::HasEdge(unsigned long const& from, unsigned long const& to) const {
    return mAdjacency[from].Find(to, nullptr);
}

void AdjacentListGraph::Clear() {
    for (unsigned long v = 0; v < mAdjacency.GetLength(); ++v)
        mAdjacency[v].Clear();
}

unsigned long const& AdjacentListGraph::GetVertexNumber() const { return mAdjacency.GetLength(); }

void AdjacentListGraph::AddEdge(unsigned long const& from, unsigned long const& to) {
    if (to >= mAdjacency.GetLength() || from >= mAdjacency.GetLength())
        LSTD_THROWF(lstd::InvalidIndexException,
                    "The vertex is invalid. (Input: %d, %d; Vertex number: %d)",
                    static_cast<int>(from), static_cast<int>(to), static_cast<int>(mAdjacency.GetLength()));
    mAdjacency[from].Append(to);
}

lstd::ValSortList<unsigned long> const&
AdjacentListGraph::GetSuccessors(unsigned long const& vertex) const {
    return mAdjacency[vertex];
}
}  // namespace lmth
