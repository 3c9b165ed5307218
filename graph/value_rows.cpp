#include "graph/value_rows.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>

#include "graph/plotted_channels.h"
#include "graph/view_state.h"
#include "run_data/derived_channels.h"
#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

// A number's text: plain and as a difference. `whole` numbers are printed as integers.
struct NumberForm {
    const char *plain, *difference;
    double scale;  // shown value of a stored one
    bool   whole;
};

struct ValueRow {
    const char* name;
    int         nameX;      // pixels from the file's column
    const char* delayName;  // with the delay in seconds, at delayNameX
    int         valueX;
    NumberForm  number;     // the analog inputs have theirs by type
    const char* tagEnd;     // follows the panel's text in a tag
};
constexpr int delayNameX = 20;

static constexpr ValueRow valueRows[channelTotal] = {
    {"Ne", 48, nullptr, 10, {"%6drpm", "%+6drpm", 1, true}, ""},
    {"TH", 48, nullptr, 26, {"%4.0f%%", "%+4.0f%%", 0.1, false}, ""},
    {"VFW", 44, nullptr, 10, {"%6.1fkm/h", "%+6.1fkm/h", 0.1, false}, ":F"},
    {"VRW", 44, nullptr, 10, {"%6.1fkm/h", "%+6.1fkm/h", 0.1, false}, ":R"},
    {"SUS Fr", 32, nullptr, 10, {"%6.1f", "%+6.1f", 0.01, false}, ":F"},
    {"SUS Rr", 32, nullptr, 10, {"%6.1f", "%+6.1f", 0.01, false}, ":R"},
    {"LAF 1", 36, "LAF1 %4.2f", 10, {}, ""},
    {"LAF 2", 36, "LAF2 %4.2f", 10, {}, ""},
    {"VB", 48, nullptr, 10, {"%7.2fV", "%+7.2fV", 0.01, false}, ""},
    {"AUX 1", 36, "AUX1 %4.2f", 10, {}, ""},
    {"AUX 2", 36, "AUX2 %4.2f", 10, {}, ""},
    {"Slip %", 32, nullptr, 18, {"%+6.2f%%", "%+6.2fP", 0.1, false}, ""},
    {"VFSus", 32, nullptr, 10, {"%+5dmm/s", "%+5dmm/s", 1, true}, ":F"},
    {"VRSus", 32, nullptr, 10, {"%+5dmm/s", "%+5dmm/s", 1, true}, ":R"},
};

// Analog inputs by type. Kept: the AUX inputs of types 2 and 3 show no plus sign in a difference, the LAF inputs do.
static constexpr NumberForm ratioForm{"%7.2fA/F", "%+7.2fA/F", 0.01, false};
static constexpr NumberForm voltForm{"%7.2fV", "%+7.2fV", 0.01, false};
static constexpr NumberForm lafForm{"%7.2f", "%+7.2f", 0.01, false};
static constexpr NumberForm auxForm{"%7.2f", "%7.2f", 0.01, false};
static constexpr NumberForm auxTensForm{"%7.1f", "%7.1f", 0.1, false};
static constexpr NumberForm auxHundredsForm{"%7d", "%7d", 1, true};
static constexpr NumberForm debugThrottleForm{"%5.1f%%", "%+5.1f%%", 0.1, false};

// nullptr where neither type nor divider has a text.
static const NumberForm* AnalogForm(int slot, int input) {
    const bool aux = input >= 2;
    switch (analog[slot][input].type) {
        case 0: return &ratioForm;
        case 1: return &voltForm;
        case 2:
            if (!aux) return &lafForm;
            switch (auxDivider[slot][input - 2]) {
                case 1: return &auxForm;
                case 10: return &auxTensForm;
                case 100: return &auxHundredsForm;
                default: return nullptr;
            }
        case 3: return aux ? &auxForm : &lafForm;
        default: return nullptr;
    }
}

static int HoldSample(int slot, int64_t sample) {
    return static_cast<int>(std::clamp<int64_t>(sample, 0, sampleCount[slot]));
}

int BaseSample(int slot) { return HoldSample(slot, (int64_t{cursorPos[slot]} + 50) / 100); }

int MouseSample(int slot) {
    const int64_t offset = TruncToInt(timeFactor[slot] / viewZoom * timeScale * (mouseX - BaseLineX()) * 100);
    return HoldSample(slot, (offset + 50 + cursorPos[slot]) / 100);
}

