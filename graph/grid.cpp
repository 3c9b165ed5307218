#include "graph/grid.h"

#include <algorithm>
#include <cstdint>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/drawables.h"
#include "graph/view_state.h"
#include "platform/boxes.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

constexpr int stripWidth     = 8;
constexpr int gradientHeight = 128;
constexpr int lineLimit      = 4096;  // lines of one channel

// How a channel's grid is numbered.
struct GridScale {
    int         major;        // stored units between major values
    int         divisor;      // the number printed is value / divisor, an integer; 0: value x 0.01, a float
    const char* format;
    bool        labelsEnds;   // min and max carry a number as well
};
static constexpr GridScale gridScales[channelTotal] = {
    {5000, 1, "%d", true},     // Ne
    {50, 1, "%d", true},       // TH, whose grid is in percent
    {1000, 10, "%d", false},   // VFW
    {1000, 10, "%d", true},    // VRW
    {5000, 100, "%d", true},   // FSUS
    {3000, 100, "%d", true},   // RSUS
    {100, 0, "%3.1f", false},  // LAF1
    {100, 0, "%3.1f", true},   // LAF2
    {100, 0, "%3.1f", true},   // VB
    {100, 0, "%3.0f", true},   // AUX1, times its divider
    {100, 0, "%3.0f", true},   // AUX2
    {500, 10, "%d", true},     // Slip
    {50, 1, "%d", false},      // VFSus
    {50, 1, "%d", true},       // VRSus
};

// Shown in File 1 or in a loaded File 2; File 3 does not count.
static bool ChannelTakesPart(int channel) {
    if (!GraphGrid_disp[channel] || (channel == chSlip && ExpertMode < 2)) return false;
    return showChannel[0][channel] || (slotInUse[1] && showChannel[1][channel]);
}

static bool ChannelHasBand(int channel) {
    const bool suspensionSpeed = channel == chVFSus || channel == chVRSus;
    return ChannelTakesPart(channel) && !(suspensionSpeed && ExpertMode < 2);
}

static double GridY(int channel, int value) { return channelPosition[channel] - value / channelZoom[channel]; }

// Calls visit(value) from min to max. A step below 1 leaves the two ends.
template <class Visit>
static void WalkGrid(int channel, Visit visit) {
    const int64_t low = GraphGrid_min[channel], high = GraphGrid_max[channel];
    const int64_t step = GraphGrid_step[channel] >= 1 ? GraphGrid_step[channel] : std::max<int64_t>(high - low, 1);
    int lines = 0;
    for (int64_t value = low; value <= high && lines < lineLimit; value += step, lines++) visit(static_cast<int>(value));
}

// A band fades from its channel's min, where the image's first row goes, to its max.
static void DrawGradient(int gradient) {
    SetDrawTarget(gradient);
    for (int y = 0; y <= gradientHeight; y++) {
        const int grey = 255 - (gradientHeight - y) / 3;
        DrawLineI(0, y, stripWidth, y, colortype == 1 ? MakeColor(grey, grey, grey) : MakeColor(0, 0, 96 - y / 3));
    }
}

static void DrawBands(int gradient) {
    for (int channel = 0; channel < channelTotal; channel++)
        if (ChannelHasBand(channel))
            DrawImageStretched(0, TruncToInt(GridY(channel, GraphGrid_min[channel])), stripWidth,
                               TruncToInt(GridY(channel, GraphGrid_max[channel])), gradient, 1);
}

static void DrawGridLines(int channel) {
    const Color minor = GridFill == 1 ? backColor : gridMinorColor;  // cuts the bands, or is drawn without them
    WalkGrid(channel, [&](int value) {
        const bool major = value % gridScales[channel].major == 0 || value == GraphGrid_min[channel] || value == GraphGrid_max[channel];
        const float y = static_cast<float>(GridY(channel, value));
        DrawLineF(0, y, stripWidth, y, major ? gridMajorColor : minor, 1);
    });
}

static void DrawGridStrip(int gradient) {
    SetDrawTarget(gridStrip);
    FillRect(0, 0, stripWidth, screenHeight, backColor);
    if (GridFill == 1) DrawBands(gradient);
    for (int channel = 0; channel < channelTotal; channel++)
        if (ChannelTakesPart(channel)) DrawGridLines(channel);
}

static void DrawNumber(int channel, int value) {
    const GridScale& scale = gridScales[channel];
    const Color color = MakeColor(210, 210, 255);
    const int y = TruncToInt(GridY(channel, value) - fontSize / 2);
    int divider = 1;
    if (channel == chAUX1 || channel == chAUX2) divider = auxDivider[0][channel - chAUX1];
    if (scale.divisor)
        DrawTextF(0, y, color, smallFont, scale.format, value / scale.divisor);
    else
        DrawTextF(0, y, color, smallFont, scale.format, divider * (value * 0.01));
}

// Kept: VFW, LAF1 and VFSus number an end only where it is both min and max; in practice only the multiples.
static bool ValueHasNumber(int channel, int value) {
    const bool atMin = value == GraphGrid_min[channel], atMax = value == GraphGrid_max[channel];
    const bool atEnd = gridScales[channel].labelsEnds ? atMin || atMax : atMin && atMax;
    return atEnd || value % gridScales[channel].major == 0;
}

static void DrawLabelStrip() {
    SetDrawTarget(labelStrip);
    ClearImageBlack(labelStrip);
    for (int channel = 0; channel < channelTotal; channel++)
        if (ChannelTakesPart(channel))
            WalkGrid(channel, [&](int value) {
                if (ValueHasNumber(channel, value)) DrawNumber(channel, value);
            });
}

void BuildGrid() {
    SetBlend(blendNone, 255);
    const int gradient = MakeDrawable(stripWidth, gradientHeight);
    if (gradient != noHandle)
        DrawGradient(gradient);
    else if (Debug)
        ShowBox("Memory err i04", "ZRKA", BoxOwner::toolbar);
    if (gridStrip != noHandle) DrawGridStrip(gradient);
    if (labelStrip != noHandle) DrawLabelStrip();
    SetDrawTarget(backBuffer);
    DeleteImage(gradient);
}
