// The distribution of 8 hours, channel by channel and all four. The floor is a read of the channel's samples.
#include <cstring>
#include <type_traits>

#include "analysis/distribution.h"
#include "app/frame_loop.h"
#include "bench/ratio.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "tools/sample_log/sample_log.h"

namespace {

// A believable ride, again and again until 8 hours are full.
void FillEightHours() {
    LoadDefaults();
    SampleLogOptions options;
    options.laps = 20;
    std::vector<uint8_t> log = MakeSampleLog(options);
    const int length = static_cast<int>(log.size());
    log.resize(log.size() + 1024);
    ReadNativeLog(0, log.data(), length);
    const int ride = sampleCount[0];
    std::vector<std::vector<int>> rides;  // resizing the slot need not keep its samples
    ForEachSampleArray(0, [&](auto& array, bool) { rides.emplace_back(array.begin(), array.begin() + ride); });
    EnsureChannels(0, sampleLimit + 16);
    auto from = rides.begin();
    ForEachSampleArray(0, [&](auto& array, bool) {
        for (int i = 0; i < sampleLimit; i++) array[i] = static_cast<std::decay_t<decltype(array[0])>>((*from)[i % ride]);
        ++from;
    });
    sampleCount[0] = sampleLimit;
    lapCount[0] = 1;
    FillLapEnd(0);
}

template <class T>
uint64_t Read(const SampleArray<T>& samples) {
    // In words, four sums at once: as fast as memory gives them.
    const char* at = reinterpret_cast<const char*>(samples.data());
    uint64_t sums[4] = {};
    for (const char* end = at + sizeof(T) * sampleLimit; at != end; at += 32)
        for (int i = 0; i < 4; i++) {
            uint64_t word;
            std::memcpy(&word, at + 8 * i, 8);
            sums[i] += word;
        }
    return sums[0] + sums[1] + sums[2] + sums[3];
}

void ReadChannel(int channel) {
    uint64_t sum = channel == distNe      ? Read(Ne[0])
                   : channel == distTh    ? Read(TH[0])
                   : channel == distFrSUS ? Read(FSUS[0])
                                          : Read(RSUS[0]);
    benchmark::DoNotOptimize(sum);
}

void AnalyzeChannel(int channel) {
    OpenDistribution();
    distChannel = channel;
    distBands[distFieldMin] = distMin[channel];
    distBands[distFieldMax] = distMax[channel];
    distBands[distFieldStep] = distStep[channel];
    AnalyzeBands();
}

void Distribution(benchmark::State& state) {
    FillEightHours();
    const int from = static_cast<int>(state.range(0)), to = static_cast<int>(state.range(1));
    const auto each = [&](void (*call)(int)) {
        return [=] {
            for (int channel = from; channel <= to; channel++) call(channel);
        };
    };
    CompareToFloor(state, [] {}, each(ReadChannel), each(AnalyzeChannel));
}
BENCHMARK(Distribution)->ArgNames({"from", "to"})->Args({0, 3})->Args({0, 0})->Args({1, 1})->Args({2, 2})->Args({3, 3})
    ->UseManualTime()->Iterations(25)->Unit(benchmark::kMillisecond);

}  // namespace
