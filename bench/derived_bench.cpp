// The steps that a load runs on the logged channels: 8 hours at 200 Hz. The floor is a copy of the ten smoothed arrays.
#include <cstring>

#include "bench/long_ride.h"
#include "bench/ratio.h"
#include "run_data/derived_channels.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

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
    FillLongRide();
    RunSteps(state, AllSteps);
}
static void DerivedStepsAllSmoothing(benchmark::State& state) {
    FillLongRide();
    smoothingNE = smoothingVW = 1;
    RunSteps(state, AllSteps);
}
static void DerivedStepsWidestWindow(benchmark::State& state) {
    FillLongRide();
    SmoothingSTD = 1000;
    RunSteps(state, AllSteps);
}
static void SuspensionSpeed(benchmark::State& state) {
    FillLongRide();
    RunSteps(state, [] { ComputeSuspensionSpeed(0); });
}
static void Smoothing(benchmark::State& state) {
    FillLongRide();
    RunSteps(state, [] { SmoothChannels(0); });
}
static void Statistics(benchmark::State& state) {
    FillLongRide();
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
