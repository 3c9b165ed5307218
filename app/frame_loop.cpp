#include "app/frame_loop.h"

#include "app/debug_line.h"
#include "app/frame_steps.h"
#include "app/input_step.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "graph/view_state.h"
#include "settings/settings.h"

int32_t quitFlag;
int32_t powerState;
int32_t frameNumber;

constexpr int restMs       = 200;  // a pass of an idle program
constexpr int afMapPassMs  = 100;  // a finished A/F map
constexpr int framePassMs  = 15;   // without a vertical blank to wait for
constexpr int clockMask    = 0x7FFFFFFF;

static int passStamp;     // NowMs at the end of the previous pass
static int passDuration;  // ms of the previous pass, its wait included

int PassElapsedMs() { return (NowMs() - passStamp) & clockMask; }
int LastPassMs() { return passDuration; }

void DrawFrame() {
    RecordFrame();
    for (const FrameStep& step : frameSteps) {
        if (!(step.modes & ModeAtHand()) || (step.wanted && !step.wanted())) continue;
        if (step.blend) step.blend();
        step.draw();
        if (step.blend) SetBlend(blendNone, 255);
    }
    frameNumber++;
}

// Waits until `pass` ms have gone since the last pass. Kept: a pass of 0 ms does not wait.
static void WaitOut(int pass) {
    const int elapsed = PassElapsedMs();
    if (elapsed >= 1 && elapsed < pass) WaitMs(pass - elapsed);
}

void PaceFrame() {
    const bool active = clientVisible && (!idleFrame || activityCount > 1);
    if (!active)
        WaitMs(restMs);
    else if (afMapOn && afProgress == 255)
        WaitOut(afMapPassMs);
    else if (!VSync)
        WaitOut(framePassMs);
    passDuration = PassElapsedMs();
    passStamp = NowMs();
}

bool LoopRuns() { return quitFlag == 0 && !WindowCloseRequested(); }

void LoopPass() {
    const int pump = ProcessMessages();
    if (WindowCloseRequested()) return;
    if (pump != 0) return ResetDevice();
    ActOnPowerState();
    if (powerState != 0) return;
    ReadClientSize();
    ReadInput();
    if (activityCount > 0 && clientVisible) {
        DrawFrame();
        FlipScreen();
    }
    PaceFrame();
}

void DefaultFrameLoop() {
    quitFlag = 0;
    powerState = 0;
    frameNumber = 0;
    passStamp = NowMs();
    passDuration = 0;
    DefaultDebugLine();
}
