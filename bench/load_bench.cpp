// A file in the page cache to a filled slot, all steps, through LoadFile: 8 hours of each native frame kind. The floor is a
// copy of the slot's arrays, 282 MB, between memory that is in use already.
#include <cstring>

#include "app/frame_loop.h"
#include "bench/long_logs.h"
#include "bench/ratio.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"

namespace {

constexpr size_t slotBytes = size_t{49} * sampleLimit;

struct CopyFloor {
    std::vector<char> from = std::vector<char>(slotBytes, 1), to = std::vector<char>(slotBytes, 2);
    void operator()() { std::memcpy(to.data(), from.data(), slotBytes); }
};

void CheckLoaded(benchmark::State& state, int slot) {
    if (sampleCount[slot] < sampleLimit - 1) state.SkipWithError("the log was not read whole");
}

// The arrays are new to the process in every turn.
void FirstLoad(benchmark::State& state) {
    const char* file = LongNativeFile(static_cast<int>(state.range(0))).c_str();
    CopyFloor floor;
    LoadDefaults();
    CompareToFloor(state, ReleaseRunStore, floor, [&] { LoadFile(file, 0); });
    CheckLoaded(state, 0);
    LoadDefaults();
}

void Reload(benchmark::State& state) {
    const char* file = LongNativeFile(static_cast<int>(state.range(0))).c_str();
    CopyFloor floor;
    LoadDefaults();
    LoadFile(file, 0);
    CompareToFloor(state, [] {}, floor, [&] { LoadFile(file, 0); });
    CheckLoaded(state, 0);
    LoadDefaults();
}

void EachFrameKind(benchmark::internal::Benchmark* run) {
    for (int version : {2, 3, 4}) run->Arg(version);
    run->ArgName("version")->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
}
BENCHMARK(FirstLoad)->Apply(EachFrameKind);
BENCHMARK(Reload)->Apply(EachFrameKind);

}  // namespace
