// lstd lists side by side with std::list: appending, walking through the list's own heap
// iterator, and keeping a list sorted. Each pair <work>/lkit/<size>, <work>/stdlist/<size>
// runs on the same input and checks that both sides computed the same result.
#include <benchmark/benchmark.h>
#include <lkit.h>

#include <algorithm>
#include <list>
#include <memory>
#include <random>
#include <vector>

namespace {
using Values = std::vector<unsigned long>;

unsigned long Count(benchmark::State const& state) {
    return static_cast<unsigned long>(state.range(0));
}

// n values drawn from a fixed seed, so that both sides of a pair see the same input.
Values RandomValues(unsigned long n) {
    std::mt19937_64 rng(12345);
    Values values(n);
    for (unsigned long& v : values)
        v = rng() % (4 * n);
    return values;
}

void Expect(benchmark::State& state, bool same) {
    if (!same)
        state.SkipWithError("lkit and its peer computed different results");
}

void ListAppendLkit(benchmark::State& state) {
    unsigned long const n = Count(state);
    for (auto _ : state) {
        lstd::ValDLinkList<unsigned long> list;
        for (unsigned long i = 0; i < n; ++i)
            list.Append(i);
        benchmark::DoNotOptimize(list.GetNumberOfEntry());
        Expect(state, list.GetNumberOfEntry() == n && list.GetLast() == n - 1);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ListAppendStd(benchmark::State& state) {
    unsigned long const n = Count(state);
    for (auto _ : state) {
        std::list<unsigned long> list;
        for (unsigned long i = 0; i < n; ++i)
            list.push_back(i);
        benchmark::DoNotOptimize(list.size());
        Expect(state, list.size() == n && list.back() == n - 1);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// The walk a caller of the collection interface writes: a heap iterator from CreateIterator,
// stepped with ++ and read with Get, all through the interface.
void ListWalkLkit(benchmark::State& state) {
    unsigned long const n = Count(state);
    lstd::ValDLinkList<unsigned long> list;
    for (unsigned long i = 0; i < n; ++i)
        list.Append(i);
    lstd::IValOrderList<unsigned long> const& items = list;
    for (auto _ : state) {
        unsigned long sum = 0;
        std::unique_ptr<lstd::IValOrderListIterator<unsigned long>> it(items.CreateIterator());
        while (++*it)
            sum += it->Get();
        benchmark::DoNotOptimize(sum);
        Expect(state, sum == n * (n - 1) / 2);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void ListWalkStd(benchmark::State& state) {
    unsigned long const n = Count(state);
    std::list<unsigned long> list;
    for (unsigned long i = 0; i < n; ++i)
        list.push_back(i);
    for (auto _ : state) {
        unsigned long sum = 0;
        for (unsigned long v : list)
            sum += v;
        benchmark::DoNotOptimize(sum);
        Expect(state, sum == n * (n - 1) / 2);
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

// A sorted list built from random values by Append, against a std::list kept sorted by a
// linear scan for the first larger value.
void SortedInsertLkit(benchmark::State& state) {
    Values const values = RandomValues(Count(state));
    Values sorted(values);
    std::sort(sorted.begin(), sorted.end());
    for (auto _ : state) {
        lstd::ValSortList<unsigned long> list;
        for (unsigned long v : values)
            list.Append(v);
        benchmark::DoNotOptimize(list.GetNumberOfEntry());
        state.PauseTiming();
        bool same = list.GetNumberOfEntry() == sorted.size();
        lstd::ValDoubleLink<unsigned long> const* node = list.GetHead();
        for (std::size_t i = 0; same && i < sorted.size(); ++i, node = node->mNext)
            same = node->mValue == sorted[i];
        Expect(state, same);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void SortedInsertStd(benchmark::State& state) {
    Values const values = RandomValues(Count(state));
    Values sorted(values);
    std::sort(sorted.begin(), sorted.end());
    for (auto _ : state) {
        std::list<unsigned long> list;
        for (unsigned long v : values) {
            auto at = list.begin();
            while (at != list.end() && !(v < *at))
                ++at;
            list.insert(at, v);
        }
        benchmark::DoNotOptimize(list.size());
        state.PauseTiming();
        Expect(state, Values(list.begin(), list.end()) == sorted);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
}  // namespace

BENCHMARK(ListAppendLkit)->Name("ListAppend/lkit")->Arg(1000)->Arg(1000000);
BENCHMARK(ListAppendStd)->Name("ListAppend/stdlist")->Arg(1000)->Arg(1000000);
BENCHMARK(ListWalkLkit)->Name("ListWalk/lkit")->Arg(1000)->Arg(1000000);
BENCHMARK(ListWalkStd)->Name("ListWalk/stdlist")->Arg(1000)->Arg(1000000);
BENCHMARK(SortedInsertLkit)->Name("SortedInsert/lkit")->Arg(10000);
BENCHMARK(SortedInsertStd)->Name("SortedInsert/stdlist")->Arg(10000);
