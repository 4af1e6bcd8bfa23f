// lmth/adjacentlistgraph.h - a directed graph kept as one sorted successor list per vertex.
#ifndef LMTH_ADJACENTLISTGRAPH_H
#define LMTH_ADJACENTLISTGRAPH_H

#include <lmth/graph.h>
#include <lstd/array.h>
#include <lstd/valsortlist.h>

namespace lmth {

/// A Graph whose vertex v holds the ascending list of its successors. An edge added twice
/// is stored twice (the list keeps duplicates); HasEdge and the traversal are unaffected.
/// Not copyable.
class AdjacentListGraph : public Graph {
public:
    /// vertexNumber vertices without edges. Throws lstd::NotEnoughMemoryException.
    explicit AdjacentListGraph(unsigned long const& vertexNumber);
    AdjacentListGraph(AdjacentListGraph const&) = delete;
    AdjacentListGraph& operator=(AdjacentListGraph const&) = delete;
    virtual ~AdjacentListGraph();

    /// Always 1.
    int GetStructureType() const override;
    /// Whether the successor list of from holds to; false for any to beyond the vertices.
    /// Throws lstd::InvalidIndexException "The index '%d' is invalid. (mLength=%d)" when from
    /// is not below the vertex count.
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override;
    /// Empties every successor list.
    void Clear() override;
    unsigned long const& GetVertexNumber() const override;

    /// Adds the edge from -> to (not to -> from). Throws lstd::InvalidIndexException "The
    /// vertex is invalid. (Input: %d, %d; Vertex number: %d)" with from, to and the vertex
    /// count when either is not below the count, and lstd::NotEnoughMemoryException.
    void AddEdge(unsigned long const& from, unsigned long const& to);
    /// The ascending successors of vertex. Throws lstd::InvalidIndexException "The index
    /// '%d' is invalid. (mLength=%d)" when vertex is not below the vertex count.
    lstd::ValSortList<unsigned long> const& GetSuccessors(unsigned long const& vertex) const;

private:
    lstd::Array<lstd::ValSortList<unsigned long>> mAdjacency;
};
}  // namespace lmth
#endif  // LMTH_ADJACENTLISTGRAPH_H
