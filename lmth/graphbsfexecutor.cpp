// lmth/graphbsfexecutor.cpp - breadth-first traversal of a graph from one start vertex.
#include <lmth/graphbsfexecutor.h>

#include <lmth/adjacentlistgraph.h>
#include <lstd/exception.h>
#include <lstd/string.h>

namespace lmth {

GraphBSFExecutor::GraphBSFExecutor(Graph const& graph)
    : mGraph(&graph), mListener(nullptr), mVisited(HashPtrSize, graph.GetVertexNumber()) {}

GraphBSFExecutor::~GraphBSFExecutor() {}

void GraphBSFExecutor::SetListener(GraphBSFListener* listener) { mListener = listener; }

GraphBSFListener* GraphBSFExecutor::GetListener() const { return mListener; }

unsigned long GraphBSFExecutor::HashPtrSize(unsigned long const& v) { return v; }

void GraphBSFExecutor::Execute(unsigned long const& start) {
    // Queues left over by a walk that threw are emptied too.
    mQueues[0].Clear();
    mQueues[1].Clear();
    mVisited.Clear();
    mVisited.Append(start);
    mQueues[0].Push(start);
    AdjacentListGraph const* lists = SuccessorLists();
    unsigned long current = 0;
    do {
        unsigned long const next = 1 - current;
        mQueues[next].Clear();
        unsigned long vertex = 0;
        while (mQueues[current].RemoveFirst(&vertex))
            Expand(vertex, mQueues[next], lists);
        current = next;
    } while (mQueues[current].GetNumberOfEntry() > 0);
}

void GraphBSFExecutor::DoBSF(unsigned long const& vertex, unsigned long const& nextQueue) {
    if (nextQueue > 1)
        LSTD_THROWF(lstd::InvalidIndexException,
                    "The queue index '%d' is invalid. (Only 0 or 1 is allowed)",
                    static_cast<int>(nextQueue));
    Expand(vertex, mQueues[nextQueue], SuccessorLists());
}

AdjacentListGraph const* GraphBSFExecutor::SuccessorLists() const {
    // A graph of another kind that reports type 1 has no lists: it is walked through HasEdge.
    if (mGraph->GetStructureType() != 1)
        return nullptr;
    return dynamic_cast<AdjacentListGraph const*>(mGraph);
}

void GraphBSFExecutor::Expand(unsigned long const& vertex, lstd::ValQueue<unsigned long>& next,
                              AdjacentListGraph const* lists) {
    if (lists != nullptr) {
        // Front to back: ascending successors, duplicates of an edge side by side.
        for (lstd::ValDoubleLink<unsigned long> const* node = lists->GetSuccessors(vertex).GetHead();
             node != nullptr; node = node->mNext)
            Discover(node->mValue, next);
        return;
    }
    unsigned long const& count = mGraph->GetVertexNumber();
    for (unsigned long w = 0; w < count; ++w)
        if (mGraph->HasEdge(vertex, w))
            Discover(w, next);
}

void GraphBSFExecutor::Discover(unsigned long const& vertex, lstd::ValQueue<unsigned long>& next) {
    // One lookup serves both the test and the insertion: the set grows only for a new vertex.
    unsigned long const known = mVisited.GetNumberOfEntry();
    mVisited.Append(vertex);
    if (mVisited.GetNumberOfEntry() == known)
        return;
    next.Push(vertex);
    if (mListener != nullptr)
        mListener->OnReachVertex(vertex);
}
}  // namespace lmth
