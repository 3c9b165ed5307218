// Native logs of 8 hours, decoded into arrays that are there: fixed frames, and change-mask frames with the walk that finds
// them; and the memory that a first load takes. The floor reads as many bytes as fixed frames have, 92 MB, and streams as many
// as a decoder writes, 45 a sample or 259 MB.
#include <emmintrin.h>

#include <cstdio>
#include <cstring>
#include <vector>

#include "app/frame_loop.h"
#include "bench/long_logs.h"
#include "bench/ratio.h"
#include "platform/memory.h"
#include "run_data/log_header.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"

namespace {

constexpr size_t readBytes = size_t{frameSize} * sampleLimit;
constexpr size_t streamedBytes = size_t{45} * sampleLimit;  // of 49; the suspension speeds are derived later
constexpr int    margin = 1024;                             // zero bytes behind a log

// Memory of the same kind as the arrays have.
struct Pages {
    size_t size;
    void*  memory;
    explicit Pages(size_t bytes) : size(bytes), memory(TakePages(bytes)) { std::memset(memory, 1, size); }
    ~Pages() { GivePagesBack(memory, size); }
    Pages(const Pages&) = delete;
    Pages& operator=(const Pages&) = delete;
};

struct ReadAndStream {
    Pages from{readBytes}, to{streamedBytes};
    void operator()() const {
        const auto* source = static_cast<const __m128i*>(from.memory);
        __m128i sum = _mm_setzero_si128();
        for (size_t i = 0; i < readBytes / sizeof(__m128i); i++) sum = _mm_add_epi64(sum, _mm_load_si128(source + i));
        auto* target = static_cast<__m128i*>(to.memory);
        for (size_t i = 0; i < streamedBytes / sizeof(__m128i); i++) _mm_stream_si128(target + i, sum);
        _mm_sfence();
    }
};

// A log of 8 hours with its margin, in memory of the kind that files are read into.
struct LongLog {
    int   bytes;  // without the margin
    Pages pages;
    explicit LongLog(int version) : LongLog(LongNativeLog(version)) {}
    const uint8_t* Data() const { return static_cast<const uint8_t*>(pages.memory); }

  private:
    explicit LongLog(const std::vector<uint8_t>& log) : bytes(static_cast<int>(log.size())), pages(log.size() + margin) {
        std::memcpy(pages.memory, log.data(), log.size());
        std::memset(static_cast<uint8_t*>(pages.memory) + log.size(), 0, margin);
    }
};

void Decode(benchmark::State& state) {
    LongLog log(static_cast<int>(state.range(0)));
    ReadAndStream floor;
    LoadDefaults();
    DecodeNativeLog(0, log.Data(), log.bytes);
    CompareToFloor(state, [] {}, [&] { floor(); }, [&] { DecodeNativeLog(0, log.Data(), log.bytes); });
    state.counters["log_mb"] = log.bytes * 1e-6;
    if (sampleCount[0] < sampleLimit - 1) state.SkipWithError("the log was not decoded whole");
}
BENCHMARK(Decode)->ArgName("version")->Arg(0)->Arg(2)->Arg(3)->Arg(4)->UseManualTime()->Iterations(11)->Unit(benchmark::kMillisecond);

// A line of /proc/self/status in bytes.
double ProcessBytes(const char* name) {
    double kilobytes = 0;
    if (FILE* status = std::fopen("/proc/self/status", "r")) {
        char line[256];
        while (std::fgets(line, sizeof line, status))
            if (std::strncmp(line, name, std::strlen(name)) == 0) kilobytes = std::atof(line + std::strlen(name));
        std::fclose(status);
    }
    return kilobytes * 1024;
}
void ForgetPeak() {
    if (FILE* file = std::fopen("/proc/self/clear_refs", "w")) {
        std::fputs("5", file);
        std::fclose(file);
    }
}

// A first load, derived channels included: its peak beside the log in memory, at most 1.1 times 49 bytes a sample.
void LoadMemory(benchmark::State& state) {
    LongLog log(static_cast<int>(state.range(0)));
    LoadDefaults();
    double peak = 0;
    for (auto _ : state) {
        ReleaseRunStore();
        ForgetPeak();
        const double before = ProcessBytes("VmRSS:");
        state.SetIterationTime(SecondsOf([&] { ReadNativeLog(0, log.Data(), log.bytes); }));
        peak = std::max(peak, ProcessBytes("VmHWM:") - before);
    }
    state.counters["bytes_a_sample"] = peak / sampleLimit;
    state.counters["ratio"] = peak / (49.0 * sampleLimit);
    if (peak > 1.1 * 49 * sampleLimit) state.SkipWithError("the load took more than 1.1 times 49 bytes a sample");
}
BENCHMARK(LoadMemory)->ArgName("version")->Arg(0)->Arg(2)->Arg(3)->Arg(4)->UseManualTime()->Iterations(2)->Unit(benchmark::kMillisecond);

}  // namespace
