#include "graph/lap_list.h"

#include <algorithm>
#include <cstdint>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// Shift-JIS triangles: more laps above, more laps below.
static constexpr char upTriangle[] = "   \x81\xA3  ";
static constexpr char downTriangle[] = "   \x81\xA5   ";
static constexpr char noTime[] = "- - - -";
static constexpr char timeFormat[] = "%02d'%05.2f";

constexpr int listMargin  = 31;  // rows at this distance from the bottom, or nearer, are not drawn
constexpr int arrowMargin = 48;  // rows nearer than this show that more follow

static bool ListHidden() { return CursolValueMode & 2; }
static bool TimesHidden() { return CursolValueMode & 4; }

static int ListLeft(int slot) { return lapColumnWidth * slot + 5; }
static int ListRight(int slot) { return lapColumnWidth * (slot + 1) - 20; }

static void DrawTime(int x, int y, Color color, int font, int centis) {
    DrawTextF(x, y, color, font, timeFormat, centis / 6000, centis % 6000 * 0.01);
}

// --- backdrop ------------------------------------------------------------------------------------------------------------

static int ListBottom(int slot) {
    const int bottom = (lapCount[slot] - lapViewOffset[slot]) * rowHeight + lapListTop + 2;
    return bottom > clientHeight - arrowMargin ? clientHeight - rowHeight : bottom;
}

static void FillLists(Color color) {
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot]) FillRect(ListLeft(slot), lapListTop, ListRight(slot), ListBottom(slot), color);
}

static void DrawBackdrop() {
    if (ListHidden()) return;
    SetBlend(blendSubtract, 210);
    FillLists(whiteColor);
    if (!lapHover) return;
    SetBlend(blendAdd, 130 - rulerFade * 4);
    FillLists(lapHoverColor);
}

// --- times and distances at the top ----------------------------------------------------------------------------------------

static int Metres(int slot, uint64_t counts) { return TruncToInt(static_cast<double>(counts) / (timeFactor[slot] * 7200)); }

// Length of the laps' group that the current lap belongs to. Kept: in the last lap of the table the group begins one early.
static uint64_t GroupLength(int slot) {
    const int marks = HeldMarksPerLap(slot);
    const int group = (HeldLap(slot) - 1) / marks * marks;
    const int first = group + 1 > lapCount[slot] ? group : group + 1;
    uint64_t length = 0;
    for (int entry = first; entry < first + marks; entry++) length += lapLength[slot][entry];
    return length;
}

// Kept: the lap's start goes in without timeFactor.
static void DrawTimes(int slot) {
    const int cursorCentis = TruncToInt(cursorPos[slot] / (timeFactor[slot] * 200.0));
    const int lapCentis = TruncToInt(cursorPos[slot] / (timeFactor[slot] * 200.0) - lapStart[slot][HeldLap(slot) - 1] / 2);
    const int x = slot * 120 - 80 + halfWidth, distanceX = slot == 0 ? halfWidth - 130 : slot * 120 - 20 + halfWidth;
    const int sample = std::clamp(cursorPos[slot] / 100, 0, sampleCount[slot]);
    const Color color = fileTextColor[slot];
    DrawTime(x, 20, color, smallFont, lapCentis);
    DrawTime(x, rowHeight + 20, color, smallFont, cursorCentis);
    DrawTextF(distanceX, 20, color, smallFont, "%dm", Metres(slot, GroupLength(slot)));
    DrawTextF(distanceX, rowHeight + 20, color, smallFont, "%dm", Metres(slot, lapDistance[slot][sample]));
}

// --- list --------------------------------------------------------------------------------------------------------------

static int LapCentis(int slot, int lap) {
    const int64_t samples = int64_t{lapStart[slot][lap + HeldMarksPerLap(slot)]} - lapStart[slot][lap];
    return TruncToInt(static_cast<double>(samples) / timeFactor[slot] * 0.5);
}

static void DrawRow(int slot, int lap, int y) {
    const int marks = HeldMarksPerLap(slot), row = lap - lapViewOffset[slot], x = lapColumnWidth * slot + 14;
    const bool more = lap + marks <= lapCount[slot] && y > clientHeight - arrowMargin;
    const bool timed = lap % marks == 0 && (row > 0 || lapViewOffset[slot] < 1);
    if (timed && !more) return DrawTime(x, y + 2, lapTextColor[slot], bigFont, LapCentis(slot, lap));
    const char* text = !timed && row == 0 && lapViewOffset[slot] > 0 ? upTriangle : more ? downTriangle : noTime;
    DrawTextAt(x, y + 2, text, lapTextColor[slot], bigFont);
}

// Only the rows that fit are walked. A cursor before all of them stands in the lap above, towards which the list scrolls.
static void WalkList(int slot) {
    currentLap[slot] = std::max(lapViewOffset[slot], 1);
    for (int lap = lapViewOffset[slot]; lap < lapCount[slot]; lap++) {
        const int y = lapListTop + (lap - lapViewOffset[slot]) * rowHeight;
        if (y >= clientHeight - listMargin) break;
        if (!ListHidden()) DrawRow(slot, lap, y);
        if (int64_t{lapStart[slot][lap]} > cursorPos[slot] / 100) continue;
        currentLap[slot] = lap + 1;
        LapTimeCentis[slot] = LapCentis(slot, lap);
    }
}

// One row per frame towards the current lap. Kept: the 16 is not the row height.
static void ScrollList(int slot) {
    int& offset = lapViewOffset[slot];
    if (currentLap[slot] - offset < 3 && offset > 0) offset--;
    if ((currentLap[slot] - offset) * 16 - 15 + lapListTop > clientHeight - arrowMargin) offset = std::min(offset + 1, lapCount[slot] - 1);
}

static void DrawCurrentBar(int slot) {
    const int row = std::max(currentLap[slot] - lapViewOffset[slot], 0) - 1;
    const int top = row * rowHeight + lapListTop;
    SetBlend(blendAdd, 127);
    FillRect(ListLeft(slot), top + 1, ListRight(slot), top + rowHeight + 2, lapBarColor[slot]);
}

static void DrawFileList(int slot) {
    if (MarksPerLap[slot] == 0) MarksPerLap[slot] = 1;
    SetBlend(blendNone, 255);
    SetBrightness(fileBright[slot], fileBright[slot], fileBright[slot]);
    DrawTextAt(10, rowHeight * slot + 16, fileTitle[slot], fileTextColor[slot], bigFont);
    if (!TimesHidden()) DrawTimes(slot);
    WalkList(slot);
    ScrollList(slot);
    SetBrightness(255, 255, 255);
}

void DrawLapList() {
    DrawBackdrop();
    for (int slot = 0; slot < fileSlots; slot++) {
        if (!slotInUse[slot]) continue;
        DrawFileList(slot);
        if (!ListHidden()) DrawCurrentBar(slot);
    }
    SetBlend(blendNone, 255);
}
