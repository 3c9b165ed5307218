#include "analysis/lap_marks.h"

#include <algorithm>
#include <cmath>

#include "analysis/lap_stats.h"
#include "draw/draw_layer.h"
#include "graph/channel_plot.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"

constexpr int marksPerFile = 6641;  // no lap begins its marks at this count or above

static int markOpacity;  // 0..255
static int markHold;     // the marks stay
static int markTotal[fileSlots];

// Kept: the order of the marks; VFSus and VRSus list their maxima first.
static constexpr int markedColumns[] = {
    statMinNe,   statMaxNe,   statMaxVFW,  statMaxVRW,  statMaxFSUS, statMaxRSUS,  statMinAUX1,  statMaxAUX1,  statMinAUX2,
    statMaxAUX2, statMinLAF1, statMaxLAF1, statMinLAF2, statMaxLAF2, statMaxVFSus, statMinVFSus, statMaxVRSus, statMinVRSus};

void HoldMarks() { markHold = 1; }
void ReleaseMarks() { markHold = 0; }

void ClearSlotMarks(int slot) {
    std::fill(std::begin(extremeMarkValid[slot]), std::end(extremeMarkValid[slot]), 0u);
    markTotal[slot] = 0;
}

static void AddMark(int slot, int channel, uint32_t sample) {
    const float factor = channel == chNe ? neFactor[slot] : 1.0f;
    const double value = static_cast<float>(StoredValue(slot, channel, sample)) * factor;
    const int entry = markTotal[slot]++;
    extremeMarkValid[slot][entry] = 1;
    extremeMarkSample[slot][entry] = sample;
    extremeMarkY[slot][entry] = TruncToInt(channelPosition[channel] - value / channelZoom[channel]);
}

void CollectMarks(int slot) {
    ClearSlotMarks(slot);
    const int marks = HeldMarksPerLap(slot);
    for (int row = 0; row <= lapCount[slot] - marks; row += marks) {
        if (!lapChecked[slot][row] || markTotal[slot] >= marksPerFile) continue;
        for (int column : markedColumns) {
            const StatColumn& c = statColumns[column];
            if (showChannel[slot][c.channel] && markTotal[slot] < extremeMarkTotal)
                AddMark(slot, c.channel, static_cast<uint32_t>((lapStats[slot].*c.at)[row]));
        }
    }
}

static void StepOpacity() {
    if (markOpacity > 160) markOpacity -= 2;
    if (!markHold && markOpacity > 0) markOpacity--;
    if (markOpacity < 100) markOpacity = markHold = 0;
}

static Color MarkColor(int slot) { return colortype == 1 ? lapLineColor[slot] : lapTextColor[slot]; }

static void DrawMarksOf(int slot, int radius) {
    const TimeMapping mapping = MapTime(slot);
    for (int entry = 0; entry < extremeMarkTotal && extremeMarkValid[slot][entry]; entry++) {
        const double offset = (extremeMarkSample[slot][entry] * 100.0 - mapping.cursor) * mapping.pixelsPerSample * 0.01;
        const int x = TruncToInt(std::trunc(offset) + mapping.baseLineX);
        const int y = TruncToInt(extremeMarkY[slot][entry] * viewZoom - scrollY);
        if (x > 0 && x < clientWidth) DrawCircle(x, y, radius, MarkColor(slot), 0, 1);
    }
}

void DrawExtremeMarks(MarkEvent event) {
    if (event == MarkEvent::tableChanged) {
        markOpacity = 255;
        return;
    }
    if (event == MarkEvent::toggle) {
        if (markOpacity == 0) {
            markOpacity = 255;
            markHold = 50;
        } else if (markOpacity < 160) {
            markHold = 0;
        }
        return;
    }
    if (markOpacity == 0) return;
    StepOpacity();
    if (markOpacity == 0) return;
    const int opacity = !markHold ? 16 + markOpacity : colortype == 1 ? 390 - markOpacity : 415 - markOpacity;
    SetBlend(blendAlpha, opacity);
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot]) DrawMarksOf(slot, markOpacity / 2 - 70);
    SetBlend(blendNone, 255);
}

void DefaultLapMarks() {
    markOpacity = markHold = 0;
    for (int slot = 0; slot < fileSlots; slot++) ClearSlotMarks(slot);
}
