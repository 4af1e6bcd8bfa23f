// Hash maps and sets beside their standard peers, on the same input in one run:
//   HashMapInsert/<side>/<n>  n String keys and values into a map of the default 32767 buckets
//                             (the map is built, filled and destroyed per iteration)
//   HashMapLookup/<side>/<n>  every present key of such a map, in an order of its own
//   VisitedSet/<side>/<n>     the traversal's visited set: one bucket per item and the identity
//                             hash, n inserts in random order then n lookups in another order
// Each side checks its result against one computed from the input (SkipWithError otherwise).
// The counter heap_bytes_per_item is the heap growth of the filled container divided by its
// items, read from the allocator's own statistics (chunk headers included) in one untimed
// filling before the timed ones.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <malloc.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace {
using lstd::String;
using LkitMap = lstd::ValHashMap<String, String>;
using StdMap = std::unordered_map<std::string, std::string>;

// Bytes the allocator has handed out and not taken back, mapped blocks included.
double HeapInUse() {
    struct mallinfo2 const info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

// Short distinct keys and values, as attribute names and ini keys are; the same texts for
// both sides. The lookup order is shuffled, so that it follows neither insertion nor buckets.
struct Texts {
    explicit Texts(std::size_t n) {
        std::mt19937_64 rng(42);
        for (std::size_t i = 0; i < n; ++i) {
            keys.push_back("key" + std::to_string(rng() % 1000000000));
            values.push_back("value" + std::to_string(i));
        }
        std::sort(keys.begin(), keys.end());
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        while (keys.size() < n)
            keys.push_back("extra" + std::to_string(keys.size()));
        std::shuffle(keys.begin(), keys.end(), rng);
        order.resize(n);
        for (std::size_t i = 0; i < n; ++i)
            order[i] = i;
        std::shuffle(order.begin(), order.end(), rng);
        for (std::size_t i = 0; i < n; ++i) {
            lkeys.emplace_back(keys[i].c_str(), keys[i].size());
            lvalues.emplace_back(values[i].c_str(), values[i].size());
            valueBytes += values[i].size();
        }
    }
    std::vector<std::string> keys, values;
    std::vector<String> lkeys, lvalues;
    std::vector<std::size_t> order;
    std::size_t valueBytes = 0;  // what a lookup of every key adds up
};

Texts const& GetTexts(std::size_t n) {
    static std::map<std::size_t, std::unique_ptr<Texts>> cache;
    std::unique_ptr<Texts>& t = cache[n];
    if (!t)
        t.reset(new Texts(n));
    return *t;
}

void Finish(benchmark::State& state, std::size_t got, std::size_t want, double heapBytes) {
    if (got != want)
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
    state.counters["heap_bytes_per_item"] = heapBytes / static_cast<double>(state.range(0));
}

// Fills a fresh map with every key of t; heap, when given, receives the heap the filled map
// takes. Returns the map's length.
std::size_t FillLkit(Texts const& t, double* heap) {
    double const before = heap != nullptr ? HeapInUse() : 0;
    LkitMap map(String::Hash);
    for (std::size_t i = 0; i < t.lkeys.size(); ++i)
        map.Append(t.lkeys[i], t.lvalues[i]);
    if (heap != nullptr)
        *heap = HeapInUse() - before;
    return map.Length();
}

std::size_t FillStd(Texts const& t, double* heap) {
    double const before = heap != nullptr ? HeapInUse() : 0;
    StdMap map;
    for (std::size_t i = 0; i < t.keys.size(); ++i)
        map.insert_or_assign(t.keys[i], t.values[i]);
    if (heap != nullptr)
        *heap = HeapInUse() - before;
    return map.size();
}

template <std::size_t (*Fill)(Texts const&, double*)>
void HashMapInsert(benchmark::State& state) {
    Texts const& t = GetTexts(static_cast<std::size_t>(state.range(0)));
    double heap = 0;
    std::size_t length = Fill(t, &heap);
    for (auto _ : state)
        length = Fill(t, nullptr);
    Finish(state, length, t.keys.size(), heap);
}

void HashMapLookupLkit(benchmark::State& state) {
    Texts const& t = GetTexts(static_cast<std::size_t>(state.range(0)));
    LkitMap map(String::Hash);
    for (std::size_t i = 0; i < t.lkeys.size(); ++i)
        map.Append(t.lkeys[i], t.lvalues[i]);
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (std::size_t i : t.order) {
            String const* value = map.Find(t.lkeys[i]);
            bytes += value != nullptr ? value->GetLength() : 0;
        }
        benchmark::DoNotOptimize(bytes);
    }
    Finish(state, bytes, t.valueBytes, 0);
}

