// Graph model: both kinds of graph under one contract, their range checks, and islands.
#include <expect_throw.h>
#include <lkit.h>

#include <string>
#include <type_traits>
#include <vector>

namespace {
using lmth::AdjacentListGraph;
using lmth::MatrixGraph;
using Vertices = std::vector<unsigned long>;

Vertices Items(lstd::ValSortList<unsigned long> const& list) {
    Vertices items;
    for (auto const* node = list.GetHead(); node != nullptr; node = node->mNext)
        items.push_back(node->mValue);
    return items;
}

// Every ordered pair (from, to) with an edge, row by row.
template <class G>
std::vector<Vertices> Edges(G const& graph) {
    std::vector<Vertices> edges;
    for (unsigned long i = 0; i < graph.GetVertexNumber(); ++i)
        for (unsigned long j = 0; j < graph.GetVertexNumber(); ++j)
            if (graph.HasEdge(i, j))
                edges.push_back({i, j});
    return edges;
}

template <class G>
struct BothGraphs : ::testing::Test {};
using GraphKinds = ::testing::Types<AdjacentListGraph, MatrixGraph>;
// Names the typed cases after the graph kind.
struct KindName {
    template <class G>
    static std::string GetName(int) {
        return std::is_same<G, MatrixGraph>::value ? "Matrix" : "Lists";
    }
};
TYPED_TEST_SUITE(BothGraphs, GraphKinds, KindName);

TYPED_TEST(BothGraphs, DirectedEdgesDuplicatesAndClear) {
    TypeParam graph(70);  // more than one 64-bit word per matrix row
    EXPECT_EQ(graph.GetVertexNumber(), 70u);
    EXPECT_EQ(graph.GetStructureType(), (std::is_same<TypeParam, MatrixGraph>::value ? 2 : 1));
    EXPECT_TRUE(Edges(graph).empty());
    for (auto e : std::vector<Vertices>{{3, 69}, {3, 1}, {3, 69}, {69, 3}, {5, 5}, {0, 64}})
        graph.AddEdge(e[0], e[1]);
    EXPECT_EQ(Edges(graph), (std::vector<Vertices>{{0, 64}, {3, 1}, {3, 69}, {5, 5}, {69, 3}}));
    graph.Clear();
    EXPECT_TRUE(Edges(graph).empty());
    EXPECT_EQ(graph.GetVertexNumber(), 70u);
    graph.AddEdge(3, 2);  // usable after Clear
    EXPECT_EQ(Edges(graph), (std::vector<Vertices>{{3, 2}}));
}

TYPED_TEST(BothGraphs, FromOutOfRangeGivesTheArrayMessage) {
    TypeParam graph(5);
    ExpectThrow<lstd::InvalidIndexException>([&] { graph.HasEdge(5, 0); },
                                             "The index '5' is invalid. (mLength=5)");
    TypeParam empty(0);
    ExpectThrow<lstd::InvalidIndexException>([&] { empty.HasEdge(0, 0); },
                                             "The index '0' is invalid. (mLength=0)");
    EXPECT_EQ(empty.GetVertexNumber(), 0u);
}

TYPED_TEST(BothGraphs, ConnectingIslandIsAscendingAndReplacesTheList) {
    TypeParam graph(8);
    for (auto e : std::vector<Vertices>{{6, 2}, {2, 7}, {7, 6}, {6, 0}, {1, 6}, {3, 4}})
        graph.AddEdge(e[0], e[1]);
    lstd::ValSortList<unsigned long> island;
    island.Append(99);
    graph.GetConnectingIsland(6, island);
    EXPECT_EQ(Items(island), (Vertices{0, 2, 6, 7}));  // 1 leads to 6, not back
    graph.GetConnectingIsland(5, island);
    EXPECT_EQ(Items(island), (Vertices{5}));
    ExpectThrow<lstd::InvalidIndexException>([&] { graph.GetConnectingIsland(8, island); },
                                             "The index '8' is invalid. (mLength=8)");
    EXPECT_EQ(Items(island), (Vertices{8}));  // the start is in before the walk fails
    TypeParam empty(0);
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { empty.GetConnectingIsland(0, island); },
        "The hash table size is invalid. (size = 0)");
}

TEST(AdjacentListGraph, AddEdgeChecksBothVertices) {
    AdjacentListGraph graph(4);
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { graph.AddEdge(1, 4); }, "The vertex is invalid. (Input: 1, 4; Vertex number: 4)");
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { graph.AddEdge(9, 0); }, "The vertex is invalid. (Input: 9, 0; Vertex number: 4)");
    AdjacentListGraph empty(0);
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { empty.AddEdge(0, 0); }, "The vertex is invalid. (Input: 0, 0; Vertex number: 0)");
    EXPECT_FALSE(graph.HasEdge(1, 400));  // only the source indexes the array
    EXPECT_TRUE(Edges(graph).empty());
}

TEST(AdjacentListGraph, SuccessorsStayAscendingWithDuplicates) {
    AdjacentListGraph graph(10);
    for (unsigned long to : {7, 2, 9, 2, 0, 7})
        graph.AddEdge(4, to);
    EXPECT_EQ(Items(graph.GetSuccessors(4)), (Vertices{0, 2, 2, 7, 7, 9}));
    EXPECT_TRUE(Items(graph.GetSuccessors(3)).empty());
    ExpectThrow<lstd::InvalidIndexException>([&] { graph.GetSuccessors(10); },
                                             "The index '10' is invalid. (mLength=10)");
}

TEST(MatrixGraph, RangeChecksOfSourceRowAndTarget) {
    MatrixGraph graph(5);
    ExpectThrow<lstd::InvalidIndexException>([&] { graph.AddEdge(5, 0); },
                                             "The index '5' is invalid. (mLength=5)");
    // The target would fit in the row's word, but it names no vertex.
    ExpectThrow<lstd::InvalidIndexException>(
        [&] { graph.AddEdge(0, 5); }, "The vertex is invalid. (Input: 0, 5; Vertex number: 5)");
    MatrixGraph empty(0);
    ExpectThrow<lstd::InvalidIndexException>([&] { empty.AddEdge(0, 0); },
                                             "The index '0' is invalid. (mLength=0)");
    EXPECT_FALSE(graph.HasEdge(0, 1000));  // no row yet: nothing is looked at
    graph.AddEdge(0, 4);
    EXPECT_FALSE(graph.HasEdge(0, 63));
    ExpectThrow<lstd::InvalidIndexException>([&] { graph.HasEdge(0, 64); },
                                             "The index '1' is invalid. (mLength=1)");
}
}  // namespace