// Stored value of a channel, Ne after its factor, Slip in 0.1 %.
static double StoredAt(int slot, int channel, int sample) {
    switch (channel) {
        case chNe: return TruncToInt(static_cast<float>(Ne[slot][sample]) * neFactor[slot]);
        case chTH: return TH[slot][sample];
        case chVFW: return VFW[slot][sample];
        case chVRW: return VRW[slot][sample];
        case chFSUS: return FSUS[slot][sample];
        case chRSUS: return RSUS[slot][sample];
        case chLAF1: return LAF1[slot][sample];
        case chLAF2: return LAF2[slot][sample];
        case chVB: return VB[slot][sample];
        case chAUX1: return AUX1[slot][sample];
        case chAUX2: return AUX2[slot][sample];
        case chSlip: return SlipRatio(slot, sample);
        case chVFSus: return VFSus[slot][sample];
        case chVRSus: return VRSus[slot][sample];
        default: return 0;
    }
}

static bool ReadsSmoothed(int channel) { return ctrlDown && Holds(plottedChannels[channel].smoothed); }

// A sample outside the file is left out of the sum, while the divisor stays.
static double SmoothedAt(int slot, int channel, int sample) {
    double sum = 0;
    const int first = std::max(sample - SusFilter_n, 0), last = std::min(sample + SusFilter_n, sampleCount[slot] - 1);
    for (int i = first; i <= last; i++) sum += StoredAt(slot, channel, i);
    return sum / (2 * SusFilter_n + 1);
}

// The delay with which an analog input is read at a sample.
static int DelayAt(int slot, int channel, int sample) {
    const int input = plottedChannels[channel].analogInput;
    if (input < 0 || ExpertMode < 2 || analog[slot][input].type != 0) return 0;
    return sample + lafDelay < sampleCount[slot] ? lafDelay : 0;
}

static double ReadAt(int slot, int channel, int sample) {
    return ReadsSmoothed(channel) ? SmoothedAt(slot, channel, sample) : StoredAt(slot, channel, sample);
}

// Kept: an analog input whose base lies outside the file shows its plain value in the form of a difference.
static double Reading(int slot, int channel, int sample, int base) {
    const int delay = DelayAt(slot, channel, sample);
    const double value = ReadAt(slot, channel, sample + delay);
    if (!shiftDown) return value;
    const bool input = plottedChannels[channel].analogInput >= 0;
    if (input && (base + delay <= 0 || base + delay >= sampleCount[slot])) return value;
    return value - ReadAt(slot, channel, base + delay);
}

static void WriteNumber(char* text, const NumberForm& form, double stored) {
    const char* format = shiftDown ? form.difference : form.plain;
    if (form.whole)
        std::snprintf(text, valueTextSize, format, TruncToInt(stored * form.scale));
    else
        std::snprintf(text, valueTextSize, format, stored * form.scale);
}

// Bit 4 of a stroke sensor's type asks for volts.
static const char* StrokeUnit(int slot, int channel) {
    return ((channel == chFSUS ? fsusType[slot] : rsusType[slot]) & 16) ? "V" : "mm";
}

static void Append(char* text, const char* end) {
    const size_t length = std::strlen(text);
    std::snprintf(text + length, valueTextSize - length, "%s", end);
}

void WriteValueTexts(int slot, int channel, int sample, int base, ValueTexts& texts) {
    const ValueRow& row = valueRows[channel];
    const int input = plottedChannels[channel].analogInput;
    const NumberForm* form = input >= 0 ? AnalogForm(slot, input) : &row.number;
    if (!form) return;
    const double reading = Reading(slot, channel, sample, base);
    WriteNumber(texts.panel, *form, reading);
    if (channel == chFSUS || channel == chRSUS) Append(texts.panel, StrokeUnit(slot, channel));
    if (channel == chTH && Debug)
        WriteNumber(texts.tag, debugThrottleForm, reading);
    else
        std::memcpy(texts.tag, texts.panel, valueTextSize);
    Append(texts.tag, row.tagEnd);
}

int TagHeightValue(int slot, int channel, int sample) {
    const double plotted = ReadAt(slot, channel, sample + DelayAt(slot, channel, sample)) * plottedChannels[channel].scale;
    return TruncToInt(plotted * 10);
}

void WriteChannelName(int channel, char name[valueTextSize], int* x) {
    const ValueRow& row = valueRows[channel];
    const int input = plottedChannels[channel].analogInput;
    const bool delayed = input >= 0 && ExpertMode >= 2 && analog[0][input].type == 0;
    *x = delayed ? delayNameX : row.nameX;
    if (delayed)
        std::snprintf(name, valueTextSize, row.delayName, lafDelay * 0.005);
    else
        std::snprintf(name, valueTextSize, "%s", row.name);
}

int ValueX(int channel) { return valueRows[channel].valueX; }
