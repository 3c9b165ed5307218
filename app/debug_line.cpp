#include "app/debug_line.h"

#include <algorithm>
#include <cstdint>

#include "app/toolbar.h"
#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"

static int elapsedPeak;  // ms

static int WindowNumber(const void* handle) { return static_cast<int>(reinterpret_cast<intptr_t>(handle)); }

static int ForegroundNumber() {
    switch (ForegroundWindow()) {
        case Foreground::mainWindow: return WindowNumber(MainWindowHandle());
        case Foreground::toolbar: return WindowNumber(ToolbarWindowHandle());
        case Foreground::other: break;
    }
    return 0;
}

// Samples of the first lap that File 1's lap list shows.
static int FirstShownLap() {
    const int first = std::clamp(lapViewOffset[0], 0, lapCount[0]);
    return static_cast<int>(lapStart[0][first + HeldMarksPerLap(0)] - lapStart[0][first]);
}

void DrawDebugLine(int elapsedMs, int lastFrameMs) {
    elapsedPeak = std::max(elapsedPeak, elapsedMs);
    SetBlend(blendNone, 255);
    DrawTextF(50, 0, debugColor[0], smallFont, "%d", lastFrameMs);
    DrawTextF(100, 0, debugColor[0], smallFont, "%d %d", activityCount, animationPending);
    DrawTextF(250, 0, debugColor[1], smallFont, "%d (%d)", elapsedMs, elapsedPeak);
    DrawTextF(200, 16, debugColor[2], smallFont, "%d/%d", currentLap[0], lapCount[0]);
    DrawTextF(200, 32, debugColor[2], smallFont, "%d", nativeSizeEstimate);
    DrawTextF(200, 48, debugColor[2], smallFont, "%d %d %d", ForegroundNumber(), WindowNumber(MainWindowHandle()),
              WindowNumber(ToolbarWindowHandle()));
    DrawTextF(200, 64, debugColor[2], smallFont, "%f , %d", timeScale, FirstShownLap());
    if (elapsedPeak > 100) elapsedPeak = 0;
}

void DefaultDebugLine() { elapsedPeak = 0; }
