#include "graph/value_readout.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/plotted_channels.h"
#include "graph/value_rows.h"
#include "graph/view_state.h"
#include "run_data/derived_channels.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

int32_t tagSpread;
int32_t nameFade;
int32_t tagValue[channelTotal][fileSlots];

constexpr int panelTop    = 80;
constexpr int columnPitch = 105;
constexpr int fadeFull    = 32;
constexpr int easyRows    = 11;  // without the channels of the expert
constexpr int tagRoom     = 16;  // tags nearer than this push each other down

static bool PanelHidden() { return CursolValueMode & 2; }

// What is read this frame: samples and texts of all channels of one file.
struct Readings {
    int        sample, base;
    ValueTexts texts[channelTotal];
};
static Readings readings[fileSlots];

// Kept: texts are carried from channel to channel, see WriteValueTexts.
static void TakeReadings(int slot) {
    Readings& now = readings[slot];
    now.sample = MouseSample(slot);
    now.base = BaseSample(slot);
    ValueTexts carried{};
    for (int channel = 0; channel < channelTotal; channel++) {
        WriteValueTexts(slot, channel, now.sample, now.base, carried);
        now.texts[channel] = carried;
    }
}

// --- panel -----------------------------------------------------------------------------------------------------------

static void DrawPanelBackdrop() {
    const int rows = ExpertMode >= 2 ? channelTotal : easyRows;
    SetBlend(blendSubtract, 220);
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot])
            FillRect(5 + columnPitch * slot, panelTop, 101 + columnPitch * slot, panelTop + 3 + rowHeight * rows, whiteColor);
}

static Color PanelColor(int slot, int channel) { return panelMask[slot] | channelColor[channel][slot]; }

static void DrawNames(int slot) {
    char name[valueTextSize];
    int x;
    for (int channel = 0; channel < channelTotal; channel++) {
        if (!ChannelPlotted(slot, channel)) continue;
        WriteChannelName(channel, name, &x);
        DrawTextAt(columnPitch * slot + x, panelTop + rowHeight * channel, name, PanelColor(slot, channel), bigFont);
    }
}

static void DrawValues(int slot) {
    for (int channel = 0; channel < channelTotal; channel++)
        if (ChannelPlotted(slot, channel))
            DrawTextAt(columnPitch * slot + ValueX(channel), panelTop + rowHeight * channel, readings[slot].texts[channel].panel,
                       PanelColor(slot, channel), bigFont);
}

static void DrawGear(int slot) {
    DrawTextF(columnPitch * slot + 16, panelTop + rowHeight * chSlip, channelColor[chVB][slot], bigFont, "%1d",
              GearPosition(slot, readings[slot].sample));
}

static void DrawPanel() {
    nameFade = panelHover ? std::max(nameFade - 1, 0) : std::min(nameFade + 1, fadeFull);
    DrawPanelBackdrop();
    for (int slot = 0; slot < fileSlots; slot++) {
        if (!slotInUse[slot]) continue;
        if (nameFade < fadeFull) {
            SetBlend(blendAlpha, (fadeFull - nameFade) * 8);
            DrawNames(slot);
        }
        SetBlend(blendAlpha, nameFade * 8 - 1);
        DrawValues(slot);
        SetBlend(blendNone, 255);
        if (Debug) DrawGear(slot);
    }
}

// --- tags --------------------------------------------------------------------------------------------------------------

// Which tag a tag gives way to: the first, then the second if the first did not apply; -1 none.
struct TagChain {
    int  first, second;
    bool secondUnpushed;  // measured from where that tag's value stands
};
static constexpr TagChain tagChain[channelTotal] = {
    {-1, -1, false},         {chNe, -1, false},   {chTH, -1, false},   {chVFW, -1, false},  {chVRW, -1, false},
    {chFSUS, -1, false},     {chRSUS, -1, false}, {chLAF1, chTH, false}, {-1, -1, false},   {-1, -1, false},
    {-1, -1, false},         {chAUX2, -1, false}, {chSlip, -1, false}, {chVFSus, chRSUS, true},
};

