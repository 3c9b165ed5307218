#include "app/course_popup.h"

#include <algorithm>

#include "draw/draw_layer.h"
#include "graph/view_state.h"

void DrawCoursePopup() {
    popupCounter = popupWanted ? std::min(popupCounter + 1, 32) : std::max(popupCounter - 1, 0);
    if (popupCounter == 0) return;
    const double across = popupCounter > 16 ? 1.0 : popupCounter * 0.0625;
    const double down = popupCounter < 16 ? 0.02 : (popupCounter - 16) * 0.0625;
    SetBlend(blendAlpha, 7 * popupCounter);
    DrawImageScaledXY(static_cast<float>(mouseX - 128), static_cast<float>(std::max(mouseY, 48)), 60, 40, coursePopup, across, down);
    SetBlend(blendNone, 255);
}
