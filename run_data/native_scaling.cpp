#include "run_data/native_scaling.h"

#include "run_data/native_header.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"

int32_t ScaleThrottle(int slot, int raw, int version) {
    int closed = tpsClosedRaw[slot];
    if (IsFirstUnitVersion(version)) return (raw - closed) * tpsSpan[slot] / 10;
    int unit = version == 4 ? 256 : 1;
    int span = (tpsOpenRaw[slot] - closed) * unit;
    return span == 0 ? 0 : (raw - closed * unit) * 1000 / span;
}

StrokeSensor FrontSensor(int slot) { return {frontFixedSpan, fsusType[slot], fsusZeroRaw[slot], fsusStroke[slot]}; }
StrokeSensor RearSensor(int slot) { return {rearFixedSpan, rsusType[slot], rsusZeroRaw[slot], rsusStroke[slot]}; }

int16_t ScaleStroke(const StrokeSensor& sensor, int raw, int version) {
    int64_t span = sensor.fixedSpan;
    if (version == 32) return Wrap16(span - raw * span / 1024 - 25 * sensor.zero);
    // Counts above zero, on a scale that has the full span at the top.
    int64_t full = version == 4 ? 65535 : 1023;
    int64_t counts = raw + full - sensor.zero * (version == 4 ? 64 : 1);
    if (version == 0 || sensor.type == 0) return Wrap16(span - counts * span / full);
    if (sensor.type != 1) return 0;
    int64_t part = sensor.stroke * counts * 10 / full;
    // Kept: versions 1 and 2 measure a negative stroke from the other end, versions 3 and 4 do not.
    if (version <= 2 && sensor.stroke < 0) return Wrap16(part);
    return Wrap16(sensor.stroke * 10 - part);
}

// A linear input: slope and offset times 100, the reading in 1/100 V.
static int32_t ScaleLinear(const AnalogCalibration& c, int input, int64_t raw, int64_t full) {
    // Kept: AUX2 adds its offset unscaled, the other inputs add theirs times 100.
    int64_t offset = input == 3 ? c.offset : c.offset * 100;
    return Wrap32(((c.slope * raw * 500 + full / 2) / full + offset) / 100);
}

int32_t ScaleAnalog(int slot, int input, int raw, int version) {
    if (IsFirstUnitVersion(version)) return raw * 1000 / 285 + 900;
    int64_t full = FullScale(version);
    const AnalogCalibration& c = analog[slot][input];
    switch (c.type) {
        case 0: return raw * 1000 / 283 / (version == 4 ? 256 : 1) + 900;
        case 1: return static_cast<int32_t>(raw * 500LL / full);
        case 2: return ScaleLinear(c, input, raw, full);
        case 3: {
            constexpr int channels[] = {chLAF1, chLAF2, chAUX1, chAUX2};
            return LookupAnalogCurve(slot, static_cast<int>((raw * 5000LL + full / 2) / full), channels[input]);
        }
        default: return raw;
    }
}

int LookupAnalogCurve(int slot, int millivolts, int channel) {
    int input = channel == chLAF1 ? 0 : channel == chLAF2 ? 1 : channel == chAUX1 ? 2 : channel == chAUX2 ? 3 : -1;
    if (input < 0) return 0;
    const int16_t* x = analog[slot][input].curveX;
    const int16_t* y = analog[slot][input].curveY;
    if (millivolts >= x[curvePoints - 1]) return y[curvePoints - 1];
    for (int i = curvePoints - 2; i >= 0; i--) {
        if (millivolts < x[i]) continue;
        // x[i + 1] is above millivolts and so above x[i], whatever the order of the points.
        return static_cast<int>(int64_t{y[i + 1] - y[i]} * (millivolts - x[i]) / (x[i + 1] - x[i])) + y[i];
    }
    return y[0];
}
