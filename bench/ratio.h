// ratio.h -- times a piece of work and the floor that it is measured against in turns, in one run.
#pragma once
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <vector>

template <class Work>
double SecondsOf(Work work) {
    auto start = std::chrono::steady_clock::now();
    work();
    benchmark::ClobberMemory();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

// With ZRKA_BENCH_ONCE in the environment only the first turn of a benchmark works: to see that it runs, not how fast.
inline const bool oneTurn = std::getenv("ZRKA_BENCH_ONCE") != nullptr;

// Each turn: prepare (not timed), floor, work. The benchmark's time is that of the work; floor_ms and ratio stand beside
// it, both from medians. Register with ->UseManualTime() and a fixed number of iterations.
template <class Prepare, class Floor, class Work>
void CompareToFloor(benchmark::State& state, Prepare prepare, Floor floor, Work work) {
    std::vector<double> floors, works;
    for (auto _ : state) {
        if (oneTurn && !works.empty()) {
            state.SetIterationTime(works.back());
            continue;
        }
        prepare();
        floors.push_back(SecondsOf(floor));
        works.push_back(SecondsOf(work));
        state.SetIterationTime(works.back());
    }
    if (works.empty()) return;
    state.counters["floor_ms"] = Median(floors) * 1000;
    state.counters["work_ms"] = Median(works) * 1000;
    state.counters["ratio"] = Median(works) / Median(floors);
}
