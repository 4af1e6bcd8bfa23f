// Graph listing: the exact text for both kinds of graph, and what reaches the caller.
#include <expect_throw.h>
#include <lkit.h>

#include <string>

namespace {
using lmth::AdjacentListGraph;
using lmth::GraphWriter;
using lmth::MatrixGraph;

struct GraphListing : ::testing::Test {
    // Writes graph's listing into a fresh file and reads it back byte for byte.
    std::string Listing(lmth::Graph const& graph) {
        std::string const path = dir.file("graph.txt");
        liop::File file;
        file.Open(path.c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
        GraphWriter(graph).Writer(&file);
        file.Close();
        return ReadFile(path);
    }
    TempDir dir;
};

template <class G>
void AddExample(G& graph) {
    graph.AddEdge(0, 1);
    graph.AddEdge(2, 0);
    graph.AddEdge(0, 2);
    graph.AddEdge(0, 2);  // a duplicate is listed once
}

TEST_F(GraphListing, OneLinePerVertexEverySuccessorFollowedByABlank) {
    AdjacentListGraph lists(3);
    MatrixGraph matrix(3);
    AddExample(lists);
    AddExample(matrix);
    std::string const expected = "0: \t\t1 2 \n1: \t\t\n2: \t\t0 \n";
    EXPECT_EQ(Listing(lists), expected);
    EXPECT_EQ(Listing(matrix), expected);
}

TEST_F(GraphListing, EmptyGraphsAndSelfLoops) {
    EXPECT_EQ(Listing(AdjacentListGraph(0)), "");  // not even a line end
    EXPECT_EQ(Listing(MatrixGraph(2)), "0: \t\t\n1: \t\t\n");
    MatrixGraph loops(12);
    loops.AddEdge(11, 11);
    loops.AddEdge(11, 10);
    std::string const listing = Listing(loops);
    EXPECT_EQ(listing.substr(listing.find("10:")), "10: \t\t\n11: \t\t10 11 \n");
}

// A graph that counts the questions it is asked.
struct CountingGraph : AdjacentListGraph {
    CountingGraph() : AdjacentListGraph(4) {}
    bool HasEdge(unsigned long const& from, unsigned long const& to) const override {
        ++asked;
        return AdjacentListGraph::HasEdge(from, to);
    }
    mutable int asked = 0;
};

TEST_F(GraphListing, AsksEveryOrderedPairAndPassesFailuresOn) {
    CountingGraph graph;
    graph.AddEdge(3, 1);
    EXPECT_EQ(Listing(graph), "0: \t\t\n1: \t\t\n2: \t\t\n3: \t\t1 \n");
    EXPECT_EQ(graph.asked, 16);
    liop::File closed;
    ExpectThrow<lstd::InvalidOperationException>([&] { GraphWriter(graph).Writer(&closed); },
                                                 "The file it not opened");
}
}  // namespace
