// value_readout.h -- the value panel at the left and the floating tags beside the mouse.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

extern int32_t tagSpread;                            // eased copy of CslValWidth, pixels
extern int32_t nameFade;                             // 32 shows values in the panel, 0 channel names
extern int32_t tagValue[channelTotal][fileSlots];    // eased value x 10: the height of a tag

// Panel, tags and the delay text, as CursolValueMode tells.
void DrawValueReadout();
void DefaultValueReadout();
