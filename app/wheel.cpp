// wheel.cpp -- what the wheel does: A/F band, colouring of the course, magnification.
#include <algorithm>

#include "app/input_parts.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "settings/settings.h"
#include "views/course_map.h"

constexpr int normalZoom = 10000;  // viewZoomGoal at magnification 1

static void WidenAfBand() {
    afWidth = static_cast<int>(std::clamp<int64_t>(afWidth + int64_t{5} * wheelNotches + int64_t{5} * lapSteps, 0, 200));
    afLow = std::clamp(afLow, 900, 1600);
    lapSteps = 0;
}

static void Magnify() {
    const int highest = Debug ? 80000 : 40000;
    if (wheelNotches > 0) viewZoomGoal = std::clamp(Saturate32(viewZoomGoal + int64_t{wheelNotches} * normalZoom), normalZoom, highest);
    if (wheelNotches < 0) viewZoomGoal = normalZoom;  // at once, whatever the count
}

void HandleWheel() {
    if (afMapOn)
        WidenAfBand();
    else if (courseHover)
        StepCourseColor(wheelNotches);
    else if (mousePass.mainWindowInFront)
        Magnify();
    wheelNotches = 0;
}