void HashMapLookupStd(benchmark::State& state) {
    Texts const& t = GetTexts(static_cast<std::size_t>(state.range(0)));
    StdMap map;
    for (std::size_t i = 0; i < t.keys.size(); ++i)
        map.insert_or_assign(t.keys[i], t.values[i]);
    std::size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (std::size_t i : t.order) {
            StdMap::const_iterator const it = map.find(t.keys[i]);
            bytes += it != map.end() ? it->second.size() : 0;
        }
        benchmark::DoNotOptimize(bytes);
    }
    Finish(state, bytes, t.valueBytes, 0);
}

// The vertices 0..n-1 in the order a traversal might first reach them, and another order
// for the checks of the edges.
struct Vertices {
    explicit Vertices(std::size_t n) : inserts(n), lookups(n) {
        std::mt19937_64 rng(7);
        for (unsigned long i = 0; i < n; ++i)
            inserts[i] = lookups[i] = i;
        std::shuffle(inserts.begin(), inserts.end(), rng);
        std::shuffle(lookups.begin(), lookups.end(), rng);
    }
    std::vector<unsigned long> inserts, lookups;
};

unsigned long Identity(unsigned long const& v) { return v; }

// Inserts the vertices, then counts the lookups that find theirs.
std::size_t VisitLkit(Vertices const& v, double* heap) {
    double const before = heap != nullptr ? HeapInUse() : 0;
    lstd::ValHashSet<unsigned long> visited(Identity, v.inserts.size());
    for (unsigned long x : v.inserts)
        visited.Append(x);
    if (heap != nullptr)
        *heap = HeapInUse() - before;
    std::size_t found = 0;
    for (unsigned long x : v.lookups)
        found += visited.Find(x, nullptr) ? 1 : 0;
    return found;
}

// A user who knows the vertex count reserves for it, as the lkit set is sized for it.
std::size_t VisitStd(Vertices const& v, double* heap) {
    double const before = heap != nullptr ? HeapInUse() : 0;
    std::unordered_set<unsigned long> visited;
    visited.reserve(v.inserts.size());
    for (unsigned long x : v.inserts)
        visited.insert(x);
    if (heap != nullptr)
        *heap = HeapInUse() - before;
    std::size_t found = 0;
    for (unsigned long x : v.lookups)
        found += visited.count(x);
    return found;
}

template <std::size_t (*Visit)(Vertices const&, double*)>
void VisitedSet(benchmark::State& state) {
    Vertices const v(static_cast<std::size_t>(state.range(0)));
    double heap = 0;
    std::size_t found = Visit(v, &heap);
    for (auto _ : state)
        found = Visit(v, nullptr);
    Finish(state, found, v.inserts.size(), heap);
}

void Sizes(benchmark::internal::Benchmark* b) {
    b->Arg(1000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMicrosecond);
}
}  // namespace

BENCHMARK_TEMPLATE(HashMapInsert, FillLkit)->Name("HashMapInsert/lkit")->Apply(Sizes);
BENCHMARK_TEMPLATE(HashMapInsert, FillStd)->Name("HashMapInsert/std")->Apply(Sizes);
BENCHMARK(HashMapLookupLkit)->Name("HashMapLookup/lkit")->Apply(Sizes);
BENCHMARK(HashMapLookupStd)->Name("HashMapLookup/std")->Apply(Sizes);
BENCHMARK_TEMPLATE(VisitedSet, VisitLkit)
    ->Name("VisitedSet/lkit")
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(VisitedSet, VisitStd)
    ->Name("VisitedSet/std")
    ->Arg(1000000)
    ->Unit(benchmark::kMillisecond);
