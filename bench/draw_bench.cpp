// What the drawing layer costs, each piece of work against filling or copying the client's pixels once.
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "app/frame_loop.h"
#include "bench/ratio.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "draw/surface.h"
#include "graph/channel_plot.h"
#include "graph/view_state.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int runs = 41;

// A window of the size in the benchmark's first two arguments.
void OpenClient(const benchmark::State& state) {
    LoadDefaults();
    clientWidth  = static_cast<int>(state.range(0));
    clientHeight = static_cast<int>(state.range(1));
    halfWidth    = clientWidth / 2;
    halfHeight   = clientHeight / 2;
    SetVideoMode(32, clientWidth, clientHeight, 60);
    InitDrawing();
    SetSmoothScaling(1);
    SetBlend(blendNone, 255);
    SetBrightness(255, 255, 255);
}

size_t ClientPixels() { return size_t(clientWidth) * clientHeight; }
void FillClient() { std::memset(BackBufferSurface().pixels, 0x20, ClientPixels() * sizeof(uint32_t)); }

// Copies as many pixels as the client has from the surface.
void CopyClient() {
    static std::vector<uint32_t> copy;
    copy.resize(ClientPixels());
    std::memcpy(copy.data(), BackBufferSurface().pixels, ClientPixels() * sizeof(uint32_t));
    benchmark::DoNotOptimize(copy.data());
}

void Nothing() {}

void ClientSizes(benchmark::internal::Benchmark* bench) {
    bench->Args({1920, 1080})->Args({3840, 2160})->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
}

// --- whole client ------------------------------------------------------------------------------------------------------

void BM_StripOverClient(benchmark::State& state) {
    OpenClient(state);
    const int strip = CreateDrawableImage(8, clientHeight, 0);
    SetDrawTarget(strip);
    for (int y = 0; y < clientHeight; ++y) DrawLineI(0, y, 7, y, MakeColor(0, y % 40 ? 0 : 200, y & 255));
    SetDrawTarget(backBuffer);
    CompareToFloor(state, Nothing, FillClient, [&] { DrawImageScaledXY(0, 0, 0, 0, strip, clientWidth, 1); });
    ShutDownDrawing();
}
BENCHMARK(BM_StripOverClient)->Apply(ClientSizes);

// A strip drawn at another magnification, filtered from row to row.
void BM_MagnifiedStripOverClient(benchmark::State& state) {
    OpenClient(state);
    const int strip = CreateDrawableImage(8, clientHeight, 0);
    SetDrawTarget(strip);
    for (int y = 0; y < clientHeight; ++y) DrawLineI(0, y, 7, y, MakeColor(0, y % 40 ? 0 : 200, y & 255));
    SetDrawTarget(backBuffer);
    CompareToFloor(state, Nothing, FillClient, [&] { DrawImageScaledXY(0, -100, 0, 0, strip, clientWidth, 1.7); });
    ShutDownDrawing();
}
BENCHMARK(BM_MagnifiedStripOverClient)->Apply(ClientSizes);

void FillIn(benchmark::State& state, int blend, int parameter) {
    OpenClient(state);
    SetBlend(blend, parameter);
    CompareToFloor(state, Nothing, CopyClient, [] { FillRect(0, 0, clientWidth, clientHeight, MakeColor(10, 20, 30)); });
    SetBlend(blendNone, 255);
    ShutDownDrawing();
}
void BM_AlphaFill(benchmark::State& state) { FillIn(state, blendAlpha, 100); }
void BM_AdditiveFill(benchmark::State& state) { FillIn(state, blendAdd, 100); }
void BM_OpaqueFill(benchmark::State& state) { FillIn(state, blendNone, 255); }
BENCHMARK(BM_AlphaFill)->Apply(ClientSizes);
BENCHMARK(BM_AdditiveFill)->Apply(ClientSizes);
BENCHMARK(BM_OpaqueFill)->Apply(ClientSizes);

// --- plot --------------------------------------------------------------------------------------------------------------

// Three rides of three quarters of an hour, seen in the middle with all channels on.
void OpenRides() {
    for (int slot = 0; slot < fileSlots; ++slot) {
        static std::vector<uint8_t> logs[fileSlots];
        std::vector<uint8_t>& log = logs[slot];
        if (log.empty()) {
            SampleLogOptions options;
            options.seed    = static_cast<uint64_t>(slot) + 1;
            options.laps    = 0;
            options.seconds = 45 * 60;
            log = MakeSampleLog(options);
            log.resize(log.size() + 1024);
        }
        ReadNativeLog(slot, log.data(), static_cast<int>(log.size()) - 1024);
        cursorPos[slot]  = sampleCount[slot] / 2 * 100;
        fileBright[slot] = 255;
        for (int channel = 0; channel < channelTotal; ++channel) showChannel[slot][channel] = 1;
    }
    ExpertMode = 2;
    viewZoom   = 1;
}

void BM_Plot(benchmark::State& state) {
    OpenClient(state);
    OpenRides();
    timeScale = static_cast<double>(state.range(2));
    SetBlend(state.range(3) ? blendAdd : blendNone, 255);
    CompareToFloor(state, Nothing, CopyClient, DrawChannelPlot);
    SetBlend(blendNone, 255);
    ShutDownDrawing();
}

