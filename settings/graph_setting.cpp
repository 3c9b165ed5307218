#include "settings/graph_setting.h"

#include <algorithm>
#include <cstdio>

#include "graph/color_scheme.h"
#include "graph/grid.h"
#include "run_data/run_store.h"
#include "run_data/typed_number.h"
#include "settings/graph_layout.h"

// How a channel's typed numbers become stored ones.
struct GridRule {
    int low;                   // of Min, as typed
    int scale;                 // stored units of 1
    bool cutMin, cutMax;       // the typed number loses its fraction before it is scaled
    double lowStep;            // of Step, as typed
    int decimals;              // shown
};
static constexpr int highest = 20000;  // of every field, as typed
static constexpr GridRule gridRules[layoutChannels] = {
    {0, 1, false, true, 1, 0},        // Ne
    {0, 1, false, true, 1, 0},        // TH, whose grid is in percent
    {0, 10, true, true, 0.1, 0},      // VFW
    {0, 10, true, true, 0.1, 0},      // VRW
    {-100, 100, true, true, 0.1, 0},  // FSUS
    {-100, 100, true, true, 0.1, 0},  // RSUS
    {0, 100, false, true, 0.1, 1},    // LAF1. Kept: a maximum typed as 13.5 is stored as 1300.
    {0, 100, false, true, 0.1, 1},    // LAF2
    {0, 100, false, false, 0.1, 1},   // VB
    {0, 100, false, true, 0.1, 2},    // AUX1
    {0, 100, false, true, 0.1, 2},    // AUX2
    {-500, 10, false, true, 0.1, 0},  // Slip
    {-500, 1, false, true, 10, 0},    // VFSus. Kept: leaving Min lifts the start value of -2000 to the limit.
    {-500, 1, false, true, 10, 0},    // VRSus
};

static int* const gridValues[gridFields] = {GraphGrid_min, GraphGrid_max, GraphGrid_step};

// Shown AUX values are stored x divider x 0.01; the divider of a native log is 1.
static int Divider(int channel) {
    return channel == chAUX1 || channel == chAUX2 ? std::max(auxDivider[0][channel - chAUX1], 1) : 1;
}

void ShowGridField(int channel, GridField field, char text[gridTextSize]) {
    const GridRule& rule = gridRules[channel];
    const int stored = gridValues[static_cast<int>(field)][channel];
    if (rule.decimals == 0)
        std::snprintf(text, gridTextSize, "%d", stored / rule.scale);
    else
        std::snprintf(text, gridTextSize, "%0.*f", rule.decimals, 1.0 * stored * Divider(channel) * 0.01);
}

void LeaveGridField(int channel, GridField field, const char* typed) {
    const GridRule& rule = gridRules[channel];
    const double number = TypedNumber(typed);
    switch (field) {
        case GridField::min: {
            const double min = std::clamp<double>(number, rule.low, highest);
            // Kept: of the AUX fields only the minimum is divided.
            GraphGrid_min[channel] = CutProduct(rule.cutMin ? std::trunc(min) : min, rule.scale) / Divider(channel);
            break;
        }
        case GridField::max: {
            // Kept: a maximum below the minimum stands until the dialog closes.
            const double max = std::clamp<double>(number, 0, highest);
            GraphGrid_max[channel] = CutProduct(rule.cutMax ? std::trunc(max) : max, rule.scale);
            break;
        }
        case GridField::step:
            GraphGrid_step[channel] = CutProduct(std::clamp<double>(number, rule.lowStep, highest), rule.scale);
            break;
    }
}

static int* const columnColors[colorColumns] = {colorCurrent, Color_Red, Color_White, colorStored[1]};

int ColorChoice(int channel, ColorColumn column) { return columnColors[static_cast<int>(column)][channel]; }

void SetColorChoice(int channel, ColorColumn column, int index) { columnColors[static_cast<int>(column)][channel] = index; }

static constexpr SampleColor samples[2][colorChoices] = {
    {{0, 255, 0}, {0, 255, 192}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {192, 255, 0}, {0, 150, 0}, {140, 140, 140}, {255, 255, 255}},
    {{0, 0, 255}, {0, 192, 255}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {128, 128, 0}, {0, 150, 0}, {140, 140, 140}, {0, 0, 0}},
};
static bool LightScheme() { return colortype == 1; }

SampleColor ColorSample(int index) { return samples[LightScheme()][index]; }

SampleColor SampleBackground() { return LightScheme() ? SampleColor{255, 255, 255} : SampleColor{0, 0, 0}; }

bool OnlyFile1Offered() { return ExpertMode >= 2; }

bool OnlyFile1Shown() { return OnlyFile1Offered() && ExclusiveF1Color; }

void OpenGraphSetting() {
    if (!OnlyFile1Offered()) ExclusiveF1Color = 0;
}

void CloseGraphSetting(int channel, GraphSettingEnd end) {
    GraphGrid_max[channel] = std::max(GraphGrid_max[channel], GraphGrid_min[channel]);
    if (end == GraphSettingEnd::button) StoreColorIndex(channel);
    ApplyColorSet(0);
    BuildGrid();
}
