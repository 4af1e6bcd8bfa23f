// lmth/graph.h - the interface of directed graphs over the vertices 0 to n - 1.
#ifndef LMTH_GRAPH_H
#define LMTH_GRAPH_H

#include <lstd/valsortlist.h>

namespace lmth {

/// A directed graph with a vertex count fixed at construction; edges are added one at a time
/// by each kind's own AddEdge. The virtual operations are declared in a fixed order: it is
/// the binary interface of every graph kind.
class Graph {
public:
    Graph();
    virtual ~Graph();

    /// 1 for an AdjacentListGraph, 2 for a MatrixGraph; the traversal chooses how to find
    /// successors by it.
    virtual int GetStructureType() const = 0;
    /// Whether the edge from -> to exists. Throws lstd::InvalidIndexException (the array
    /// messages) for an out-of-range vertex, as each kind documents.
    virtual bool HasEdge(unsigned long const& from, unsigned long const& to) const = 0;
    /// Removes every edge; the vertices remain.
    virtual void Clear() = 0;
    /// The number of vertices, fixed at construction.
    virtual unsigned long const& GetVertexNumber() const = 0;
    /// Replaces island with vertex and every vertex reachable from it, ascending, found by a
    /// breadth-first traversal. Throws lstd::InvalidOperationException "The hash table size is
    /// invalid. (size = 0)" for a graph of no vertex and lstd::InvalidIndexException (the
    /// array messages) for a vertex out of range; island then holds vertex alone.
    virtual void GetConnectingIsland(unsigned long const& vertex,
                                     lstd::ValSortList<unsigned long>& island) const;
};
}  // namespace lmth
#endif  // LMTH_GRAPH_H
