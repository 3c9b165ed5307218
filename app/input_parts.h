// input_parts.h -- the parts of the input step, in the order in which ReadInput calls them.
#pragma once
#include <cstdint>

// What one pass knows of the mouse besides view_state.h; read by the parts below.
struct MousePass {
    int      movedX, movedY;      // since the pass before
    uint32_t pressed;             // buttons that were up in the pass before
    bool     mainWindowInFront;
    bool     somethingUnderWay;   // a jump, a drag, an animation or real-time play
};
extern MousePass mousePass;
constexpr uint32_t buttonLeft = 1, buttonRight = 2, buttonMiddle = 4, buttonBack = 8, buttonForward = 16;

// hit_tests.cpp: what lies under the mouse.
extern int titleHover;  // file whose name is under the mouse, from 0; -1 for none
void HoverCourse();
void RunHitTests();
// The row of the value panel, and the entry of the lap table, at the mouse's height.
int  PanelRow();
int  LapRow(int slot);
// File of the lap list column under the mouse when it is loaded, else -1.
int  HoveredLapFile();

// mouse_left.cpp, mouse_right.cpp, wheel.cpp
void HandleLeftButton();
void HandleRightButton();
void HandleMiddleButton();
void HandleWheel();

// navigation.cpp: how the cursors move.
void StepSideButtons();
void StepLaps();
void StepRulerFade();
void GlideCursors();
void JumpTo(int slot, int64_t sample);  // glides, held inside the file; with Ctrl at once
void StepByArrow(int direction);        // -1 left, +1 right
void DragCursors();
void DragScrollBar();

// magnification.cpp
void EaseMagnification();

void DefaultKeys();
void DefaultHitTests();
void DefaultMouseButtons();
void DefaultNavigation();
