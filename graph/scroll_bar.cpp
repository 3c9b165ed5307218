#include "graph/scroll_bar.h"

#include <algorithm>
#include <cstdint>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

constexpr int hotHeight = 24;  // the bar grows while the mouse is this near the bottom
constexpr int growFull  = 32;

static void GrowUnderTheMouse() {
    const bool near = mouseY > clientHeight - hotHeight;
    scrollBarGrow = near ? std::min(scrollBarGrow + 2, growFull) : std::max(scrollBarGrow - 1, 0);
}

// The thumb shows what lies left of the cursor line, mirrored to the right.
static void FindThumb(int* centre, int* half) {
    const int samples = std::max(sampleCount[0], 1);
    *centre = TruncToInt(static_cast<double>(cursorPos[0]) / samples * clientWidth * 0.01);
    *half = TruncToInt(timeScale * static_cast<double>(int64_t{BaseLineX()} * clientWidth / samples));
    *half = std::clamp(*half, -0x10000, 0x10000);
}

void DrawScrollBar() {
    GrowUnderTheMouse();
    const int rise = scrollBarGrow / 3;
    int centre, half;
    FindThumb(&centre, &half);
    SetBlend(blendMultiply, scrollBarGrow * 5 + 48);
    FillRect(0, clientHeight - rise - 13, clientWidth, clientHeight, scrollTrackColor);
    SetBlend(blendAlpha, scrollBarGrow * 2 + 92);
    FillRect(centre - half, clientHeight - rise - 11, centre + half, clientHeight - 3, scrollThumbColor);
    SetBlend(colortype == 1 ? blendNone : blendAlpha, colortype == 1 ? 255 : scrollBarGrow * 2 + 152);
    DrawBoxOutline(centre - half - 1, clientHeight - rise - 12, centre + half + 1, clientHeight - 2, scrollEdgeColor);
    SetBlend(blendNone, 255);
}
