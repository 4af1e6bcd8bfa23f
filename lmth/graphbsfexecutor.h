// lmth/graphbsfexecutor.h - breadth-first traversal of a graph from one start vertex.
#ifndef LMTH_GRAPHBSFEXECUTOR_H
#define LMTH_GRAPHBSFEXECUTOR_H

#include <lmth/graph.h>
#include <lmth/graphbsflistener.h>
#include <lstd/hashcollection.h>
#include <lstd/valqueue.h>

namespace lmth {
class AdjacentListGraph;

/// Walks a graph breadth first, level by level, and tells its listener of every vertex it
/// discovers: by distance from the start, within a level by the order of the parents, then
/// by ascending successor; each vertex once, the start vertex never. Edges are followed in
/// their own direction only. The graph and the listener are not owned and must outlive the
/// executor. Not copyable.
class GraphBSFExecutor {
public:
    /// Binds graph, without listener. The visited set has one bucket per vertex, so a graph
    /// of no vertex cannot be walked: throws lstd::InvalidOperationException "The hash table
    /// size is invalid. (size = 0)". Throws lstd::NotEnoughMemoryException.
    explicit GraphBSFExecutor(Graph const& graph);
    GraphBSFExecutor(GraphBSFExecutor const&) = delete;
    GraphBSFExecutor& operator=(GraphBSFExecutor const&) = delete;
    virtual ~GraphBSFExecutor();

    /// The listener told of each discovered vertex from the next Execute on; null (the
    /// default) tells nobody.
    void SetListener(GraphBSFListener* listener);
    /// The listener, or null.
    GraphBSFListener* GetListener() const;

    /// Walks the graph from start. Throws lstd::InvalidIndexException (the array messages)
    /// when start is not a vertex, lstd::NotEnoughMemoryException, and what the listener
    /// throws; the walk then stops where it was.
    void Execute(unsigned long const& start);
    /// Discovers the successors of vertex that were not discovered before: each goes to the
    /// queue nextQueue (0 or 1) and to the listener. An AdjacentListGraph gives them from its
    /// successor list, any other graph through HasEdge(vertex, w) for every vertex w. Throws
    /// lstd::InvalidIndexException "The queue index '%d' is invalid. (Only 0 or 1 is
    /// allowed)" for another nextQueue, and what Execute throws.
    void DoBSF(unsigned long const& vertex, unsigned long const& nextQueue);

    /// The visited set's hash: the vertex itself, so vertex v has bucket v % n to itself.
    static unsigned long HashPtrSize(unsigned long const& v);

private:
    // DoBSF with the graph's successor lists already looked up (null: not an adjacency-list
    // graph), so that a walk asks for them once rather than once per vertex.
    void Expand(unsigned long const& vertex, lstd::ValQueue<unsigned long>& next,
                AdjacentListGraph const* lists);
    void Discover(unsigned long const& vertex, lstd::ValQueue<unsigned long>& next);
    // Brings the successor lists of the vertices queued from queued on into the cache.
    static void Warm(lstd::ValDoubleLink<unsigned long> const* queued,
                     AdjacentListGraph const* lists);
    AdjacentListGraph const* SuccessorLists() const;

    Graph const* mGraph;
    GraphBSFListener* mListener;
    lstd::ValQueue<unsigned long> mQueues[2];
    lstd::ValHashSet<unsigned long> mVisited;
};
}  // namespace lmth
#endif  // LMTH_GRAPHBSFEXECUTOR_H
