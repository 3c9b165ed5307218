#include "graph/plotted_channels.h"

#include "settings/settings.h"

const PlottedChannel plottedChannels[channelTotal] = {
    // samples, scale, smoothed, cut, marked, analog input, expert only
    {Ne, 1.0, When::never, When::withShifter, When::withShifter, -1, false},
    {TH, 0.1, When::never, When::never, When::never, -1, false},
    {VFW, 1.0, When::withDebug, When::never, When::never, -1, false},
    {VRW, 1.0, When::withDebug, When::never, When::withDebug, -1, false},
    {FSUS, 1.0, When::always, When::never, When::never, -1, false},
    {RSUS, 1.0, When::always, When::never, When::never, -1, false},
    {LAF1, 1.0, When::never, When::never, When::never, 0, false},
    {LAF2, 1.0, When::never, When::never, When::never, 1, false},
    {VB, 1.0, When::never, When::never, When::never, -1, false},
    {AUX1, 1.0, When::never, When::never, When::never, 2, false},
    {AUX2, 1.0, When::never, When::never, When::withShifter, 3, false},
    {SlipSamples{}, 1.0, When::withDebug, When::withDebug, When::withShifter, -1, true},
    {VFSus, 1.0, When::never, When::never, When::never, -1, true},
    {VRSus, 1.0, When::never, When::never, When::never, -1, true},
};

bool Holds(When when) {
    switch (when) {
        case When::never: return false;
        case When::withDebug: return Debug != 0;
        case When::withShifter: return Shifter || Debug;
        case When::always: return true;
    }
    return false;
}

bool ChannelPlotted(int slot, int channel) {
    return showChannel[slot][channel] && !(plottedChannels[channel].expertOnly && ExpertMode < 2);
}
