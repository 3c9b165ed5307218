// plotted_channels.h -- how each channel is plotted: where its samples are, what smooths, delays and colours it.
#pragma once
#include <cstdint>
#include <variant>

#include "run_data/channels.h"
#include "run_data/run_store.h"

// The sample arrays of the three slots; Slip has none of its own.
struct SlipSamples {};
using ChannelSamples = std::variant<SlipSamples, const SampleArray<uint16_t>*, const SampleArray<int32_t>*, const SampleArray<int16_t>*>;

enum class When { never, withDebug, withShifter, always };  // withShifter: Shifter or Debug
struct PlottedChannel {
    ChannelSamples samples;
    double scale;        // plotted value of a stored one; Ne has neFactor besides
    When   smoothed;     // while Ctrl is down
    When   cut;          // with Ctrl, a column that begins at a set flag of the log falls to 0
    When   marked;       // in File 1, such a column takes File 2's colour
    int    analogInput;  // delayed by lafDelay when its sensor is an A/F sensor; -1 otherwise
    bool   expertOnly;
};
extern const PlottedChannel plottedChannels[channelTotal];

bool Holds(When when);
// Whether the plot shows a channel of a file.
bool ChannelPlotted(int slot, int channel);
