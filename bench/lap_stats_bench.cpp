// lap_stats_bench.cpp -- the lap table's statistics of 8 hours with 288 laps. The floor is reading each of their arrays
// once.
#include <cstdint>
#include <cstring>

#include "analysis/lap_stats.h"
#include "bench/long_ride.h"
#include "bench/ratio.h"
#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "views/course_file.h"

constexpr int lapTotal = 288;
constexpr int turns = 21;

static void FillLaps() {
    uint32_t seed = 99;
    lapCount[0] = lapTotal;
    for (int lap = 1; lap < lapTotal; lap++)
        lapStart[0][lap] = static_cast<uint32_t>(int64_t{sampleLimit} * lap / lapTotal) + (NextNumber(seed) >> 16) % 400;
    FillLapEnd(0);
    for (int lap = 1; lap <= lapTotal; lap++) lapLength[0][lap] = distFront[0][lapStart[0][lap]] - distFront[0][lapStart[0][lap - 1]];
    ResetLapChecks(0);
}

// File 1: 8 hours, two sector boundaries on the course.
static void FillSlot() {
    FillLongRide();
    for (int i = 1; i < sampleLimit + 16; i++) distFront[0][i] = distFront[0][i - 1] + VFW[0][i];
    coursePointCount = 900;
    sectorMark[0][1] = 300;
    sectorMark[0][2] = 600;
    FillLaps();
}

// As fast as memory gives them: eight bytes at a time, four sums beside each other.
template <class T>
static uint64_t SumOfWords(const SampleArray<T>& array) {
    const char* bytes = reinterpret_cast<const char*>(array.data());
    const size_t words = sampleLimit * sizeof(T) / 8;
    uint64_t sums[4] = {};
    for (size_t i = 0; i + 4 <= words; i += 4) {
        uint64_t four[4];
        std::memcpy(four, bytes + i * 8, sizeof four);
        for (int k = 0; k < 4; k++) sums[k] += four[k];
    }
    return sums[0] + sums[1] + sums[2] + sums[3];
}

static void ReadEachArrayOnce() {
    uint64_t sum = 0;
    for (const auto* array : {&Ne[0], &VFW[0], &VRW[0]}) sum += SumOfWords(*array);
    for (const auto* array : {&FSUS[0], &RSUS[0], &VFSus[0], &VRSus[0]}) sum += SumOfWords(*array);
    for (const auto* array : {&AUX1[0], &AUX2[0], &LAF1[0], &LAF2[0]}) sum += SumOfWords(*array);
    sum += SumOfWords(distFront[0]);
    benchmark::DoNotOptimize(sum);
}

static void Compare(benchmark::State& state, float factor) {
    FillSlot();
    neFactor[0] = factor;
    CompareToFloor(state, [] { dataVersion[0]++; }, ReadEachArrayOnce, ComputeLapStats);
}

static void LapStatsOfEightHours(benchmark::State& state) { Compare(state, 1.0f); }
static void LapStatsWithOtherSprockets(benchmark::State& state) { Compare(state, 0.9375f); }
// A click on a check box: the samples are not read again.
static void LapStatsAfterACheckBox(benchmark::State& state) {
    FillSlot();
    ComputeLapStats();
    CompareToFloor(state, [] { lapChecked[0][7] = !lapChecked[0][7]; }, ReadEachArrayOnce, ComputeLapStats);
}

static void Timing(benchmark::internal::Benchmark* run) {
    run->UseManualTime()->Iterations(turns)->Unit(benchmark::kMillisecond);
}
BENCHMARK(LapStatsOfEightHours)->Apply(Timing);
BENCHMARK(LapStatsWithOtherSprockets)->Apply(Timing);
BENCHMARK(LapStatsAfterACheckBox)->Apply(Timing);
