// hit_tests.cpp -- what lies under the mouse: floating panels, file names, lap list, value panel.
#include <algorithm>
#include <cstdlib>

#include "app/input_parts.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

constexpr int valuePanelTop = 80;

int titleHover;

void HoverCourse() {
    if (courseDrag || mouseButtons) return;
    const int half = TruncToInt(256 * courseZoom);
    const bool over = std::abs(courseCenterX - mouseX) < half && std::abs(courseCenterY - mouseY) < half;
    courseHover = over && mousePass.mainWindowInFront;
}

// A floating panel reaches this far from its centre, at zoom 1.
struct PanelReach { int across, up, down; };

static bool OverPanel(int x, int y, double zoom, const PanelReach& reach) {
    const int right = mouseX - x, below = mouseY - y;
    return std::abs(right) <= reach.across * zoom && below >= -reach.up * zoom && below <= reach.down * zoom;
}

static void HitWidgets() {
    if (!AnimeMode) {
        widgetHover = 0;
        return;
    }
    if (lapHover || mouseButtons) return;  // a panel that is held stays under the mouse
    widgetHover = 0;
    if (BodyDisplay && OverPanel(bodyX, bodyY, bodyZoom, {256, 256, 100})) widgetHover |= 1;
    if (OverPanel(meterX, meterY, meterZoom, {128, 128, 128})) widgetHover |= 2;
    if (SusgramDisplay && ExpertMode && OverPanel(histX, histY, histZoom, {128, 64, 64})) widgetHover |= 4;
}

static void HitTitles() {
    titleHover = -1;
    for (int slot = 0; slot < fileSlots; slot++) {
        const int32_t* rect = titleRect[slot];
        if (mouseX >= rect[0] && mouseX < rect[2] && mouseY >= rect[1] && mouseY < rect[3]) titleHover = slot;
    }
}

static bool Within(int value, int low, int high) { return value >= low && value < high; }

static void HitLapList() {
    lapHover = 0;
    for (int slot = 0; slot < fileSlots; slot++) {
        const int left = slot == 0 ? 6 : slot * lapColumnWidth + 5;
        const int right = slot == 0 ? 84 : (slot + 1) * lapColumnWidth - 20;
        const int bottom = lapListTop + (lapCount[slot] - lapViewOffset[slot]) * rowHeight;
        if (Within(mouseX, left, right) && mouseY > lapListTop && mouseY < bottom) lapHover = slot + 1;
    }
}

static void HitValuePanel() {
    panelHover = 0;
    const int rows = ExpertMode >= 2 ? 14 : 11;
    if (!Within(mouseY, valuePanelTop + 1, valuePanelTop + rows * rowHeight)) return;
    for (int slot = 0; slot < fileSlots; slot++) {
        const int left = slot == 0 ? 6 : slot * lapColumnWidth + 5;
        const int right = slot == 0 ? 100 : (slot + 1) * lapColumnWidth - 5;
        if (slotInUse[slot] && Within(mouseX, left, right)) panelHover = slot + 1;
    }
}

void RunHitTests() {
    HitWidgets();
    HitTitles();
    HitLapList();
    HitValuePanel();
    const bool panelsHidden = CursolValueMode & 2;
    if (widgetHover || panelsHidden) lapHover = panelHover = 0;
}

int PanelRow() { return (mouseY - valuePanelTop) / std::max(rowHeight, 1); }

int LapRow(int slot) {
    const int row = (mouseY - lapListTop) / std::max(rowHeight, 1) + lapViewOffset[slot];
    return std::clamp(row, 0, lapTableSize - 2);
}

int HoveredLapFile() {
    const int slot = lapHover - 1;
    return slot >= 0 && slot < fileSlots && slotInUse[slot] ? slot : -1;
}

void DefaultHitTests() { titleHover = -1; }
