// Graph model and listing: both kinds of graph under one contract, their range checks,
// islands, and the listing text.
#include <expect_throw.h>
#include <lkit.h>

#include <string>
#include <vector>

namespace {
using lmth::AdjacentListGraph;
using lmth::MatrixGraph;
using Vertices = std::vector<unsigned long>;
using lstd::InvalidIndexException;

// The listing of graph, written into a fresh file and read back byte for byte.
std::string Listing(lmth::Graph const& graph) {
    TempDir dir;
    liop::File file;
    file.Open(dir.file("g.txt").c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
    lmth::GraphWriter(graph).Writer(&file);
    file.Close();
    return ReadFile(dir.file("g.txt"));
}

template <class G>
void CheckContract(int type) {
    G graph(70);  // more than one 64-bit word per matrix row
    EXPECT_EQ(graph.GetVertexNumber(), 70u);
    EXPECT_EQ(graph.GetStructureType(), type);
    for (auto e : std::vector<Vertices>{{3, 69}, {3, 1}, {3, 69}, {69, 3}, {5, 5}, {0, 64}})
        graph.AddEdge(e[0], e[1]);
    std::string expected;  // one line per vertex, each successor followed by a blank
    for (unsigned long v = 0; v < 70; ++v)
        expected += std::to_string(v) + ": \t\t" + (v == 0 ? "64 " : v == 3 ? "1 69 " : "") +
                    (v == 5 ? "5 " : v == 69 ? "3 " : "") + "\n";
    EXPECT_EQ(Listing(graph), expected);
    EXPECT_TRUE(graph.HasEdge(5, 5) && !graph.HasEdge(1, 3));  // directed; self-loops
    graph.Clear();
    EXPECT_EQ(Listing(graph).size(), expected.size() - 12);  // no successor is left
    EXPECT_FALSE(graph.HasEdge(3, 69));
    EXPECT_EQ(graph.GetVertexNumber(), 70u);

    lstd::ValSortList<unsigned long> island;
    for (auto e : std::vector<Vertices>{{6, 2}, {2, 7}, {7, 6}, {6, 0}, {1, 6}, {3, 4}})
        graph.AddEdge(e[0], e[1]);
    graph.GetConnectingIsland(6, island);
    EXPECT_EQ(island.GetNumberOfEntry(), 4u);
    EXPECT_EQ(Vertices({island[0], island[1], island[2], island[3]}), (Vertices{0, 2, 6, 7}));
    graph.GetConnectingIsland(5, island);
    EXPECT_EQ(island.GetNumberOfEntry(), 1u);
    EXPECT_EQ(island[0], 5u);

    ExpectThrow<InvalidIndexException>([&] { graph.HasEdge(70, 0); },
                                       "The index '70' is invalid. (mLength=70)");
    ExpectThrow<InvalidIndexException>([&] { graph.GetConnectingIsland(70, island); },
                                       "The index '70' is invalid. (mLength=70)");
    EXPECT_EQ(island[0], 70u);  // the start is in before the walk fails
    G empty(0);
    EXPECT_EQ(Listing(empty), "");  // not even a line end
    ExpectThrow<InvalidIndexException>([&] { empty.HasEdge(0, 0); },
                                       "The index '0' is invalid. (mLength=0)");
    ExpectThrow<lstd::InvalidOperationException>([&] { empty.GetConnectingIsland(0, island); },
                                                 "The hash table size is invalid. (size = 0)");
}

TEST(Graph, BothKindsKeepOneContract) {
    CheckContract<AdjacentListGraph>(1);
    CheckContract<MatrixGraph>(2);
}

TEST(Graph, RangeChecksOfEachKind) {
    AdjacentListGraph lists(4);
    ExpectThrow<InvalidIndexException>(
        [&] { lists.AddEdge(1, 4); }, "The vertex is invalid. (Input: 1, 4; Vertex number: 4)");
    ExpectThrow<InvalidIndexException>(
        [&] { lists.AddEdge(9, 0); }, "The vertex is invalid. (Input: 9, 0; Vertex number: 4)");
    EXPECT_FALSE(lists.HasEdge(1, 400));  // only the source indexes the array
    MatrixGraph matrix(5);
    ExpectThrow<InvalidIndexException>([&] { matrix.AddEdge(5, 0); },
                                       "The index '5' is invalid. (mLength=5)");
    // The target would fit in the row's word, but it names no vertex.
    ExpectThrow<InvalidIndexException>(
        [&] { matrix.AddEdge(0, 5); }, "The vertex is invalid. (Input: 0, 5; Vertex number: 5)");
    EXPECT_FALSE(matrix.HasEdge(0, 1000));  // no row yet: nothing is looked at
    matrix.AddEdge(0, 4);
    EXPECT_FALSE(matrix.HasEdge(0, 63));
    ExpectThrow<InvalidIndexException>([&] { matrix.HasEdge(0, 64); },
                                       "The index '1' is invalid. (mLength=1)");
    ExpectThrow<InvalidIndexException>([] { AdjacentListGraph(0).AddEdge(0, 0); },
                                       "The vertex is invalid. (Input: 0, 0; Vertex number: 0)");
}

// A graph that counts the questions it is asked.
struct CountingGraph : AdjacentListGraph {
    CountingGraph() : AdjacentListGraph(3) {}
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override {
        ++asked;
        return AdjacentListGraph::HasEdge(from, to);
    }
    mutable int asked = 0;
};

TEST(GraphWriter, AsksEveryOrderedPairAndPassesFailuresOn) {
    CountingGraph graph;
    for (auto e : std::vector<Vertices>{{0, 1}, {2, 0}, {0, 2}, {0, 2}})
        graph.AddEdge(e[0], e[1]);
    EXPECT_EQ(Listing(graph), "0: \t\t1 2 \n1: \t\t\n2: \t\t0 \n");  // a duplicate shows once
    EXPECT_EQ(graph.asked, 9);
    liop::File closed;
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { lmth::GraphWriter(graph).Writer(&closed); }, "The file it not opened");
}
}  // namespace
