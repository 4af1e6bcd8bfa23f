// lmth/graphbsfexecutor.cpp - breadth-first traversal of a graph from one start vertex.
#include <lmth/graphbsfexecutor.h>

#include <lmth/adjacentlistgraph.h>
#include <lstd/exception.h>
#include <lstd/string.h>

namespace lmth {

namespace {
// How many queued vertices one warming pass looks at: enough lists walked side by side to
// keep the memory system busy, few enough that their nodes stay in the first-level cache.
unsigned long const kWarmBatch = 32;
}  // namespace

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
        unsigned long untilWarm = 0;
        for (;;) {
            if (lists != nullptr && untilWarm == 0) {
                Warm(mQueues[current].GetHead(), lists);
                untilWarm = kWarmBatch;
            }
            if (!mQueues[current].RemoveFirst(&vertex))
                break;
            --untilWarm;
            Expand(vertex, mQueues[next], lists);
        }
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

void GraphBSFExecutor::Warm(lstd::ValDoubleLink<unsigned long> const* queued,
                            AdjacentListGraph const* lists) {
    // The successor lists of the next queued vertices are read side by side, one node of each
    // list per round, so that their cache misses overlap instead of following one another;
    // the walk that discovers proceeds afterwards from the cache. Only reads, and all of them
    // before any listener runs: nothing a listener does can be seen differently.
    lstd::ValDoubleLink<unsigned long> const* cursors[kWarmBatch];
    unsigned long count = 0;
    for (; queued != nullptr && count < kWarmBatch; queued = queued->mNext)
        if (queued->mValue < lists->GetVertexNumber()) {
            cursors[count] = lists->GetSuccessors(queued->mValue).GetHead();
            if (cursors[count] != nullptr)
                ++count;
        }
    unsigned long touched = 0;
    while (count > 0) {
        for (unsigned long i = 0; i < count;) {
            touched += cursors[i]->mValue;
            cursors[i] = cursors[i]->mNext;
            if (cursors[i] == nullptr)
                cursors[i] = cursors[--count];
            else
                ++i;
        }
    }
    // Keeps the reads: their only purpose is the lines they bring in.
    __asm__ volatile("" : : "r"(touched));
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
