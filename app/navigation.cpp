// navigation.cpp -- how the cursors move: glides, lap steps, arrow steps, and running them by the mouse.
#include <algorithm>
#include <cstdlib>
#include <iterator>

#include "app/input_parts.h"
#include "app/toolbar.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

static int workingLap[fileSlots];  // of the last lap step, from 0

static bool FileMoves(int slot) { return slotInUse[slot] && fileMoveOn[slot]; }
static int  CursorSample(int slot) { return cursorPos[slot] / 100; }

// Hundredths of a sample, held inside the file.
static int HeldCursor(int slot, int64_t position) {
    return static_cast<int>(std::clamp<int64_t>(position, 0, int64_t{sampleCount[slot]} * 100 - 1));
}

void JumpTo(int slot, int64_t sample) {
    jumpTarget[slot] = static_cast<int>(std::clamp<int64_t>(sample, 0, sampleCount[slot]));
    if (ctrlDown) cursorPos[slot] = HeldCursor(slot, int64_t{jumpTarget[slot]} * 100);
}

// --- arrows and drags ----------------------------------------------------------------------------------------------------

void StepByArrow(int direction) {
    const int units = 200 * (ctrlDown ? 2 : 1) / (shiftDown ? 5 : 1);
    const int64_t step = TruncToInt(units * timeScale);
    for (int slot = 0; slot < fileSlots; slot++)
        if (FileMoves(slot))
            jumpTarget[slot] = std::max(Saturate32(CursorSample(slot) + direction * step), 0);
}

// Hundredths of a sample per pass for a file of this time factor: the further the mouse is from the middle, the faster.
static int DragStep(double factor) {
    const int distance = mouseX - halfWidth;
    return TruncToInt((timeScale / viewZoom * factor * 100 * distance + 0.5) * 0.05);
}

// Kept: ratios of time factors are cut to whole numbers, so that other files lose step against each other.
static int64_t WholeRatio(int slot, int other) { return TruncToInt(timeFactor[slot] / timeFactor[other]); }

void DragCursors() {
    int64_t step[fileSlots];
    if (timeFactor[1] >= timeFactor[0]) {
        step[0] = DragStep(timeFactor[0]);
        step[1] = step[0] * WholeRatio(1, 0);
        step[2] = step[0] * WholeRatio(2, 0);
    } else {
        step[1] = DragStep(timeFactor[1]);
        step[0] = step[1] * WholeRatio(0, 1);
        step[2] = DragStep(timeFactor[2]);
    }
    if (lapHover) return;
    for (int slot = 0; slot < fileSlots; slot++) {
        if (!fileMoveOn[slot]) continue;
        cursorPos[slot] = Saturate32(cursorPos[slot] + step[slot]);
        jumpTarget[slot] = -1;
    }
}

void DragScrollBar() {
    lapHover = 4;
    scrollBarGrow = 32;
    jumpTarget[0] = MulDiv64(mouseX, sampleCount[0], std::max(clientWidth, 1));
    const double way = (jumpTarget[0] - CursorSample(0)) * timeFactor[1] / timeFactor[0];  // Kept: File 2's ratio for File 3 too.
    for (int slot = 1; slot < fileSlots; slot++)
        if (fileMoveOn[slot] || slotInUse[slot])
            jumpTarget[slot] = std::clamp(TruncToInt(way + CursorSample(slot)), 0, sampleCount[slot]);
}

// --- laps ----------------------------------------------------------------------------------------------------------------

void StepSideButtons() {
    if (mousePass.pressed & buttonBack) lapSteps++;
    if (mousePass.pressed & buttonForward) lapSteps--;
}

static bool OnLapStart(int slot, int lap) { return cursorPos[slot] == int64_t{lapStart[slot][lap]} * 100; }

