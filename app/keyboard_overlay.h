// keyboard_overlay.h -- the list of keys laid over the view at every start; the "-" key brings it back.
#pragma once

// Draws it and counts it down; it is off when it has faded. Counts drawn frames only.
void DrawKeyboardOverlay();
