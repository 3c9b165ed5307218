#include "app/input_step.h"

#include <algorithm>

#include "app/input_parts.h"
#include "draw/draw_layer.h"
#include "graph/view_state.h"
#include "platform/window.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

MousePass mousePass;

static int horizontalRest;  // delta of the horizontal wheel that is not yet a lap step, 120 a step

static void ReadWheels() {
    wheelNotches = Saturate32(int64_t{wheelNotches} + GetWheelNotches());
    const int64_t delta = int64_t{horizontalRest} + GetHWheelDelta();
    lapSteps = Saturate32(lapSteps - delta / 120);
    horizontalRest = static_cast<int>(delta % 120);
}

// A mouse over another program's window stays where it was.
static void ReadMouse(bool foreign) {
    const int      previousX = mouseX, previousY = mouseY;
    const uint32_t previousButtons = mouseButtons;
    GetMousePos(&mouseX, &mouseY);
    mouseButtons = GetMouseButtons();
    ReadWheels();
    if (foreign) {
        mouseX = previousX;
        mouseY = previousY;
    }
    mouseX = std::clamp(mouseX, 0, clientWidth - 1);
    mouseY = std::clamp(mouseY, 0, clientHeight - 1);
    mousePass.movedX = mouseX - previousX;
    mousePass.movedY = mouseY - previousY;
    mousePass.pressed = mouseButtons & ~previousButtons;
}

static bool SomethingUnderWay() {
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot] && jumpTarget[slot] >= 0) return true;
    return zoomDragOn || animationPending || realTimePlayOn;
}

static bool BodyViewMoves() { return AnimeMode && (appear < 32 || histBusy); }

// False when the view lies still and nothing is left to do in this pass.
static bool CountActivity(bool foreign) {
    if (!idleFrame && !foreign) {
        activityCount = 150;
        return true;
    }
    if (activityCount > 0 && !(activityCount <= 60 && BodyViewMoves())) activityCount--;
    return activityCount > 0 || !idleFrame;
}

void ReadInput() {
    const Foreground front = ForegroundWindow();
    const bool foreign = front == Foreground::other;
    mousePass = {0, 0, 0, front == Foreground::mainWindow, false};
    if (clientVisible) ReadMouse(foreign);
    mousePass.somethingUnderWay = SomethingUnderWay();
    animationPending = 0;
    const bool moved = mousePass.movedX != 0 || mousePass.movedY != 0;
    idleFrame = !mousePass.somethingUnderWay && !moved && mouseButtons == 0 && wheelNotches == 0;
    HandleKey();
    if (!CountActivity(foreign) || !clientVisible) return;
    HoverCourse();
    if (graphPositionOn || foreign) return;  // graph position mode reads the mouse itself
    StepSideButtons();
    if (moved) popupWanted = 0;
    if (mousePass.mainWindowInFront) RunHitTests();
    HandleLeftButton();
    HandleRightButton();
    HandleMiddleButton();
    HandleWheel();
    EaseMagnification();
    StepLaps();
    StepRulerFade();
    GlideCursors();
}

void DefaultInputStep() {
    mousePass = {};
    horizontalRest = 0;
    DefaultKeys();
    DefaultHitTests();
    DefaultMouseButtons();
    DefaultNavigation();
}
