// The steps that a load runs on the logged channels: 8 hours at 200 Hz. The floor is a copy of the ten smoothed arrays.
#include <cstring>

#include "bench/ratio.h"
#include "run_data/derived_channels.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

static uint32_t Next(uint32_t& state) { return state = state * 1664525 + 1013904223; }

// Slowly moving values with noise, as sensors give them.
template <class T>
static void FillChannel(SampleArray<T>& array, int low, int high, uint32_t seed) {
    int value = (low + high) / 2;
    for (T& sample : array) {
        int step = static_cast<int>(Next(seed) >> 16) % 41 - 20;
        value = std::clamp(value + step, low, high);
        sample = static_cast<T>(value);
    }
}

static void FillSlot() {
    DefaultSettings();
    DefaultRunStore();
    EnsureChannels(0, sampleLimit + 16);
    ClearChannels(0, sampleLimit + 16);
    sampleCount[0] = sampleLimit;
    fileKind[0] = 1;
    formatVersion[0] = 4;
    FillChannel(Ne[0], 1500, 17000, 1);
    FillChannel(TH[0], 0, 1000, 2);
    FillChannel(VFW[0], 0, 3200, 3);
    FillChannel(VRW[0], 0, 3300, 4);
    FillChannel(FSUS[0], 0, 12000, 5);
    FillChannel(RSUS[0], 0, 6000, 6);
    FillChannel(LAF1[0], 900, 1800, 7);
    FillChannel(LAF2[0], 900, 1800, 8);
    FillChannel(VB[0], 850, 1450, 9);
    FillChannel(AUX1[0], -5000, 5000, 10);
    FillChannel(AUX2[0], 0, 500, 11);
}

// The smoothed arrays, and memory of the same size to copy them to.
struct CopyFloor {
    std::vector<char> target = std::vector<char>(size_t{sampleLimit} * 30);

    void operator()() {
        char* to = target.data();
        auto copy = [&](const auto& array) {
            size_t bytes = sizeof array[0] * sampleLimit;
            std::memcpy(to, array.data(), bytes);
            to += bytes;
        };
        for (const auto* array : {&TH[0], &LAF1[0], &LAF2[0], &AUX1[0], &AUX2[0]}) copy(*array);
        for (const auto* array : {&FSUS[0], &RSUS[0], &VFSus[0], &VRSus[0]}) copy(*array);
        copy(VB[0]);
    }
};

static void AllSteps() { FinishChannels(0); }

static void RunSteps(benchmark::State& state, void (*steps)()) {
    CopyFloor floor;
    CompareToFloor(state, [] {}, floor, steps);
}

static void DerivedSteps(benchmark::State& state) {
    FillSlot();
    RunSteps(state, AllSteps);
}
static void DerivedStepsAllSmoothing(benchmark::State& state) {
    FillSlot();
    smoothingNE = smoothingVW = 1;
    RunSteps(state, AllSteps);
}
static void DerivedStepsWidestWindow(benchmark::State& state) {
    FillSlot();
    SmoothingSTD = 1000;
    RunSteps(state, AllSteps);
}
static void SuspensionSpeed(benchmark::State& state) {
    FillSlot();
    RunSteps(state, [] { ComputeSuspensionSpeed(0); });
}
static void Smoothing(benchmark::State& state) {
    FillSlot();
    RunSteps(state, [] { SmoothChannels(0); });
}
static void Statistics(benchmark::State& state) {
    FillSlot();
    RunSteps(state, [] { ComputeStatistics(0); });
}

static void Timing(benchmark::internal::Benchmark* run) {
    run->UseManualTime()->Iterations(15)->Unit(benchmark::kMillisecond);
}
BENCHMARK(DerivedSteps)->Apply(Timing);
BENCHMARK(DerivedStepsAllSmoothing)->Apply(Timing);
BENCHMARK(DerivedStepsWidestWindow)->Apply(Timing);
BENCHMARK(SuspensionSpeed)->Apply(Timing);
BENCHMARK(Smoothing)->Apply(Timing);
BENCHMARK(Statistics)->Apply(Timing);
