// lap_lines.cpp -- lap lines with their ticks on the scroll bar, and the cursor line.
#include <algorithm>

#include "draw/draw_layer.h"
#include "graph/channel_plot.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

constexpr int lapLineTop = 14;

int LineBottom() { return scrollBarOn ? clientHeight - (scrollBarGrow / 3 + 13) : clientHeight; }

// All ticks stand on File 1's scale, shifted by the files' offset.
static float TickX(int slot, int start) {
    const int shift = slot == 0 ? 0 : cursorPos[0] / 100 - cursorPos[slot] / 100;
    return static_cast<float>(shift + start) / static_cast<float>(std::max(sampleCount[0], 1)) * static_cast<float>(clientWidth);
}

static void DrawTick(int slot, int entry) {
    const float x = TickX(slot, static_cast<int>(lapStart[slot][entry]));
    const bool atEnd = entry == 0 || entry == lapCount[slot];
    DrawLineF(x, static_cast<float>(clientHeight - scrollBarGrow / 3 - 13), x, static_cast<float>(clientHeight), lapTextColor[slot],
              slot != 0 && atEnd ? 4 : 1);
}

static void DrawLapLine(const TimeMapping& mapping, int slot, int entry) {
    const float x = SampleToX(mapping, static_cast<int>(lapStart[slot][entry]));
    if (x > 0) DrawLineF(x, lapLineTop, x, static_cast<float>(LineBottom()), lapLineColor[slot], 1);
}

void DrawLapLines() {
    SetBlend(colortype == 1 ? blendNone : blendAdd, colortype == 1 ? 200 : 220);
    for (int slot = 0; slot < fileSlots; slot++) {
        if (!slotInUse[slot]) continue;
        const TimeMapping mapping = MapTime(slot);
        for (int entry = 0; entry <= std::min(lapCount[slot], lapTableSize - 1); entry++) {
            if (scrollBarOn) DrawTick(slot, entry);
            DrawLapLine(mapping, slot, entry);
        }
    }
    SetBlend(blendNone, 255);
}

void DrawCursorLine() {
    SetBlend(blendNone, 255);
    const float x = static_cast<float>(BaseLineX());
    DrawLineF(x, static_cast<float>(fontSize + 3), x, static_cast<float>(LineBottom()), cursorColor, 1);
}
