#include "views/course_map.h"

#include <algorithm>
#include <cstdint>
#include <iterator>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "views/course_file.h"
#include "views/course_image.h"

constexpr int highlightFull = 32, backdropFull = 200;

static int highlight;             // 0..32, rises under the mouse
static int backdrop;              // 0..200, rises on a large panel
static int lapColoured[fileSlots];  // lap that the dots were last coloured for

// --- panel -----------------------------------------------------------------------------------------------------------------------

// Pixels of a length on the panel, held where sums still fit: the settings know no largest scale.
static int PanelPixels(double length) {
    constexpr int farAway = 1 << 28;
    return std::clamp(TruncToInt(length), -farAway, farAway);
}

// The panel is kept in the window; the saved place stays.
static int HoldCentre(int centre, int half, int size) {
    if (centre + half > size) centre = size - half;
    return centre - half < 0 ? half : centre;
}

static void StepCounters() {
    const int before = highlight;
    highlight = std::clamp(highlight + (courseHover && backdrop == 0 ? 1 : -1), 0, highlightFull);
    backdrop = std::clamp(backdrop + (courseZoom > 0.75f ? 2 : -2), 0, backdropFull);
    if (highlight != before) activityCount = std::max(activityCount, 2);
}

static void DrawBackground(int x, int y, int half) {
    if (backdrop) {
        SetBlend(blendSubtractPremultiplied, backdrop);
        FillRect(x - half, y - half, x + half, y + half, whiteColor);
    }
    if (courseHover) {
        SetBlend(blendAlpha, 2 * highlight);
        FillRect(x - half, y - half, x + half, y + half, MakeColor(0, 0, 255));
    }
}

static void DrawPicture(int x, int y, int half) {
    SetBlend(courseImageNoAlpha ? blendAdd : blendAlpha, 255);
    DrawImageRotated(x + 0.5f, y + 0.5f, courseHalf, courseHalf, courseImage, 1, courseZoom, 0.0);
    SetBlend(blendNone, 255);
    DrawTextAt(x - 9 * fontSize + half, y - half, courseCaption, debugColor[0], smallFont);
}

// --- markers ---------------------------------------------------------------------------------------------------------------------

static void DrawBox(int x, int y, int half, Color color) { DrawBoxOutline(x - half, y - half, x + half, y + half, color); }

// 0 when the cursor lies beyond the lap's distance, which ends the markers of this frame.
static bool DrawMarker(int slot, int x, int y) {
    const int sample = std::clamp(cursorPos[slot] / 100, 0, sampleCount[slot]);
    const uint32_t total = CurrentLapLength(slot);
    int point = 0;
    if (total >= 1) {
        const float share = static_cast<float>(lapDistance[slot][sample]) / static_cast<float>(total);
        if (share > 1.0f) return false;
        point = TruncToInt(static_cast<float>(coursePointCount) * share);
    }
    const int px = x + PanelPixels(courseX[point] * courseScale * courseZoom);
    const int py = y + PanelPixels(courseY[point] * courseScale * courseZoom);
    DrawBox(px, py, PanelPixels(8 * courseZoom), fileTextColor[slot]);
    DrawBox(px, py, -PanelPixels(slot * courseZoom - 6.0), fileTextColor[slot]);
    return true;
}

// The colouring follows the lap.
static void FollowLap(int slot) {
    const bool coloured = courseColorChannel != 0 && (ColorMap || Debug);
    if (mouseButtons || jumpTarget[slot] >= 0 || currentLap[slot] == lapColoured[slot] || !coloured) return;
    lapColoured[slot] = currentLap[slot];
    RedrawCourseImage(0);
}

void DrawCourseMap() {
    const int half = PanelPixels(courseHalf * courseZoom);
    const int x = HoldCentre(courseCenterX, half, clientWidth), y = HoldCentre(courseCenterY, half, clientHeight);
    StepCounters();
    DrawBackground(x, y, half);
    DrawPicture(x, y, half);
    for (int slot = 0; slotInUse[slot]; slot++) {
        if (!DrawMarker(slot, x, y)) break;
        FollowLap(slot);
    }
    SetBlend(blendNone, 255);
}

void StepCourseColor(int steps) {
    if (steps == 0) return;
    courseColorChannel = static_cast<int>(std::clamp<int64_t>(int64_t{courseColorChannel} + steps, 0, INT32_MAX));
    RedrawCourseImage(0);
}

void DefaultCourseMap() {
    highlight = backdrop = 0;
    std::fill(std::begin(lapColoured), std::end(lapColoured), 0);
    ReleaseCourseLeft();
    ReleaseCourseRight();
}
