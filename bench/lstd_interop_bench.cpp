// The standard-library interfaces of the containers beside what users would otherwise write:
//   RangeFor/<side>/<n>    a range-for sum over n values of a ValDLinkList (lkit) and of a
//                          std::list (std), both filled by appending in the same order;
//                          10000 nodes stay in the caches, 1000000 are read from memory
//   TextLookup/<side>/<n>  every key of a ValHashMap<String, String> of n entries, looked up
//                          from the caller's std::string: by std::string_view (lkit), and
//                          through a String made of it (string_key), the only way before
// Each side checks its result against one computed from the input (SkipWithError otherwise).
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <algorithm>
#include <list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {
using lstd::String;

void Finish(benchmark::State& state, unsigned long got, unsigned long want) {
    if (got != want)
        state.SkipWithError("wrong result");
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()) * state.range(0));
}

using LkitList = lstd::ValDLinkList<unsigned long>;
using StdList = std::list<unsigned long>;
void Push(LkitList& list, unsigned long v) { list.Append(v); }
void Push(StdList& list, unsigned long v) { list.push_back(v); }

template <typename List>
void ListWalk(benchmark::State& state) {
    unsigned long const n = static_cast<unsigned long>(state.range(0));
    List list;
    unsigned long want = 0;
    for (unsigned long i = 0; i < n; ++i) {
        Push(list, i * 7 % 1000);
        want += i * 7 % 1000;
    }
    unsigned long sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (unsigned long v : list)
            sum += v;
        benchmark::DoNotOptimize(sum);
    }
    Finish(state, sum, want);
}

// n distinct keys as attribute names and ini keys are, in a shuffled lookup order, and the
// map of them; the values are their positions, so that a lookup's result can be checked.
struct Table {
    explicit Table(unsigned long n) : map(&String::Hash) {
        std::mt19937_64 rng(42);
        for (unsigned long i = 0; i < n; ++i)
            keys.push_back("key" + std::to_string(rng() % 1000000) + "_" + std::to_string(i));
        for (unsigned long i = 0; i < n; ++i) {
            String const value(std::to_string(i).c_str());
            map.Append(String(keys[i]), value);
            want += value.GetLength();
        }
        std::shuffle(keys.begin(), keys.end(), rng);
    }
    std::vector<std::string> keys;
    lstd::ValHashMap<String, String> map;
    unsigned long want = 0;  // the value lengths that looking up every key adds up
};

template <bool View>
void TextLookup(benchmark::State& state) {
    Table const table(static_cast<unsigned long>(state.range(0)));
    unsigned long got = 0;
    for (auto _ : state) {
        got = 0;
        for (std::string const& key : table.keys) {
            String const* value = View ? table.map.Find(std::string_view(key))
                                       : table.map.Find(String(key.data(), key.size()));
            got += value != nullptr ? value->GetLength() : 0;
        }
        benchmark::DoNotOptimize(got);
    }
    Finish(state, got, table.want);
}
}  // namespace

BENCHMARK_TEMPLATE(ListWalk, LkitList)
    ->Name("RangeFor/lkit")
    ->Arg(10000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(ListWalk, StdList)
    ->Name("RangeFor/std")
    ->Arg(10000)
    ->Arg(1000000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TextLookup, true)
    ->Name("TextLookup/lkit")
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_TEMPLATE(TextLookup, false)
    ->Name("TextLookup/string_key")
    ->Arg(100000)
    ->Unit(benchmark::kMicrosecond);
