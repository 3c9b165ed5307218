// frame_bench.cpp -- one frame with three logs and all fourteen channels, against a copy of the client's pixels; and what the
// read-outs and the course map add to a frame.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "app/frame_loop.h"
#include "app/frame_steps.h"
#include "bench/ratio.h"
#include "draw/draw_layer.h"
#include "draw/surface.h"
#include "graph/channel_plot.h"
#include "graph/ruler.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tools/sample_log/sample_log.h"

constexpr int frameTurns = 31;

static void LoadSampleLog(int slot) {
    SampleLogOptions options;
    options.laps = 0;
    options.seconds = 45 * 60;  // 3840 columns of 100 samples need 32 minutes
    options.seed = static_cast<uint64_t>(slot + 1);
    std::vector<uint8_t> log = MakeSampleLog(options);
    const int length = static_cast<int>(log.size());
    log.resize(log.size() + 1024);
    ReadNativeLog(slot, log.data(), length);
}

// The program's folder, with a course in it.
struct CourseFolder {
    std::filesystem::path path = std::filesystem::temp_directory_path() / ("zrka_frame_bench_" + std::to_string(getpid()));

    CourseFolder() {
        std::filesystem::create_directories(path);
        std::ofstream(path / "sorrel.crs") << MakeCourse("sorrel");
        SetProgramFolder((path.string() + "/").c_str());
    }
    ~CourseFolder() { std::filesystem::remove_all(path); }
};

static void LoadSampleLogs() {
    static const CourseFolder folder;
    LoadDefaults();
    ExpertMode = 2;
    for (int slot = 0; slot < fileSlots; slot++) {
        LoadSampleLog(slot);
        std::fill(std::begin(showChannel[slot]), std::end(showChannel[slot]), 1);
        cursorPos[slot] = sampleCount[slot] / 2 * 100;
    }
}

// A window of this size in which three logs fill every column.
static void PrepareView(int width, int height, int samplesPerPixel) {
    static const bool loaded = (LoadSampleLogs(), true);
    benchmark::DoNotOptimize(loaded);
    ShutDownDrawing();
    DefaultScript();
    ScriptScreenSize(width, height);
    windowWidth = width;
    windowHeight = height;
    InitWindowAndDevice();
    timeScale = samplesPerPixel;
    viewZoom = 1.0;
    shortcutOverlayOn = 0;
    CursolValueMode = 1;  // tags and panels
    mouseX = width / 3;
    mouseY = height / 2;
    courseCenterX = width;  // as the settings place it: the upper right corner
    courseCenterY = 0;
    courseZoom = 0.5f;
}

static void CopyClient(std::vector<uint32_t>& copy) {
    const Surface& surface = BackBufferSurface();
    for (int y = 0; y < clientHeight; y++)
        std::memcpy(&copy[size_t(y) * surface.pitch], surface.pixels + size_t(y) * surface.pitch, size_t(clientWidth) * sizeof(uint32_t));
}

// Arguments: height of the client, samples per pixel.
static void CompareToCopy(benchmark::State& state, DrawBackEnd backEnd, void (*draw)()) {
    const int height = static_cast<int>(state.range(0)), width = height * 16 / 9;
    PrepareView(width, height, static_cast<int>(state.range(1)));
    std::vector<uint32_t> copy(size_t(BackBufferSurface().pitch) * height);
    SelectBackEnd(backEnd);
    CompareToFloor(state, [] { activityCount = 150; }, [&] { CopyClient(copy); }, draw);
    SelectBackEnd(DrawBackEnd::software);
}

static void PlotOfThreeLogs(benchmark::State& state) { CompareToCopy(state, DrawBackEnd::software, DrawChannelPlot); }
static void PlotWithoutPixels(benchmark::State& state) { CompareToCopy(state, DrawBackEnd::none, DrawChannelPlot); }
static void WholeFrame(benchmark::State& state) { CompareToCopy(state, DrawBackEnd::software, DrawFrame); }

static void ViewSizes(benchmark::internal::Benchmark* bench) {
    bench->ArgsProduct({{1080, 2160}, {5, 20, 100}})->ArgNames({"height", "scale"});
    bench->UseManualTime()->Iterations(frameTurns)->Unit(benchmark::kMillisecond);
}
BENCHMARK(PlotOfThreeLogs)->Apply(ViewSizes);
BENCHMARK(PlotWithoutPixels)->Apply(ViewSizes);
BENCHMARK(WholeFrame)->Apply(ViewSizes);

// --- what is drawn over the traces -------------------------------------------------------------------------------------

// The steps of the frame that stand before the read-outs: grid, traces, lap lines, cursor line.
static void DrawTraces() {
    for (const FrameStep& step : frameSteps) {
        if (step.draw == DrawRuler) return;
        if (step.wanted && !step.wanted()) continue;
        if (step.blend) step.blend();
        step.draw();
        if (step.blend) SetBlend(blendNone, 255);
    }
}

// A frame of two logs with ruler, value panel, tags, lap lists, scroll bar and the panels of a resting view, against its
// traces alone.
static void FrameWithReadOuts(benchmark::State& state) {
    const int height = static_cast<int>(state.range(0));
    PrepareView(height * 16 / 9, height, static_cast<int>(state.range(1)));
    slotInUse[2] = 0;
    CourseLayout_on = 0;
    CompareToFloor(state, [] { activityCount = 60; }, DrawTraces, DrawFrame);
    CourseLayout_on = 1;
    slotInUse[2] = 1;
}
BENCHMARK(FrameWithReadOuts)->Apply(ViewSizes);

// The same frame of three logs with the course map and without it. Third argument: percent of the map's full size, at which
// it also has a backdrop.
static void FrameWithCourse(benchmark::State& state) {
    const int height = static_cast<int>(state.range(0));
    PrepareView(height * 16 / 9, height, static_cast<int>(state.range(1)));
    courseZoom = static_cast<float>(state.range(2)) / 100;
    const auto draw = [](int course) {
        CourseLayout_on = course;
        DrawFrame();
    };
    for (int frame = 0; frame < 100; frame++) draw(1);  // until the backdrop stands
    CompareToFloor(state, [] { activityCount = 60; }, [&] { draw(0); }, [&] { draw(1); });
}
BENCHMARK(FrameWithCourse)
    ->ArgsProduct({{1080, 2160}, {5, 20, 100}, {50, 100, 200}})
    ->ArgNames({"height", "scale", "map"})
    ->UseManualTime()
    ->Iterations(frameTurns)
    ->Unit(benchmark::kMillisecond);
