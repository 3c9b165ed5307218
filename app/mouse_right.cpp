// mouse_right.cpp -- the right button: zoom to a lap, panel sizes, grids, time zoom; and the middle button.
#include <algorithm>

#include "analysis/lap_marks.h"
#include "app/input_parts.h"
#include "app/mouse_press.h"
#include "graph/grid.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_image.h"
#include "views/course_map.h"

constexpr double smallestTimeScale = 0.001;

static double      referenceY;  // follows the mouse by a twentieth of the way in each pass of a zoom
static bool        rightHeld;   // since an earlier pass
static PressRepeat afRepeat;

// Distance of the mouse from the reference, which then follows.
static double PullReference() {
    const double distance = mouseY - referenceY;
    referenceY += distance * 0.05;
    return distance;
}

// The lap then fills the room right of the lap columns.
static void ZoomToLap() {
    const int slot = HoveredLapFile(), row = LapRow(slot);
    const int margin = (1 + slotInUse[1] + slotInUse[2]) * lapColumnWidth + 10;
    const int room = 2 * halfWidth - margin;
    const int64_t start = row + 1 > sampleCount[0] ? 0 : lapStart[slot][row];
    const int64_t end = lapStart[slot][row + 1];
    timeScale = room > 0 ? std::max(static_cast<double>(end - start) / room, smallestTimeScale) : smallestTimeScale;
    JumpTo(slot, (start + end) / 2 - TruncToInt((margin - 10) * timeScale * 0.5));
}

// A floating panel and the limits of its zoom.
struct WidgetZoom {
    unsigned bit;
    double*  zoom;
    double   low, high;
};
static const WidgetZoom widgetZooms[] = {{1, &bodyZoom, 0.5, 1.5}, {2, &meterZoom, 0.5, 1.5}, {4, &histZoom, 0.5, 5.0}};

static void ZoomWidget() {
    for (const WidgetZoom& widget : widgetZooms) {
        if (!(widgetHover & widget.bit)) continue;
        *widget.zoom = std::clamp(*widget.zoom - PullReference() * *widget.zoom * 0.0005, widget.low, widget.high);
        return;
    }
}

static void ToggleGrid() {
    const int row = PanelRow();
    if (row < 0 || row >= channelTotal) return;
    GraphGrid_disp[row] ^= 1;
    BuildGrid();
}

static void LowerAfLow() {
    if (Repeats(afRepeat)) afLow -= 10;
}

// Moving the mouse down and holding keeps stretching.
static void ZoomTime() {
    if (!zoomDragOn) referenceY = mouseY;
    zoomDragOn = 1;
    timeScale = std::clamp((PullReference() * 0.001 + 1.0) * timeScale, 0.1, 200.0);
}

static const PressRow rightRows[] = {
    {[] { return HoveredLapFile() >= 0; }, ZoomToLap},
    {[] { return widgetHover != 0; }, ZoomWidget},
    {[] { return panelHover && !rightHeld; }, ToggleGrid},
    {[] { return courseHover != 0; }, HoldCourseRight},
    {[] { return afMapOn != 0; }, LowerAfLow},
    {[] { return true; }, ZoomTime},
};

void HandleRightButton() {
    if (!(mouseButtons & buttonRight) || !mousePass.mainWindowInFront) {
        zoomDragOn = 0;
        referenceY = mouseY;
        afRepeat = {};
        rightHeld = false;
        ReleaseCourseRight();
        return;
    }
    GivePress(rightRows);
    rightHeld = true;
}

// A click on a value row colours the course by that channel; elsewhere the extreme marks come and go.
void HandleMiddleButton() {
    if (!(mouseButtons & buttonMiddle) || !mousePass.mainWindowInFront) return;
    if (widgetHover || !panelHover || rightHeld) return DrawExtremeMarks(MarkEvent::toggle);
    courseColorChannel = std::max(PanelRow() + 1, 0);
    RedrawCourseImage(0);
}

void DefaultMouseButtons() {
    referenceY = 0;
    rightHeld = false;
    afRepeat = {};
}
