// mouse_left.cpp -- the left button: value rows, lap jumps, scroll bar, panels, file names, and running the cursors.
#include <algorithm>

#include "app/input_parts.h"
#include "app/mouse_press.h"
#include "graph/grid.h"
#include "graph/view_state.h"
#include "platform/dialogs.h"
#include "resources/resource.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_map.h"

constexpr int spentClick = 1, cursorDrag = 2, scrollBarDrag = 3;  // dragKind

static PressRepeat afRepeat;

// Kept: a row past the table toggles row 0 with Shift, and nothing without.
static void ClickValueRow() {
    dragKind = spentClick;
    const int row = PanelRow();
    const bool inTable = row >= 0 && row < channelTotal;
    if (shiftDown)
        GraphGrid_disp[inTable ? row : 0] ^= 1;
    else if (inTable)
        showChannel[panelHover - 1][row] ^= 1;
    BuildGrid();
}

static void JumpToLap() {
    const int slot = HoveredLapFile();
    JumpTo(slot, lapStart[slot][LapRow(slot)]);
}

static bool OnScrollBar() {
    return dragKind == scrollBarDrag || (dragKind == 0 && scrollBarOn && mouseY > clientHeight - 24);
}

static void HoldScrollBar() {
    dragKind = scrollBarDrag;
    DragScrollBar();
}

// The topmost panel under the mouse follows it.
static void MoveWidget() {
    int& x = widgetHover & 4 ? histX : widgetHover & 2 ? meterX : bodyX;
    int& y = widgetHover & 4 ? histY : widgetHover & 2 ? meterY : bodyY;
    x += mousePass.movedX;
    y += mousePass.movedY;
}

static void RaiseAfLow() {
    if (Repeats(afRepeat)) afLow += 10;
}

static void ExportRange() {
    dragKind = spentClick;
    OpenDialog(dialogCsvRange);
}

// A file that is still fading is left alone.
static void ToggleDim() {
    if (fileBright[titleHover] < 97 || fileBright[titleHover] > 254) fileDim[titleHover] ^= 1;
}

static void HoldCursors() {
    DragCursors();
    dragKind = cursorDrag;
}

static const PressRow leftRows[] = {
    {[] { return panelHover != 0 && dragKind == 0; }, ClickValueRow},
    {[] { return HoveredLapFile() >= 0 && dragKind == 0; }, JumpToLap},
    {OnScrollBar, HoldScrollBar},
    {[] { return widgetHover != 0; }, MoveWidget},
    {[] { return courseHover != 0; }, [] { HoldCourseLeft(mousePass.movedX, mousePass.movedY); }},
    {[] { return afMapOn != 0; }, RaiseAfLow},
    {[] { return csvRangePending && dragKind == 0; }, ExportRange},
    {[] { return titleHover >= 0; }, ToggleDim},
    {[] { return dragKind == 0 || dragKind == cursorDrag; }, HoldCursors},
};

void HandleLeftButton() {
    if (!(mouseButtons & buttonLeft) || !mousePass.mainWindowInFront) {
        dragKind = 0;
        ReleaseCourseLeft();
        afRepeat = {};
        return;
    }
    GivePress(leftRows);
}
