// Breadth-first traversal: discovery order on both kinds of graph, checked against a
// reference walk over many random graphs, and the traversal's failures.
#include <expect_throw.h>
#include <lkit.h>

#include <algorithm>
#include <deque>
#include <random>
#include <vector>

namespace {
using lmth::AdjacentListGraph;
using lmth::GraphBSFExecutor;
using lmth::MatrixGraph;
using Vertices = std::vector<unsigned long>;

struct Recorder : lmth::GraphBSFListener {
    void OnReachVertex(unsigned long const& vertex) override { reached.push_back(vertex); }
    Vertices reached;
};

Vertices Walk(lmth::Graph const& graph, unsigned long start) {
    Recorder recorder;
    GraphBSFExecutor executor(graph);
    executor.SetListener(&recorder);
    executor.Execute(start);
    return recorder.reached;
}

template <class G>
void CheckOrderAndFailures() {
    G graph(9);
    // Level 1: 1, 5 (added as 5, 1). Level 2: the children of 1 (3, 8), then those of 5 (2;
    // 3 again). Level 3: 6 from 3, 4 from 8 (and again from 2), 0 back to the start.
    for (auto e : std::vector<Vertices>{{0, 5}, {0, 1}, {1, 8}, {1, 3}, {5, 3}, {5, 2},
                                        {8, 4}, {3, 6}, {2, 4}, {2, 0}, {6, 6}, {4, 1}})
        graph.AddEdge(e[0], e[1]);
    EXPECT_EQ(Walk(graph, 0), (Vertices{1, 5, 3, 8, 2, 6, 4}));
    EXPECT_EQ(Walk(graph, 7), Vertices{});  // no successor: one level, nothing reported
    EXPECT_EQ(Walk(graph, 6), Vertices{});  // a self-loop on the start reports nothing

    Recorder recorder;
    GraphBSFExecutor executor(graph);
    EXPECT_EQ(executor.GetListener(), nullptr);
    executor.DoBSF(5, 1);  // discovers 2 and 3, telling nobody
    executor.SetListener(&recorder);
    executor.DoBSF(5, 0);
    executor.DoBSF(1, 0);  // 3 is known: 8 only
    EXPECT_EQ(recorder.reached, Vertices{8});
    ExpectThrow<lstd::InvalidIndexException>([&] { executor.Execute(9); },
                                             "The index '9' is invalid. (mLength=9)");
    recorder.reached.clear();
    executor.Execute(2);  // afresh: nothing left over from before
    EXPECT_EQ(recorder.reached, (Vertices{0, 4, 1, 5, 3, 8, 6}));
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { executor.DoBSF(0, 2); }, "The queue index '2' is invalid. (Only 0 or 1 is allowed)");
    G const empty(0);
    ExpectThrow<lstd::InvalidOperationException>([&] { GraphBSFExecutor none(empty); },
                                                 "The hash table size is invalid. (size = 0)");
}

TEST(GraphBSFExecutor, LevelByLevelParentsInOrderSuccessorsAscending) {
    CheckOrderAndFailures<AdjacentListGraph>();
    CheckOrderAndFailures<MatrixGraph>();
    EXPECT_EQ(GraphBSFExecutor::HashPtrSize(123456789), 123456789u);
}

// A graph of the user's own, defined by a rule: the traversal asks HasEdge for every vertex,
// also when the graph claims the structure type of the adjacency lists.
struct RuleGraph : lmth::Graph {
    explicit RuleGraph(int kind) : type(kind) {}
    int GetStructureType() const override { return type; }
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override {
        return to == (from * 3 + 1) % count || to == (from + count - 1) % count;
    }
    void Clear() override {}
    unsigned long const& GetVertexNumber() const override { return count; }
    unsigned long count = 10;
    int type;
};

TEST(GraphBSFExecutor, OtherGraphsAreWalkedThroughHasEdge) {
    // Edges u -> 3u + 1 and u -> u - 1 (mod 10): levels {1, 9}, {4, 8}, {3, 5, 7}, {2, 6}.
    EXPECT_EQ(Walk(RuleGraph(1), 0), (Vertices{1, 9, 4, 8, 3, 5, 7, 2, 6}));
    EXPECT_EQ(Walk(RuleGraph(7), 0), (Vertices{1, 9, 4, 8, 3, 5, 7, 2, 6}));
}

// An independent reference: a first-in first-out walk over sorted, deduplicated successors.
Vertices ReferenceWalk(std::vector<Vertices> successors, unsigned long start) {
    std::vector<bool> seen(successors.size());
    std::deque<unsigned long> queue{start};
    seen[start] = true;
    Vertices order;
    for (; !queue.empty(); queue.pop_front()) {
        Vertices& next = successors[queue.front()];
        std::sort(next.begin(), next.end());
        for (unsigned long w : next)
            if (!seen[w]) {
                seen[w] = true;
                order.push_back(w);
                queue.push_back(w);
            }
    }
    return order;
}

TEST(GraphBSFExecutor, AgreesWithAReferenceWalkOnRandomGraphs) {
    std::mt19937_64 rng(20240611);
    for (int round = 0; round < 300; ++round) {
        unsigned long const n = 1 + rng() % 90, edges = rng() % (4 * n + 1), start = rng() % n;
        AdjacentListGraph lists(n);
        MatrixGraph matrix(n);
        std::vector<Vertices> successors(n);
        for (unsigned long e = 0; e < edges; ++e) {
            unsigned long const from = rng() % n, kind = rng() % 8;
            // Self-loops, cycles through the start and duplicate edges, among random ones.
            unsigned long const to = kind == 0 ? from : kind == 1 ? start : kind == 2 ? from % 3 % n
                                                                                       : rng() % n;
            for (int copies = kind == 2 ? 2 : 1; copies > 0; --copies) {
                lists.AddEdge(from, to);
                matrix.AddEdge(from, to);
                successors[from].push_back(to);
            }
        }
        SCOPED_TRACE(::testing::Message() << "round " << round << ", n " << n << ", start "
                                          << start);
        Vertices const expected = ReferenceWalk(successors, start);
        ASSERT_EQ(Walk(lists, start), expected);
        ASSERT_EQ(Walk(matrix, start), expected);
    }
}
}  // namespace
