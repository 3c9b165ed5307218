// A file in the page cache to a filled slot, all steps, through LoadFile: 8 hours of each native frame kind. The floor is a
// copy of the slot's arrays, 282 MB, between memory that is in use already.
#include <unistd.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "app/frame_loop.h"
#include "bench/ratio.h"
#include "run_data/load_pipeline.h"
#include "run_data/run_store.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr size_t slotBytes = size_t{49} * sampleLimit;

// An 8 hour log of a version in a folder of its own.
struct LongLog {
    std::filesystem::path folder = std::filesystem::temp_directory_path() / ("zrka_load_bench_" + std::to_string(getpid()));
    std::string           file = (folder / "long.zrk").string();

    explicit LongLog(int version) {
        SampleLogOptions options;
        options.version = version;
        options.laps = 0;
        options.seconds = longestLogSeconds;
        const std::vector<uint8_t> bytes = MakeSampleLog(options);
        std::filesystem::create_directories(folder);
        std::ofstream(file, std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    ~LongLog() { std::filesystem::remove_all(folder); }
};

struct CopyFloor {
    std::vector<char> from = std::vector<char>(slotBytes, 1), to = std::vector<char>(slotBytes, 2);
    void operator()() { std::memcpy(to.data(), from.data(), slotBytes); }
};

void CheckLoaded(benchmark::State& state) {
    if (sampleCount[0] < sampleLimit - 1) state.SkipWithError("the log was not read whole");
}

// The arrays are new to the process in every turn.
void FirstLoad(benchmark::State& state) {
    LongLog log(static_cast<int>(state.range(0)));
    CopyFloor floor;
    LoadDefaults();
    CompareToFloor(state, ReleaseRunStore, floor, [&] { LoadFile(log.file.c_str(), 0); });
    CheckLoaded(state);
}

void Reload(benchmark::State& state) {
    LongLog log(static_cast<int>(state.range(0)));
    CopyFloor floor;
    LoadDefaults();
    LoadFile(log.file.c_str(), 0);
    CompareToFloor(state, [] {}, floor, [&] { LoadFile(log.file.c_str(), 0); });
    CheckLoaded(state);
}

void EachFrameKind(benchmark::internal::Benchmark* run) {
    for (int version : {2, 3, 4}) run->Arg(version);
    run->ArgName("version")->UseManualTime()->Iterations(7)->Unit(benchmark::kMillisecond);
}
BENCHMARK(FirstLoad)->Apply(EachFrameKind);
BENCHMARK(Reload)->Apply(EachFrameKind);

}  // namespace
