// Writes CSV logs: one line of titles, then one line for every step of time.
#include <algorithm>

#include "tools/sample_log/bike.h"
#include "tools/sample_log/damage.h"
#include "tools/sample_log/numbers.h"
#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int titleStyles = 3;

struct Column {
    const char* titles[titleStyles];
    int BikeSample::*value;
    int decimals;
};

constexpr Column columns[] = {
    {{"Ne", "Engine Speed (rpm)", "RPM [1/min]"}, &BikeSample::ne, 0},
    {{"TH", "Throttle Position (%)", "TPS [%]"}, &BikeSample::th, 1},
    {{"VFW", "Front Wheel Speed (km/h)", "Wheel Speed Front [km/h]"}, &BikeSample::vfw, 1},
    {{"VRW", "Rear Wheel Speed (km/h)", "Wheel Speed Rear [km/h]"}, &BikeSample::vrw, 1},
    {{"FRSUS", "Fork Position (mm)", "Suspension Front [mm]"}, &BikeSample::fsus, 2},
    {{"RRSUS", "Shock Position (mm)", "Suspension Rear [mm]"}, &BikeSample::rsus, 2},
    {{"LAF1", "A/F 1 (AFR)", "AFR 1"}, &BikeSample::laf1, 2},
    {{"LAF2", "A/F 2 (AFR)", "AFR 2"}, &BikeSample::laf2, 2},
    {{"VB", "Battery Voltage (V)", "Battery [V]"}, &BikeSample::vb, 2},
    {{"AUX1", "Brake Pressure Front (bar)", "Brake Front [bar]"}, &BikeSample::aux1, 2},
    {{"AUX2", "Water Temperature (C)", "Water Temp [C]"}, &BikeSample::aux2, 2},
};

struct TitleForm {
    const char *time, *lapNumber, *lapDistance, *quote, *lineEnd;
};

constexpr TitleForm titleForms[titleStyles] = {
    {"Time", "LAP", "Distance", "", "\n"},
    {"Time (s)", "Lap Number", "Lap Distance (m)", "\"", "\r\n"},
    {"Time [s]", "Lap", "Distance on Lap [m]", "", "\r\n"},
};

void AppendTitles(std::string& text, int style, bool lapDistance) {
    const TitleForm& form = titleForms[style];
    const auto append = [&](const char* title) { text.append(form.quote).append(title).append(form.quote); };
    append(form.time);
    for (const Column& column : columns) {
        text += ',';
        append(column.titles[style]);
    }
    text += ',';
    append(lapDistance ? form.lapDistance : form.lapNumber);
    text += form.lineEnd;
}

// How far round the bike is, as a logger knows it: marks seen, and wheel speed summed up since the last one.
struct LapCounter {
    bool    marked;
    bool    fresh;     // no line was written since the mark
    int     lap;       // from 1
    int64_t distance;  // 0.1 km/h for 5 ms: 7200 are a metre
};

void CountLap(LapCounter& counter, const BikeSample& sample) {
    counter.distance += sample.vfw;
    if (sample.mark && !counter.marked) {
        counter.lap++;
        counter.distance = 0;
        counter.fresh = true;
    }
    counter.marked = sample.mark;
}

}  // namespace

std::vector<uint8_t> MakeCsvLog(const SampleLogOptions& options) {
    const int step = std::clamp(options.stepMs / 5, 1, 200), style = std::clamp(options.titleStyle, 0, titleStyles - 1);
    std::string text;
    AppendTitles(text, style, options.lapDistance);
    Ride ride = StartRide(options);
    LapCounter counter{false, false, 1, 0};
    int tick = 0;
    for (BikeSample sample; NextSample(ride, sample); tick++) {
        CountLap(counter, sample);
        if (tick % step != 0) continue;
        AppendDecimal(text, int64_t{tick} * 5, 3);
        for (const Column& column : columns) {
            text += ',';
            AppendDecimal(text, sample.*column.value, column.decimals);
        }
        text += ',';
        // A line that meets the mark late still says 0, so that a reader finds the new lap at any step.
        if (options.lapDistance) AppendDecimal(text, counter.fresh ? 0 : counter.distance / 720, 1);
        else AppendDecimal(text, counter.lap, 0);
        counter.fresh = false;
        text += titleForms[style].lineEnd;
    }
    std::vector<uint8_t> bytes(text.begin(), text.end());
    DamageBytes(bytes, options);
    return bytes;
}