static bool Near(int y, int other) { return std::abs(int64_t{y} - other) < tagRoom; }

// Kept: only a rising value keeps the frames coming.
static void EaseTag(int slot, int channel) {
    const int64_t goal = TagHeightValue(slot, channel, readings[slot].sample);
    const int64_t delta = (goal - tagValue[channel][slot]) / 10;
    tagValue[channel][slot] += static_cast<int32_t>(delta);
    if (delta > 1) animationPending = 1;
}

// Held where the steps of a chain still fit.
static int TagHeight(int slot, int channel) {
    constexpr int farAway = 1 << 28;
    const double rows = tagValue[channel][slot] / (channelZoom[channel] * 10);
    return std::clamp(TruncToInt((channelPosition[channel] - rows) * viewZoom - scrollY), -farAway, farAway);
}

static void PlaceTags(int slot, int (&tagY)[channelTotal]) {
    int valueY[channelTotal];
    for (int channel = 0; channel < channelTotal; channel++) {
        EaseTag(slot, channel);
        const int y = TagHeight(slot, channel);
        const TagChain& chain = tagChain[channel];
        valueY[channel] = tagY[channel] = y;
        if (chain.first < 0) continue;
        if (Near(y, tagY[chain.first])) {
            tagY[channel] = tagY[chain.first] + fontSize;
        } else if (chain.second >= 0) {
            const int other = chain.secondUnpushed ? valueY[chain.second] : tagY[chain.second];
            if (Near(y, other)) tagY[channel] = other + fontSize;
        }
    }
}

static int TagX(int slot) {
    if (slot == 0) return mouseX - tagSpread - 125;
    return tagSpread + (slot == 1 ? 75 : 155) + mouseX;
}

static void DrawTag(int slot, int channel, int y) {
    const char* text = readings[slot].texts[channel].tag;
    const int x = TagX(slot), width = TextWidth(text, static_cast<int>(std::strlen(text)), smallFont);
    FillRect(x - 2, y, x + width + 2, y + fontSize + 1, backColor);
    DrawTextAt(x, y, text, tagMask[slot] | channelColor[channel][slot], smallFont);
}

static void DrawTags() {
    const int distance = CslValWidth - tagSpread;
    tagSpread = std::abs(distance) < 2 ? CslValWidth : tagSpread + distance / 5;
    SetBlend(blendNone, 255);
    for (int slot = 0; slot < fileSlots; slot++) {
        if (!slotInUse[slot]) continue;
        int tagY[channelTotal];
        PlaceTags(slot, tagY);
        if (!(CursolValueMode & 1)) continue;
        for (int channel = 0; channel < channelTotal; channel++)
            if (ChannelPlotted(slot, channel)) DrawTag(slot, channel, tagY[channel]);
    }
}

static void DrawDelayText() {
    if (lafDelayShow <= 0) return;
    lafDelayShow--;
    SetBlend(blendAlpha, lafDelayShow * 2 + 55);
    DrawTextF(mouseX - 125, mouseY, tagMask[0] | fileTextColor[0], smallFont, "LAF Delay %4.2f sec", lafDelay * 0.005);
    SetBlend(blendNone, 255);
}

void DrawValueReadout() {
    if (realTimePlayOn) mouseX = BaseLineX();  // all readings follow the cursor line
    for (int slot = 0; slot < fileSlots; slot++)
        if (slotInUse[slot]) TakeReadings(slot);
    if (!PanelHidden()) DrawPanel();
    DrawTags();
    DrawDelayText();
}

void DefaultValueReadout() {
    tagSpread = 0;
    nameFade = fadeFull;
    for (auto& row : tagValue) std::fill(std::begin(row), std::end(row), 0);
}
