#include "app/layout_cycle.h"

#include <algorithm>

#include "graph/grid.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/graph_layout.h"
#include "settings/settings.h"

int32_t layoutCycle;

static void LayRearSpeedOverFront() {
    channelPosition[chVRW] = channelPosition[chVFW];
    channelZoom[chVRW] = channelZoom[chVFW];
}

// Zoom and position that let values from `least` over `span` fill a third of the height, the lowest one 50 pixels above
// the bottom edge. A flat channel takes the smallest zoom.
static void Fit(int channel, double zoom, int least) {
    channelZoom[channel] = std::max(zoom, 0.1);
    channelPosition[channel] = TruncToInt(least / channelZoom[channel]) - 50 + clientHeight;
}

static void FitToFile1() {
    const float third = static_cast<float>(std::max(clientHeight / 3, 1));
    for (int channel = 0; channel < channelTotal; channel++) {
        if (channel == chVRW || channel == chVB) continue;  // VRW follows VFW, VB stays
        const int least = channelMin[0][channel];
        const int64_t span = int64_t{channelMax[0][channel]} - least;
        if (channel == chTH)
            Fit(channel, span * 0.1 / third, least / 10);  // laid out in percent
        else
            Fit(channel, span / third, least);
    }
    LayRearSpeedOverFront();
}

static void TakeStandardLayout() {
    for (int channel = 0; channel < channelTotal; channel++) {
        channelPosition[channel] = std::min(channelLayout[channel].position, clientHeight);
        channelZoom[channel] = channelLayout[channel].zoom / 1000.0;
    }
    channelZoom[chAUX1] = channelZoom[chAUX2] = 20;  // Kept: the settings' own default is 10.
}

void StepLayoutCycle() {
    if (channelPosition[chVRW] != channelPosition[chVFW] || channelZoom[chVRW] != channelZoom[chVFW]) layoutCycle = 0;
    switch (layoutCycle) {
        case 0:
            LayRearSpeedOverFront();
            layoutCycle = 1;
            return;
        case 1:
            FitToFile1();
            layoutCycle = 2;
            break;
        default:
            TakeStandardLayout();
            layoutCycle = 1;
    }
    BuildGrid();
}

void DefaultLayoutCycle() { layoutCycle = 0; }
