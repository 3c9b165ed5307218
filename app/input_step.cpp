#include "app/input_step.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

static int horizontalRest;  // part of a lap step of the horizontal wheel, 120 a step

static void ReadMouse(bool foreign) {
    const int previousX = mouseX, previousY = mouseY;
    GetMousePos(&mouseX, &mouseY);
    mouseButtons = GetMouseButtons();
    wheelNotches += GetWheelNotches();
    horizontalRest += GetHWheelDelta();
    lapSteps -= horizontalRest / 120;
    horizontalRest %= 120;
    if (foreign) {
        mouseX = previousX;
        mouseY = previousY;
    }
    mouseX = std::clamp(mouseX, 0, clientWidth - 1);
    mouseY = std::clamp(mouseY, 0, clientHeight - 1);
}

static bool SomethingUnderWay() {
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot] && jumpTarget[slot] != -1) return true;
    return zoomDragOn || animationPending || realTimePlayOn;
}

static bool BodyViewMoves() { return AnimeMode && (appear < 32 || histBusy); }

// False when nothing is left to do in this step.
static bool CountActivity(bool foreign) {
    if (!idleFrame && !foreign) {
        activityCount = 150;
        return true;
    }
    if (activityCount > 0 && !(activityCount <= 60 && BodyViewMoves())) activityCount--;
    return activityCount > 0 || !idleFrame;
}

// viewZoom goes an eighth of its way in a pass; the view follows the mouse, at once while the zoom changes.
static void EaseMagnification() {
    viewZoom += (viewZoomGoal - viewZoom * 10000) * 0.0000125;
    if (viewZoom < 1.001) {
        scrollY = 0;
        return;
    }
    const double distance = std::fabs(viewZoomGoal - viewZoom * 10000);
    if (!(ctrlDown && distance <= 5)) {
        const int follow = TruncToInt(mouseY * viewZoom - halfHeight);
        scrollY += (follow - scrollY) / (distance < 100 ? 12 : 1);
    }
    scrollY = std::clamp(scrollY, 0, std::max(0, TruncToInt(clientHeight * viewZoom - 2 * halfHeight)));
}

void ReadInput() {
    const bool foreign = ForegroundWindow() == Foreground::other;
    const int previousX = mouseX, previousY = mouseY;
    if (clientVisible) ReadMouse(foreign);
    const bool pending = SomethingUnderWay();
    animationPending = 0;
    idleFrame = !pending && mouseX == previousX && mouseY == previousY && mouseButtons == 0 && wheelNotches == 0;
    HandleKey();
    if (!CountActivity(foreign)) return;
    if (graphPositionOn || foreign || !clientVisible) return;
    wheelNotches = 0;
    EaseMagnification();
}

void DefaultInputStep() { horizontalRest = 0; }
