// value_rows.h -- what each channel reads at a sample, and the texts that say so.
#pragma once
#include "run_data/channels.h"

// Base sample under the cursor line, and the sample under the mouse, both 0 to sampleCount.
int BaseSample(int slot);
int MouseSample(int slot);

constexpr int valueTextSize = 48;
// Texts of one channel of a file: as the value panel and as the floating tag show it.
struct ValueTexts {
    char panel[valueTextSize], tag[valueTextSize];
};
// Writes the reading at `sample`, or with Shift its difference to `base`. Kept: an analog row whose type or divider has no
// text of its own leaves `texts` as they are, so that it shows the channel before it when they are carried along.
void WriteValueTexts(int slot, int channel, int sample, int base, ValueTexts& texts);
// Plotted value at a sample, x 10: what the height of a tag follows.
int TagHeightValue(int slot, int channel, int sample);

// The channel's name in the panel, with the delay of the analog inputs where it applies, and its place.
void WriteChannelName(int channel, char name[valueTextSize], int* x);
int  ValueX(int channel);