// The first step back goes to the start of the current lap, the next to the lap before.
static void StepFile(int slot) {
    int& lap = workingLap[slot];
    if (jumpTarget[slot] == -1) lap = HeldLap(slot) - 1;
    lap = std::clamp(lap, 0, lapCount[slot]);
    if (lapSteps != 1 || mousePass.somethingUnderWay || OnLapStart(slot, lap)) lap = Saturate32(int64_t{lap} - lapSteps);
    lap = std::clamp(lap, 0, lapCount[slot]);
    if (FileMoves(slot)) jumpTarget[slot] = static_cast<int>(lapStart[slot][lap]);
}

// Length of the cursor's lap, or of the group of marks that holds it.
static int64_t GroupLength(int slot) {
    const int marks = HeldMarksPerLap(slot);
    const int group = (HeldLap(slot) - 1) / marks * marks;
    int64_t length = 0;
    for (int k = 1; k <= marks; k++) length += lapLength[slot][std::min(group + k, lapTableSize - 1)];
    return length;
}

// The same place on the track in another lap. False when the place lies outside the lap, which ends the whole step.
static bool StepKeepingPlace(int slot) {
    const int64_t length = GroupLength(slot);
    if (length == 0) return true;
    const int cursor = std::clamp(CursorSample(slot), 0, sampleCount[slot]);
    const double ratio = static_cast<double>(lapDistance[slot][cursor]) / static_cast<double>(length);
    if (ratio > 1.0) return false;
    const int lap = static_cast<int>(std::clamp<int64_t>(int64_t{HeldLap(slot)} - lapSteps - 1, 0, lapCount[slot]));
    const uint32_t target = static_cast<uint32_t>(std::max(TruncToInt(lapLength[slot][lap + 1] * ratio), 0));
    int sample = std::min(static_cast<int>(lapStart[slot][lap]), sampleCount[slot]);
    const int end = std::min(static_cast<int>(lapStart[slot][lap + 1]), sampleCount[slot]);
    while (sample < end && lapDistance[slot][sample] < target) sample++;
    jumpTarget[slot] = sample;
    return true;
}

static void StepAllKeepingPlace() {
    for (int slot = 0; slot < fileSlots; slot++)
        if (FileMoves(slot) && !StepKeepingPlace(slot)) return;
}

void StepLaps() {
    if (lapSteps == 0 || !mousePass.mainWindowInFront) return;
    if (courseHover)
        StepAllKeepingPlace();
    else
        for (int slot = 0; slot < fileSlots; slot++) StepFile(slot);
    lapSteps = 0;
}

// --- every pass ----------------------------------------------------------------------------------------------------------

void StepRulerFade() {
    if (!lapHover)
        rulerFade = std::min(rulerFade + 1, 32);
    else if (rulerFade > 4)
        rulerFade--;
}

static void Arrive(int slot) {
    jumpTarget[slot] = -1;
    rulerFade = 14;
    zoomDragOn = 0;
}

static void Glide(int slot) {
    const int64_t target = int64_t{jumpTarget[slot]} * 100;
    const int64_t way = target - cursorPos[slot];
    cursorPos[slot] = Saturate32(cursorPos[slot] + way / 7);
    animationPending = 1;
    rulerFade = 0;
    if (std::llabs(way) >= 50) return;
    cursorPos[slot] = Saturate32(target);
    Arrive(slot);
}

static void HoldInFile(int slot) {
    if (cursorPos[slot] < 0) cursorPos[slot] = 0;
    if (cursorPos[slot] < int64_t{sampleCount[slot]} * 100) return;
    cursorPos[slot] = HeldCursor(slot, cursorPos[slot]);
    if (jumpTarget[slot] >= sampleCount[slot]) Arrive(slot);  // a step past the end comes to rest there
    if (slot != 0) return;
    realTimePlayOn = 0;
    CheckButton(buttonPlay, false);
}

void GlideCursors() {
    for (int slot = 0; slot < fileSlots; slot++)
        if (jumpTarget[slot] >= 0) Glide(slot);
    for (int slot = 0; slot < fileSlots; slot++) HoldInFile(slot);
}

void DefaultNavigation() { std::fill(std::begin(workingLap), std::end(workingLap), 0); }
