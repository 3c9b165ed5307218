// course_mouse.cpp -- presses on the course map: jumps to a point, the popup, moving and zooming the panel.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "views/course_file.h"
#include "views/course_image.h"
#include "views/course_map.h"

constexpr uint32_t leftButton = 1, rightButton = 2;
enum CourseDrag : int { dragNone, dragPanel, dragSpent };

static bool  zoomHeld;  // the right button zooms
static float zoomY;     // follows the mouse

int FindCoursePoint() {
    const float x = static_cast<float>(mouseX - courseCenterX), y = static_cast<float>(mouseY - courseCenterY);
    int nearest = -1, best = TruncToInt(courseZoom * 15.0f);
    for (int point = 1; point <= coursePointCount; point++) {
        const float dx = courseX[point] * courseZoom - x, dy = courseY[point] * courseZoom - y;
        const int distance = TruncToInt(std::sqrt(dx * dx + dy * dy));
        if (distance >= best) continue;
        best = distance;
        nearest = point;
        if (distance < 1) break;
    }
    return nearest;
}

static void JumpToPoint(int point) {
    mouseButtons = 0;
    mouseX = BaseLineX();  // so that the press does not move the cursors
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot] && fileMoveOn[slot]) jumpTarget[slot] = CoursePointToSample(slot, point);
    popupWanted = 0;
}

// From the cursor to a course point.
struct WayToPoint {
    double seconds, metres;
};

static WayToPoint FindWay(int slot, int point) {
    const CoursePlace place = FindCoursePlace(slot, point);
    const int cursor = std::clamp(cursorPos[slot] / 100, 0, sampleCount[slot]);
    const int sample = place.sample < 0 ? std::clamp(point, 0, sampleCount[slot]) : place.sample;
    const int32_t counts = static_cast<int32_t>(place.distance - lapDistance[slot][cursor]);
    return {(sample - cursor) * 0.005, static_cast<double>(static_cast<float>(counts) * 0.00013888889f)};
}

static void ShowWay(int point) {
    SetDrawTarget(coursePopup);
    SetBlend(blendNone, 255);
    ClearImageBlack(coursePopup);
    const int line = fontSize + 2;
    const WayToPoint first = FindWay(0, point);
    DrawTextAt(16, 10, "  Time       Length", whiteColor, smallFont);
    DrawTextF(16, line + 10, lapTextColor[0], smallFont, "%6.2fs    %5.0fm", first.seconds, first.metres);
    if (slotInUse[1]) {
        const WayToPoint second = FindWay(1, point);
        DrawTextF(16, 2 * line + 10, lapTextColor[1], smallFont, "%6.2fs    %5.0fm", second.seconds, second.metres);
        DrawTextF(16, 3 * line + 10, whiteColor, smallFont, "%+6.2fs    %+5.1fm", std::abs(first.seconds) - std::abs(second.seconds),
                  std::abs(first.metres) - std::abs(second.metres));
    }
    SetDrawTarget(backBuffer);
    popupWanted = 1;
}

int CourseClick() {
    if (!mouseButtons && !wheelNotches) return 0;
    const int point = FindCoursePoint();
    if (point < 0) return 0;
    if (mouseButtons & leftButton)
        JumpToPoint(point);
    else if (mouseButtons & rightButton)
        ShowWay(point);
    return 1;
}

void HoldCourseLeft(int movedX, int movedY) {
    if (courseDrag == dragNone) courseDrag = CourseClick() ? dragSpent : dragPanel;
    if (courseDrag != dragPanel) return;
    courseCenterX += movedX;
    courseCenterY += movedY;
}

void HoldCourseRight() {
    if (!zoomHeld && CourseClick()) return;
    if (!zoomHeld) zoomY = static_cast<float>(mouseY);
    zoomHeld = true;
    const float distance = static_cast<float>(mouseY) - zoomY;
    courseZoom = std::clamp(courseZoom - distance * courseZoom * 0.0005f, 0.4f, 2.0f);
    zoomY += distance * 0.05f;
}

void ReleaseCourseLeft() { courseDrag = dragNone; }

void ReleaseCourseRight() { zoomHeld = false; }
