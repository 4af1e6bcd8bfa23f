// Breadth-first traversal: discovery order on both kinds of graph, checked against a
// reference walk over many random graphs, and the traversal's failures.
#include <expect_throw.h>
#include <lkit.h>

#include <algorithm>
#include <deque>
#include <random>
#include <string>
#include <type_traits>
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

template <class G>
Vertices Walk(G const& graph, unsigned long start) {
    Recorder recorder;
    GraphBSFExecutor executor(graph);
    executor.SetListener(&recorder);
    executor.Execute(start);
    return recorder.reached;
}

template <class G>
struct TraversalOnBoth : ::testing::Test {};
using GraphKinds = ::testing::Types<AdjacentListGraph, MatrixGraph>;
// Names the typed cases after the graph kind.
struct KindName {
    template <class G>
    static std::string GetName(int) {
        return std::is_same<G, MatrixGraph>::value ? "Matrix" : "Lists";
    }
};
TYPED_TEST_SUITE(TraversalOnBoth, GraphKinds, KindName);

TYPED_TEST(TraversalOnBoth, LevelByLevelParentsInOrderSuccessorsAscending) {
    TypeParam graph(9);
    // Level 1: 1, 5 (added as 5, 1). Level 2: the children of 1 (3, 8), then those of 5 (2;
    // 3 again). Level 3: 6 from 3, 4 from 8 (and again from 2), 0 back to the start.
    for (auto e : std::vector<Vertices>{{0, 5}, {0, 1}, {1, 8}, {1, 3}, {5, 3}, {5, 2},
                                        {8, 4}, {3, 6}, {2, 4}, {2, 0}, {6, 6}, {4, 1}})
        graph.AddEdge(e[0], e[1]);
    EXPECT_EQ(Walk(graph, 0), (Vertices{1, 5, 3, 8, 2, 6, 4}));
    EXPECT_EQ(Walk(graph, 7), Vertices{});  // no successor: one level, nothing reported
    EXPECT_EQ(Walk(graph, 6), Vertices{});  // a self-loop on the start reports nothing
}

TYPED_TEST(TraversalOnBoth, ExecutorRunsAgainAndWithoutListener) {
    TypeParam graph(4);
    graph.AddEdge(2, 3);
    graph.AddEdge(3, 0);
    Recorder recorder;
    GraphBSFExecutor executor(graph);
    EXPECT_EQ(executor.GetListener(), nullptr);
    executor.Execute(2);  // nobody to tell
    executor.SetListener(&recorder);
    EXPECT_EQ(executor.GetListener(), &recorder);
    executor.Execute(2);
    executor.Execute(3);  // the visited set starts afresh
    EXPECT_EQ(recorder.reached, (Vertices{3, 0, 0}));
}

TYPED_TEST(TraversalOnBoth, Failures) {
    TypeParam graph(5);
    GraphBSFExecutor executor(graph);
    ExpectThrow<lstd::InvalidIndexException>([&] { executor.Execute(7); },
                                             "The index '7' is invalid. (mLength=5)");
    graph.AddEdge(0, 1);
    Recorder recorder;
    executor.SetListener(&recorder);
    executor.Execute(0);  // nothing left over from the failed walk
    EXPECT_EQ(recorder.reached, Vertices{1});
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { executor.DoBSF(0, 2); },
        "The queue index '2' is invalid. (Only 0 or 1 is allowed)");
    TypeParam empty(0);
    ExpectThrow<lstd::InvalidOperationException>([&] { GraphBSFExecutor none(empty); },
                                                 "The hash table size is invalid. (size = 0)");
}

TEST(GraphBSFExecutor, DoBSFDiscoversIntoTheGivenQueue) {
    AdjacentListGraph graph(6);
    for (unsigned long to : {4, 1, 4})
        graph.AddEdge(2, to);
    Recorder recorder;
    GraphBSFExecutor executor(graph);
    executor.SetListener(&recorder);
    executor.DoBSF(2, 1);
    executor.DoBSF(2, 0);  // already discovered
    EXPECT_EQ(recorder.reached, (Vertices{1, 4}));
    EXPECT_EQ(GraphBSFExecutor::HashPtrSize(123456789), 123456789u);
}

// A graph of the user's own, defined by a rule: the traversal asks HasEdge for every vertex,
// also when the graph claims the structure type of the adjacency lists.
struct RuleGraph : lmth::Graph {
    RuleGraph(unsigned long n, int kind) : count(n), type(kind) {}
    int GetStructureType() const override { return type; }
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override {
        return to == (from * 3 + 1) % count || to == (from + count - 1) % count;
    }
    void Clear() override {}
    unsigned long const& GetVertexNumber() const override { return count; }
    unsigned long count;
    int type;
};

TEST(GraphBSFExecutor, OtherGraphsAreWalkedThroughHasEdge) {
    for (int type : {1, 7}) {
        SCOPED_TRACE(type);
        RuleGraph const graph(10, type);
        // Edges u -> 3u + 1 and u -> u - 1 (mod 10): levels {1, 9}, {4, 8}, {3, 5, 7}, {2, 6}.
        EXPECT_EQ(Walk(graph, 0), (Vertices{1, 9, 4, 8, 3, 5, 7, 2, 6}));
    }
}

// An independent reference: a first-in first-out walk over sorted, deduplicated successors.
Vertices ReferenceWalk(std::vector<Vertices> successors, unsigned long start) {
    for (Vertices& s : successors) {
        std::sort(s.begin(), s.end());
        s.erase(std::unique(s.begin(), s.end()), s.end());
    }
    std::vector<bool> seen(successors.size());
    std::deque<unsigned long> queue{start};
    seen[start] = true;
    Vertices order;
    while (!queue.empty()) {
        unsigned long const u = queue.front();
        queue.pop_front();
        for (unsigned long w : successors[u])
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
        unsigned long const n = 1 + rng() % 90;
        unsigned long const edges = rng() % (4 * n + 1);
        unsigned long const start = rng() % n;
        AdjacentListGraph lists(n);
        MatrixGraph matrix(n);
        std::vector<Vertices> successors(n);
        auto add = [&](unsigned long from, unsigned long to) {
            lists.AddEdge(from, to);
            matrix.AddEdge(from, to);
            successors[from].push_back(to);
        };
        for (unsigned long e = 0; e < edges; ++e) {
            unsigned long const from = rng() % n;
            switch (rng() % 8) {
            case 0: add(from, from); break;    // self-loop
            case 1: add(from, start); break;   // cycle through the start
            case 2:                            // duplicate edge
                add(from, from % 3 % n);
                add(from, from % 3 % n);
                break;
            default: add(from, rng() % n);
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
