#include "run_data/native_scaling.h"

int LookupAnalogCurve(int slot, int millivolts, int channel) {
    int input = 0;
    while (input < analogInputs && inputChannels[input] != channel) input++;
    if (input == analogInputs) return 0;
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
