// magnification.cpp -- viewZoom eases to its goal, and the magnified view follows the mouse.
#include <algorithm>
#include <cmath>

#include "app/input_parts.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"

static void FollowMouse(double distance) {
    const int follow = TruncToInt(mouseY * viewZoom - halfHeight);
    scrollY += (follow - scrollY) / (distance < 100 ? 12 : 1);
}

// An eighth of the way in each pass. The view jumps with the mouse while the zoom changes and follows softly afterwards;
// Ctrl pins it once the zoom has settled.
void EaseMagnification() {
    viewZoom += (viewZoomGoal - viewZoom * 10000) * 0.0000125;
    if (viewZoom < 1.001) {
        scrollY = 0;
        return;
    }
    const double distance = std::fabs(viewZoomGoal - viewZoom * 10000);
    if (!ctrlDown || distance > 5) FollowMouse(distance);
    scrollY = std::clamp(scrollY, 0, std::max(TruncToInt(clientHeight * viewZoom - 2 * halfHeight), 0));
}
