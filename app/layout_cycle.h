// layout_cycle.h -- the three layouts of the traces that one button steps through.
#pragma once
#include <cstdint>

extern int32_t layoutCycle;  // next step: 0 the rear speed over the front speed, 1 auto fit, 2 the standard layout

// Does the next step. One that finds the two speeds apart begins anew.
void StepLayoutCycle();
void DefaultLayoutCycle();
