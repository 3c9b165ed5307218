#include "app/frame_steps.h"

#include <cstdint>

#include "analysis/lap_marks.h"
#include "app/course_popup.h"
#include "app/debug_line.h"
#include "app/frame_loop.h"
#include "app/keyboard_overlay.h"
#include "draw/draw_layer.h"
#include "graph/channel_plot.h"
#include "graph/lap_list.h"
#include "graph/rest_panels.h"
#include "graph/ruler.h"
#include "graph/scroll_bar.h"
#include "graph/value_readout.h"
#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_map.h"

FrameModes ModeAtHand() { return graphPositionOn ? graphPosition : afMapOn ? afMap : normalGraphs; }

static bool OverlayOn() { return shortcutOverlayOn != 0; }
static bool CourseOn() { return CourseLayout_on != 0; }
static bool ScrollBarOn() { return scrollBarOn != 0; }
static bool DebugOn() { return Debug != 0; }

static void GridBlend() { SetBlend(blendNone, zoomDragOn ? 64 : 255); }
// Black adds and subtracts nothing: only the numbers of the strip show.
static void LabelBlend() { SetBlend(colortype == 1 ? blendSubtract : blendAdd, 255); }
static void PlotBlend() { SetBlend(colortype == 0 && Blend_mode == 1 ? blendAdd : blendNone, 255); }

static float StripTop() { return static_cast<float>(-int64_t{scrollY}); }

// Covers the whole client area, so that nothing needs to be cleared.
static void DrawGrid() { DrawImageScaledXY(0, StripTop(), 0, 0, gridStrip, clientWidth, viewZoom); }

static void DrawGridLabels() {
    const float x = slotInUse[2] ? 325 : 220;  // right of the loaded files' columns
    DrawImageRotated(x, StripTop(), 0, 0, labelStrip, 0, viewZoom, 0.0);
}

static void DrawMarks() { DrawExtremeMarks(MarkEvent::frame); }
static void DrawDebug() { DrawDebugLine(PassElapsedMs(), LastPassMs()); }

static const FrameStep steps[] = {
    {allModes, nullptr, GridBlend, DrawGrid},
    {allModes, nullptr, LabelBlend, DrawGridLabels},
    {allModes, OverlayOn, nullptr, DrawKeyboardOverlay},
    {normalGraphs | graphPosition, nullptr, PlotBlend, DrawChannelPlot},
    {normalGraphs, nullptr, nullptr, DrawMarks},
    {normalGraphs, nullptr, nullptr, DrawLapLines},
    {normalGraphs | graphPosition, nullptr, nullptr, DrawCursorLine},
    {normalGraphs, nullptr, nullptr, DrawRuler},
    {normalGraphs, nullptr, nullptr, DrawValueReadout},
    {normalGraphs, nullptr, nullptr, DrawLapList},
    {normalGraphs | graphPosition, CourseOn, nullptr, DrawCourseMap},
    {normalGraphs, ScrollBarOn, nullptr, DrawScrollBar},
    {normalGraphs, nullptr, nullptr, DrawCoursePopup},
    {normalGraphs, nullptr, nullptr, DrawSummaryPanel},
    {normalGraphs, nullptr, nullptr, DrawMemoPanel},
    {allModes, DebugOn, nullptr, DrawDebug},
};
const std::span<const FrameStep> frameSteps = steps;
