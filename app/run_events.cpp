// run_events.cpp -- what a load, a reset, an unload or a layout file changes above the logs, each as one ordered list.
#include "run_data/run_events.h"

#include <cstring>

#include "analysis/final_simulation.h"
#include "analysis/lap_stats.h"
#include "app/toolbar.h"
#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/grid.h"
#include "graph/rest_panels.h"
#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "settings/layout_events.h"

static void SetTitleRect(int slot, int left, int top, int right, int bottom) {
    const int32_t rect[4] = {left, top, right, bottom};
    std::memcpy(titleRect[slot], rect, sizeof rect);
}

// Kept: the rows grow taller from file to file and so overlap; the last one that holds the mouse counts.
// Where the file name of a slot stands in the view; a click there dims the file.
static void PlaceTitle(int slot) {
    int top = rowHeight * slot + 16;
    int width = TextWidth(fileTitle[slot], static_cast<int>(std::strlen(fileTitle[slot])), bigFont);
    SetTitleRect(slot, 10, top, width + 10, (slot + 1) * rowHeight + top);
}

// A new log fades in from black, wears its own engine speed, and all its whole laps count.
static void ShowNewLog(int slot) {
    fileBright[slot] = 0;
    fileDim[slot] = 0;
    neFactor[slot] = 1.0f;
    if (slot == 0) ResetFinalSimulation();
    ResetLapChecks(slot);
    histForce = 1;
}

static void LeaveAfMap() {
    afMapOn = 0;
    CheckButton(buttonAfMap, false);
    afFade = 0;
    keepOn = 0;
}

void AfterRead(int) {
    BuildGrid();
    DrawSummaryImage();
}

void AfterLoad(int slot, LoadResult result) {
    if (result == LoadResult::loaded) {
        PlaceTitle(slot);
        ShowNewLog(slot);
    }
    if (result == LoadResult::refused) SetTitleRect(slot, 10, 16, 10, 16);
    LeaveAfMap();
    activityCount = 150;
    ApplyColorSet(0);
}

void AfterReset(int) {
    DrawSummaryImage();
    afFade = 128;
}

void AfterUnload() {
    ApplyColorSet(0);
    DrawSummaryImage();
    afFade = 128;
}

void AfterLayoutLoad() {
    afMapOn = 0;
    CheckButton(buttonAfMap, false);
    afProgress = 0;
}
