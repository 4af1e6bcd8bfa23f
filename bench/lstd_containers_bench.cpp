// lstd containers side by side with their standard counterparts: the String-keyed hash map,
// the value list, and the String hash. Run with --benchmark_min_time=0.2 or more; compare
// the pairs within one run.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <algorithm>
#include <list>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace {
using lstd::String;
using StringMap = lstd::ValHashMap<String, String>;
using StdMap = std::unordered_map<std::string, std::string>;

// Short distinct keys and values, as attribute names and ini keys are; the same texts for
// both maps. The lookup order is shuffled so that it follows neither insertion nor buckets.
struct Texts {
    explicit Texts(long n) {
        std::mt19937_64 rng(42);
        for (long i = 0; i < n; ++i) {
            keys.push_back("key" + std::to_string(rng() % 1000000000));
            values.push_back("value" + std::to_string(i));
        }
        std::sort(keys.begin(), keys.end());
        keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
        while (static_cast<long>(keys.size()) < n)
            keys.push_back("extra" + std::to_string(keys.size()));
        order.resize(keys.size());
        for (std::size_t i = 0; i < order.size(); ++i)
            order[i] = i;
        std::shuffle(keys.begin(), keys.end(), rng);
        std::shuffle(order.begin(), order.end(), rng);
        for (std::string const& k : keys)
            lkeys.emplace_back(k.c_str(), k.size());
        for (std::string const& v : values)
            lvalues.emplace_back(v.c_str(), v.size());
    }
    std::vector<std::string> keys, values;
    std::vector<String> lkeys, lvalues;
    std::vector<std::size_t> order;
};

void ValHashMapInsert(benchmark::State& state) {
    Texts const t(state.range(0));
    for (auto _ : state) {
        StringMap map(String::Hash);
        for (std::size_t i = 0; i < t.lkeys.size(); ++i)
            map.Append(t.lkeys[i], t.lvalues[i]);
        benchmark::DoNotOptimize(map.Length());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdUnorderedMapInsert(benchmark::State& state) {
    Texts const t(state.range(0));
    for (auto _ : state) {
        StdMap map;
        for (std::size_t i = 0; i < t.keys.size(); ++i)
            map.insert_or_assign(t.keys[i], t.values[i]);
        benchmark::DoNotOptimize(map.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ValHashMapLookup(benchmark::State& state) {
    Texts const t(state.range(0));
    StringMap map(String::Hash);
    for (std::size_t i = 0; i < t.lkeys.size(); ++i)
        map.Append(t.lkeys[i], t.lvalues[i]);
    for (auto _ : state)
        for (std::size_t i : t.order)
            benchmark::DoNotOptimize(map.Find(t.lkeys[i]));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdUnorderedMapLookup(benchmark::State& state) {
    Texts const t(state.range(0));
    StdMap map;
    for (std::size_t i = 0; i < t.keys.size(); ++i)
        map.insert_or_assign(t.keys[i], t.values[i]);
    for (auto _ : state)
        for (std::size_t i : t.order)
            benchmark::DoNotOptimize(map.find(t.keys[i]));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ValDLinkListAppend(benchmark::State& state) {
    unsigned long const n = static_cast<unsigned long>(state.range(0));
    for (auto _ : state) {
        lstd::ValDLinkList<unsigned long> list;
        for (unsigned long i = 0; i < n; ++i)
            list.Append(i);
        benchmark::DoNotOptimize(list.GetNumberOfEntry());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdListAppend(benchmark::State& state) {
    unsigned long const n = static_cast<unsigned long>(state.range(0));
    for (auto _ : state) {
        std::list<unsigned long> list;
        for (unsigned long i = 0; i < n; ++i)
            list.push_back(i);
        benchmark::DoNotOptimize(list.size());
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ValDLinkListWalkNodes(benchmark::State& state) {
    lstd::ValDLinkList<unsigned long> list;
    for (long i = 0; i < state.range(0); ++i)
        list.Append(static_cast<unsigned long>(i));
    for (auto _ : state) {
        unsigned long sum = 0;
        for (lstd::ValDoubleLink<unsigned long>* node = list.GetHead(); node != nullptr;
             node = node->mNext)
            sum += node->mValue;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ValDLinkListIterator(benchmark::State& state) {
    lstd::ValDLinkList<unsigned long> list;
    for (long i = 0; i < state.range(0); ++i)
        list.Append(static_cast<unsigned long>(i));
    for (auto _ : state) {
        unsigned long sum = 0;
        lstd::IValOrderListIterator<unsigned long>* it = list.CreateIterator();
        while (++*it)
            sum += it->Get();
        delete it;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdListIterate(benchmark::State& state) {
    std::list<unsigned long> list;
    for (long i = 0; i < state.range(0); ++i)
        list.push_back(static_cast<unsigned long>(i));
    for (auto _ : state) {
        unsigned long sum = 0;
        for (unsigned long v : list)
            sum += v;
        benchmark::DoNotOptimize(sum);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StringHash(benchmark::State& state) {
    std::string text(static_cast<std::size_t>(state.range(0)), 'x');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>(' ' + i % 95);
    String const s(text.c_str(), text.size());
    for (auto _ : state)
        benchmark::DoNotOptimize(String::Hash(s));
    state.SetBytesProcessed(state.iterations() * state.range(0));
}
}  // namespace

BENCHMARK(ValHashMapInsert)->Arg(1000)->Arg(100000);
BENCHMARK(StdUnorderedMapInsert)->Arg(1000)->Arg(100000);
BENCHMARK(ValHashMapLookup)->Arg(1000)->Arg(100000);
BENCHMARK(StdUnorderedMapLookup)->Arg(1000)->Arg(100000);
BENCHMARK(ValDLinkListAppend)->Arg(1000)->Arg(100000);
BENCHMARK(StdListAppend)->Arg(1000)->Arg(100000);
BENCHMARK(ValDLinkListWalkNodes)->Arg(1000)->Arg(100000);
BENCHMARK(ValDLinkListIterator)->Arg(1000)->Arg(100000);
BENCHMARK(StdListIterate)->Arg(1000)->Arg(100000);
BENCHMARK(StringHash)->Arg(64)->Arg(64 << 10);
