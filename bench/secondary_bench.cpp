// A .qtw log of 8 hours with all its channels into existing arrays, derived steps included: at typical intervals, and with
// every channel in every sample. The floor is a copy of the arrays that the reader fills, 40 bytes a sample.
#include <cstring>

#include "app/frame_loop.h"
#include "bench/long_logs.h"
#include "bench/ratio.h"
#include "run_data/run_store.h"
#include "run_data/secondary_log.h"

namespace {

template <class Visit>
void ForEachFilledArray(Visit visit) {
    for (auto* array : {&Ne[0], &VFW[0], &VRW[0], &VB[0]}) visit(*array);
    for (auto* array : {&FSUS[0], &RSUS[0], &VFSus[0], &VRSus[0]}) visit(*array);
    for (auto* array : {&TH[0], &LAF1[0], &LAF2[0]}) visit(*array);
    for (auto* array : {&lapDistance[0], &distFront[0], &distRear[0]}) visit(*array);
}

struct CopyFloor {
    std::vector<char> to = std::vector<char>(size_t{40} * sampleLimit, 1);
    void operator()() {
        char* at = to.data();
        ForEachFilledArray([&](const auto& array) {
            const size_t bytes = sizeof array[0] * sampleLimit;
            std::memcpy(at, array.data(), bytes);
            at += bytes;
        });
    }
};

void SecondaryLog(benchmark::State& state) {
    std::vector<uint8_t> log = LongSecondaryLog(static_cast<int>(state.range(0)));
    const int length = static_cast<int>(log.size());
    log.resize(log.size() + 1024, 0);
    LoadDefaults();
    fileKind[0] = 2;
    ReadSecondaryLog(0, log.data(), length);
    CopyFloor floor;
    CompareToFloor(state, [] {}, floor, [&] { ReadSecondaryLog(0, log.data(), length); });
    if (sampleCount[0] < sampleLimit - 1) state.SkipWithError("the log was not read whole");
    LoadDefaults();
}
BENCHMARK(SecondaryLog)->ArgName("interval")->Arg(0)->Arg(5)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);

}  // namespace
