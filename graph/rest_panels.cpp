#include "graph/rest_panels.h"

#include <algorithm>
#include <cstring>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

int32_t summaryFade, memoFade;
MemoCursor memoCursor[2];

constexpr int hidden = 20;

static void StepFade(int32_t& fade, bool away) { fade = away ? std::min(fade + 1, hidden) : std::max(fade - 1, 0); }

// --- summary --------------------------------------------------------------------------------------------------------------

static double RunKilometres(int slot) {
    double counts = 0;
    for (int lap = 0; lap <= lapCount[slot]; lap++) counts += lapLength[slot][lap];
    return counts / (timeFactor[slot] * 7200) * 0.001;
}

static void DrawSummaryColumn(int slot, int x) {
    const Color color = lapTextColor[slot];
    const int* most = channelMax[slot];
    const auto row = [](int n) { return fontSize * n; };
    DrawTextF(x, row(1), color, smallFont, "%5d rpm", most[chNe]);
    DrawTextF(x, row(2), color, smallFont, "%3.2f mm", most[chFSUS] * 0.01);
    DrawTextF(x, row(3), color, smallFont, "%3.2f mm", most[chRSUS] * 0.01);
    DrawTextF(x, row(4), color, smallFont, "%3.1f km/h", most[chVFW] * 0.1);
    DrawTextF(x, row(5), color, smallFont, "%3.1f km/h", most[chVRW] * 0.1);
    DrawTextF(x, row(7), color, smallFont, "%3.2f km", RunKilometres(slot));
    DrawTextF(x, row(8), color, smallFont, "%3d Lap", lapCount[slot] / HeldMarksPerLap(slot));
    // Kept: the zoom of the moment divides, and timeFactor does not.
    const int seconds = TruncToInt(sampleCount[slot] * 5.0 / viewZoom) / 1000;
    DrawTextF(x, row(9), color, smallFont, "%3d'%02d\"", seconds / 60, seconds % 60);
}

void DrawSummaryImage() {
    if (summaryPanel == noHandle) return;
    static constexpr struct { int row; const char* label; } labels[] = {
        {1, "Max Ne"},   {2, "Max FSUS"},     {3, "Max RSUS"},  {4, "Max VFW"},
        {5, "Max VRW"},  {7, "Run Distance"}, {8, "Total Lap"}, {9, "Logging Time"}};
    SetDrawTarget(summaryPanel);
    SetBlend(blendNone, 255);
    FillRect(0, 0, 256, 128, panelBackColor);
    for (const auto& label : labels) DrawTextAt(16, fontSize * label.row, label.label, lapTextColor[0], smallFont);
    DrawSummaryColumn(0, 108);
    if (slotInUse[1]) DrawSummaryColumn(1, 180);
    SetDrawTarget(backBuffer);
}

void DrawSummaryPanel() {
    StepFade(summaryFade, activityCount >= 75);
    if (summaryFade >= hidden) return;
    SetBlend(blendAlpha, (hidden - summaryFade) * 11);
    DrawImageRotated(static_cast<float>(clientWidth + summaryFade - 144), static_cast<float>(clientHeight - 80), 128, 64, summaryPanel, 0,
                     1 - summaryFade * 0.005, 0.0);
    SetBlend(blendNone, 255);
}

// --- memo -----------------------------------------------------------------------------------------------------------------

constexpr int memoCells   = 29;  // of a row
constexpr int memoLastRow = 9;
constexpr int memoHalf    = 128;  // File 2's half of the panel
constexpr int memoLeft    = 8;

static int MemoTop(int slot) { return slot * memoHalf; }

static void DrawMemoHead(int slot) {
    const Color color = lapTextColor[slot];
    const int y = MemoTop(slot) + (slot == 0 ? 4 : 0);
    // Kept: File 2's head is written without the blank and four pixels higher.
    DrawTextF(memoLeft, y, color, smallFont, slot == 0 ? "Tire Size F:%4dmm R:%4dmm" : "TireSize F:%4dmm R:%4dmm", frontTyreMm[slot],
              rearTyreMm[slot]);
    if (frontSprocket[slot] > 1)
        DrawTextF(memoLeft, y + fontSize, color, smallFont, "Final %2d-%2d(%5.3f)", frontSprocket[slot], rearSprocket[slot],
                  static_cast<double>(rearSprocket[slot]) / frontSprocket[slot]);
}

static void StartMemo() {
    FillRect(0, 0, 192, 256, panelBackColor);
    for (int slot = 0; slot < 2; slot++) {
        if (slot == 0 || slotInUse[slot]) DrawMemoHead(slot);
        memoCursor[slot] = {0, 2, 0, 0};
    }
}

static void NextRow(MemoCursor& cursor) {
    cursor.row++;
    cursor.column = cursor.x = 0;
}

// One character a frame. A CR, with an LF behind it if there is one, begins a new row.
static void TypeMemo(int slot) {
    MemoCursor& cursor = memoCursor[slot];
    const char* memo = memoText[slot];
    if (cursor.row > memoLastRow || cursor.index >= memoLimit || memo[cursor.index] == 0) return;
    activityCount = std::max(activityCount, 2);
    if (memo[cursor.index] == '\r') {
        cursor.index += memo[cursor.index + 1] == '\n' ? 2 : 1;
        return NextRow(cursor);
    }
    if (cursor.column >= memoCells) {
        NextRow(cursor);
        if (cursor.row > memoLastRow) return;
    }
    const bool single = static_cast<unsigned char>(memo[cursor.index]) < 0x80 || memo[cursor.index + 1] == 0;
    char character[3] = {memo[cursor.index], single ? '\0' : memo[cursor.index + 1], 0};
    DrawTextAt(memoLeft + cursor.x, MemoTop(slot) + (fontSize + 1) * cursor.row + 4, character, lapTextColor[slot], smallFont);
    cursor.x += TextWidth(character, static_cast<int>(std::strlen(character)), smallFont);
    cursor.index += single ? 1 : 2;
    cursor.column += single ? 1 : 2;
}

static void TypeMemos() {
    if (memoPanel == noHandle) return;
    SetDrawTarget(memoPanel);
    SetBlend(blendNone, 255);
    if (memoFade >= hidden - 1) StartMemo();
    TypeMemo(0);
    if (slotInUse[1]) TypeMemo(1);
    SetDrawTarget(backBuffer);
}

void DrawMemoPanel() {
    StepFade(memoFade, activityCount >= 70 || !Memo_view);
    if (memoFade >= hidden) return;
    TypeMemos();
    SetBlend(blendAlpha, (hidden - memoFade) * 11);
    DrawImageRotated(static_cast<float>((34 - memoFade) * 4), static_cast<float>(clientHeight + memoFade * 3 - 152), 128, 128, memoPanel, 0,
                     1 - memoFade * 0.02, 0.0);
    SetBlend(blendNone, 255);
}

void DefaultRestPanels() {
    summaryFade = memoFade = 0;
    for (MemoCursor& cursor : memoCursor) cursor = {0, 2, 0, 0};
}
