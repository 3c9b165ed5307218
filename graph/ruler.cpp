#include "graph/ruler.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "draw/draw_layer.h"
#include "graph/channel_plot.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

constexpr int arrowRoom = 21;  // between mouse and cursor line for the arrow heads
constexpr int tickTop   = 14;

static int RulerTop() { return fontSize + 3; }

static void DrawVertical(int x, Color color, int top) {
    DrawLineF(static_cast<float>(x), static_cast<float>(top), static_cast<float>(x), static_cast<float>(LineBottom()), color, 1);
}

static void DrawRange() {
    SetBlend(blendAlpha, 100);
    FillRect(std::min(BaseLineX(), mouseX), RulerTop(), std::max(BaseLineX(), mouseX), LineBottom(), cursorColor);
}

// A short line at either end, pointing outward.
static void DrawArrows() {
    const int distance = mouseX - BaseLineX();
    if (std::abs(distance) < arrowRoom) return;
    const int inward = distance > 0 ? -8 : 8;
    DrawLineI(mouseX + inward, fontSize, mouseX, RulerTop(), cursorColor);
    DrawLineI(BaseLineX() - inward, fontSize, BaseLineX(), RulerTop(), cursorColor);
}

// Kept: the interval leaves timeFactor out.
static void DrawInterval(int middle) {
    const int ms = std::abs(std::max(TruncToInt((BaseLineX() - mouseX) * 5 / viewZoom * timeScale), -INT32_MAX));
    if (ms >= 60000)
        DrawTextF(middle - 16, 0, cursorColor, smallFont, "%dm%02ds", ms / 60000, ms / 1000 % 60);
    else if (Debug)
        DrawTextF(middle - 20, 0, cursorColor, smallFont, "%.3fsec", ms * 0.001);
    else
        DrawTextF(middle - 20, 0, cursorColor, smallFont, "%.2fsec", ms * 0.001);
}

static int Metres(int slot, const SampleArray<uint32_t>& sum, int from, int to) {
    return TruncToInt((int64_t{sum[to]} - sum[from]) / (timeFactor[slot] * 7200));
}

static void DrawDistance(int slot, int x) {
    const int from = std::clamp(cursorPos[slot] / 100, 0, sampleCount[slot]);
    const double reached = (mouseX - BaseLineX()) / viewZoom * timeFactor[slot] * timeScale + from;
    const int to = std::clamp(TruncToInt(reached), 0, sampleCount[slot]);
    DrawTextF(x, 0, fileTextColor[slot], smallFont, "(%5dm:F%5dm:R)", Metres(slot, distFront[slot], from, to),
              Metres(slot, distRear[slot], from, to));
}

// Pixels of 2, 20 or 120 seconds of a 200 Hz log, as the time scale leaves room for; held where sums still fit.
static int TickSpan() {
    constexpr int farAway = 1 << 28;
    const int samples = timeScale > 50.0 ? 24000 : timeScale > 15.0 ? 4000 : 400;
    return std::clamp(TruncToInt(samples / timeScale * viewZoom), -farAway, farAway);
}

static void DrawTicks() {
    const int span = TickSpan(), half = span / 2, quarter = half / 2;
    if (colortype == 1)
        SetBlend(blendAlpha, rulerFade);
    else
        SetBlend(blendAdd, rulerFade * 4);
    const struct { int distance; Color color; } ticks[] = {
        {span, gridMajorColor}, {half, gridMajorColor}, {half + quarter, gridMinorColor}, {quarter, gridMinorColor}};
    for (const auto& tick : ticks) {
        DrawVertical(mouseX - tick.distance, tick.color, tickTop);
        DrawVertical(mouseX + tick.distance, tick.color, tickTop);
    }
}

void DrawRuler() {
    if (shiftDown || csvRangePending) DrawRange();
    if (!realTimePlayOn) {
        constexpr int distanceX[fileSlots] = {-136, 40, 160};  // from the middle
        const int middle = (BaseLineX() + mouseX) / 2;
        SetBlend(colortype == 1 ? blendNone : blendAdd, 255);
        DrawLineF(static_cast<float>(mouseX), static_cast<float>(RulerTop()), static_cast<float>(BaseLineX()),
                  static_cast<float>(RulerTop()), cursorColor, 1);
        DrawArrows();
        DrawVertical(mouseX, cursorColor, RulerTop());
        DrawInterval(middle);
        for (int slot = 0; slot < fileSlots; slot++)
            if (slotInUse[slot]) DrawDistance(slot, middle + distanceX[slot]);
        DrawTicks();
    }
    SetBlend(blendNone, 255);
}