// The callers alone: samples scanned, lines computed, nothing drawn.
void BM_PlotWithoutPixels(benchmark::State& state) {
    OpenClient(state);
    OpenRides();
    timeScale = static_cast<double>(state.range(2));
    SelectBackEnd(DrawBackEnd::none);
    CompareToFloor(state, Nothing, CopyClient, DrawChannelPlot);
    SelectBackEnd(DrawBackEnd::software);
    ShutDownDrawing();
}

// The plot's lines again, as they were recorded: the layer without its callers.
struct RecordedLine {
    float x1, y1, x2, y2;
    Color color;
};
std::vector<RecordedLine> RecordPlot() {
    std::string operations;
    RecordOperations(&operations);
    SelectBackEnd(DrawBackEnd::none);
    DrawChannelPlot();
    SelectBackEnd(DrawBackEnd::software);
    RecordOperations(nullptr);
    std::vector<RecordedLine> lines;
    for (size_t at = 0; at < operations.size(); at = operations.find('\n', at) + 1) {
        RecordedLine line;
        const char* text = operations.c_str() + at;
        if (std::sscanf(text, "DrawLineF %f %f %f %f #%x", &line.x1, &line.y1, &line.x2, &line.y2, &line.color) == 5)
            lines.push_back(line);
    }
    return lines;
}

void BM_PlotLines(benchmark::State& state) {
    OpenClient(state);
    OpenRides();
    timeScale = static_cast<double>(state.range(2));
    SetBlend(state.range(3) ? blendAdd : blendNone, 255);
    const std::vector<RecordedLine> lines = RecordPlot();
    CompareToFloor(state, Nothing, CopyClient, [&] {
        for (const RecordedLine& line : lines) DrawLineF(line.x1, line.y1, line.x2, line.y2, line.color, 1);
    });
    state.counters["ns_a_line"] = state.counters["work_ms"] * 1e6 / static_cast<double>(lines.size());
    SetBlend(blendNone, 255);
    ShutDownDrawing();
}

void PlotSizes(benchmark::internal::Benchmark* bench) {
    bench->ArgNames({"width", "height", "timeScale", "additive"});
    for (const int scale : {5, 20, 100})
        for (const int additive : {0, 1}) bench->Args({1920, 1080, scale, additive})->Args({3840, 2160, scale, additive});
    bench->UseManualTime()->Iterations(runs)->Unit(benchmark::kMillisecond);
}
BENCHMARK(BM_Plot)->Apply(PlotSizes);
BENCHMARK(BM_PlotLines)->Apply(PlotSizes);
BENCHMARK(BM_PlotWithoutPixels)->Apply(PlotSizes);

// --- smaller things ------------------------------------------------------------------------------------------------------

// 240,000 dots of the A/F map, against one copy of the client.
void BM_Dots(benchmark::State& state) {
    OpenClient(state);
    SetBlend(blendAlpha, 30);
    const Color color = MakeColor(0, 200, 0);
    CompareToFloor(state, Nothing, CopyClient, [color] {
        uint32_t place = 1;
        for (int i = 0; i < 240000; ++i) {
            place = place * 1664525u + 1013904223u;
            const int x = 500 + static_cast<int>(place >> 24), y = 300 + static_cast<int>(place >> 16 & 127);
            FillRect(x - 1, y - 1, x + 2, y + 2, color);
        }
    });
    SetBlend(blendNone, 255);
    ShutDownDrawing();
}
BENCHMARK(BM_Dots)->Apply(ClientSizes);

// A screen of read-outs: 60 lines of 40 characters.
void BM_Text(benchmark::State& state) {
    OpenClient(state);
    const int font = CreateFontHandle("MS Gothic", 15, 1, 0);
    CompareToFloor(state, Nothing, CopyClient, [font] {
        for (int line = 0; line < 60; ++line)
            DrawTextF(300, line * 17, MakeColor(255, 255, 255), font, "%040d", line * 1234567);
    });
    ShutDownDrawing();
}
BENCHMARK(BM_Text)->Apply(ClientSizes);

// The label strip, added and subtracted, and ten turned needles.
void BM_Images(benchmark::State& state) {
    OpenClient(state);
    const int labels = CreateDrawableImage(32, clientHeight, 0), needle = CreateDrawableImage(256, 256, 0);
    SetDrawTarget(needle);
    FillRect(120, 8, 128, 140, MakeColor(255, 60, 0));
    SetDrawTarget(backBuffer);
    CompareToFloor(state, Nothing, CopyClient, [=] {
        SetBlend(blendAdd, 255);
        DrawImageRotated(220, 0, 0, 0, labels, 0, 1, 0);
        SetBlend(blendAdd, 32);
        for (int i = 0; i < 10; ++i) DrawImageRotated(400, 400, 124, 128, needle, 1, 1, 0.1 * i + 0.05);
        SetBlend(blendNone, 255);
    });
    ShutDownDrawing();
}
BENCHMARK(BM_Images)->Apply(ClientSizes);

}  // namespace
