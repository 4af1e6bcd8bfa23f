// lmth/matrixgraph.h - a directed graph kept as one row of bits per vertex.
#ifndef LMTH_MATRIXGRAPH_H
#define LMTH_MATRIXGRAPH_H

#include <lmth/graph.h>
#include <lstd/bitset.h>
#include <lstd/parray.h>

namespace lmth {

/// A Graph whose vertex v owns a bit set of n bits, bit w set for the edge v -> w. A row is
/// made by the first edge leaving its vertex and kept until the graph is destroyed. Adding an
/// edge twice changes nothing. Not copyable.
class MatrixGraph : public Graph {
public:
    /// vertexNumber vertices without rows. Throws lstd::NotEnoughMemoryException.
    explicit MatrixGraph(unsigned long const& vertexNumber);
    MatrixGraph(MatrixGraph const&) = delete;
    MatrixGraph& operator=(MatrixGraph const&) = delete;
    /// Deletes every row.
    virtual ~MatrixGraph();

    /// Always 2.
    int GetStructureType() const override;
    /// False when from has no row yet (none is made), else bit to of the row. Throws
    /// lstd::InvalidIndexException "The index '%d' is invalid. (mLength=%d)" when from is not
    /// below the vertex count, or when to lies beyond the row's last word (the message then
    /// names the word); a to between the count and the end of the last word reads false.
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override;
    /// Sets every bit of every row to 0; the rows are kept.
    void Clear() override;
    unsigned long const& GetVertexNumber() const override;

    /// Adds the edge from -> to, making the row of from if needed. Throws
    /// lstd::InvalidIndexException "The index '%d' is invalid. (mLength=%d)" when from is not
    /// below the vertex count, "The vertex is invalid. (Input: %d, %d; Vertex number: %d)"
    /// (from, to, count) when to is not, and lstd::NotEnoughMemoryException.
    void AddEdge(unsigned long const& from, unsigned long const& to);

private:
    lstd::PArray<lstd::BitSet> mBitRows;
};
}  // namespace lmth
#endif  // LMTH_MATRIXGRAPH_H
