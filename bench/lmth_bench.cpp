// Breadth-first traversal of AdjacentListGraph beside the same walk over a compressed
// adjacency array (offsets and targets in std::vector, a std::vector<char> visited set).
// Both walk one random directed graph from vertex 0; each pair must discover the same number
// of vertices. The counter bytes_per_edge is the heap the graph holds, divided by the edges.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <malloc.h>

#include <memory>
#include <random>
#include <utility>
#include <vector>

namespace {

unsigned long const kVertices = 1000000;
unsigned long const kEdges = 8000000;

struct CountingListener : lmth::GraphBSFListener {
    void OnReachVertex(unsigned long const&) override { ++count; }
    unsigned long count = 0;
};

// Bytes handed out by malloc, the large blocks it maps separately included.
std::size_t HeapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

// The same edges in both forms, built once per process: building the graph takes longer
// than walking it.
struct Input {
    Input() {
        std::mt19937_64 rng(7);
        std::vector<std::pair<unsigned long, unsigned long>> edges(kEdges);
        for (auto& e : edges)
            e = {rng() % kVertices, rng() % kVertices};
        std::size_t const before = HeapInUse();
        graph.reset(new lmth::AdjacentListGraph(kVertices));
        for (auto const& e : edges)
            graph->AddEdge(e.first, e.second);
        graphBytes = HeapInUse() - before;
        offsets.assign(kVertices + 1, 0);
        for (auto const& e : edges)
            ++offsets[e.first + 1];
        for (unsigned long v = 0; v < kVertices; ++v)
            offsets[v + 1] += offsets[v];
        targets.resize(kEdges);
        std::vector<unsigned long> next(offsets.begin(), offsets.end() - 1);
        for (auto const& e : edges)
            targets[next[e.first]++] = e.second;
    }
    std::unique_ptr<lmth::AdjacentListGraph> graph;
    std::size_t graphBytes;
    std::vector<unsigned long> offsets, targets;
};

Input const& TheInput() {
    static Input const input;
    return input;
}

// Vertices discovered from start, the start itself not counted (as the listener counts).
unsigned long VectorBfs(Input const& in, unsigned long start) {
    std::vector<char> visited(kVertices, 0);
    std::vector<unsigned long> queue;
    queue.reserve(kVertices);
    visited[start] = 1;
    queue.push_back(start);
    for (std::size_t head = 0; head < queue.size(); ++head) {
        unsigned long const u = queue[head];
        for (unsigned long i = in.offsets[u]; i < in.offsets[u + 1]; ++i) {
            unsigned long const w = in.targets[i];
            if (visited[w] == 0) {
                visited[w] = 1;
                queue.push_back(w);
            }
        }
    }
    return queue.size() - 1;
}

void BfsLkit(benchmark::State& state) {
    Input const& in = TheInput();
    unsigned long const expected = VectorBfs(in, 0);
    for (auto _ : state) {
        CountingListener listener;
        lmth::GraphBSFExecutor executor(*in.graph);
        executor.SetListener(&listener);
        executor.Execute(0);
        if (listener.count != expected) {
            state.SkipWithError("lkit and vector BFS discovered different vertex counts");
            break;
        }
        benchmark::DoNotOptimize(listener.count);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(kEdges));
    state.counters["discovered"] = static_cast<double>(expected);
    state.counters["bytes_per_edge"] = static_cast<double>(in.graphBytes) / kEdges;
}

void BfsVector(benchmark::State& state) {
    Input const& in = TheInput();
    lmth::AdjacentListGraph const& graph = *in.graph;
    CountingListener reference;
    {
        lmth::GraphBSFExecutor executor(graph);
        executor.SetListener(&reference);
        executor.Execute(0);
    }
    for (auto _ : state) {
        unsigned long const count = VectorBfs(in, 0);
        if (count != reference.count) {
            state.SkipWithError("lkit and vector BFS discovered different vertex counts");
            break;
        }
        benchmark::DoNotOptimize(count);
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(kEdges));
    state.counters["discovered"] = static_cast<double>(reference.count);
    state.counters["bytes_per_edge"] =
        static_cast<double>((in.offsets.size() + in.targets.size()) * sizeof(unsigned long)) /
        kEdges;
}
}  // namespace

BENCHMARK(BfsLkit)->Name("BFS/lkit")->Arg(kVertices)->Unit(benchmark::kMillisecond);
BENCHMARK(BfsVector)->Name("BFS/vector")->Arg(kVertices)->Unit(benchmark::kMillisecond);
