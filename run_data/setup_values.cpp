#include "run_data/setup_values.h"

#include <algorithm>
#include <iterator>

int neutralRpm;
int indicatorRpm[indicatorGears];
int shifterHysteresis;
int shifterDirection;
int shifterResetLevel;
int shifterTrigger[shiftTotal];
int cutPulses[cutRows][shiftTotal];
int cutRpm[cutRows];
int asMode;
int awcMode;
int awcSlipThreshold;
int awcOffPulses, awcOnPulses;
int awcContinuousPulses;
int awcRepeatPulses;
int awcCorrection;
int awcType3InUse;
int awcType3[7];
int lapInput;
int lcOn;
int lcLockRpm, lcReleaseRpm, lcToleranceRpm;

void DefaultSetupValues() {
    neutralRpm = 15000;
    std::fill(std::begin(indicatorRpm), std::end(indicatorRpm), 15000);
    shifterHysteresis = 62;
    shifterDirection = 0;
    shifterResetLevel = 140;
    std::fill(std::begin(shifterTrigger), std::end(shifterTrigger), 160);
    constexpr int pulses[cutRows][shiftTotal] = {{40, 36, 32, 32, 32}, {36, 32, 30, 30, 30}, {20, 18, 16, 16, 16}};
    constexpr int rpm[cutRows] = {10000, 7000, 4000};
    for (int row = 0; row < cutRows; row++) {
        std::copy(std::begin(pulses[row]), std::end(pulses[row]), cutPulses[row]);
        cutRpm[row] = rpm[row];
    }
    asMode = 0;
    awcMode = 0;
    awcSlipThreshold = 65535;
    awcOnPulses = 10;
    awcOffPulses = 0;
    awcContinuousPulses = 20;
    awcRepeatPulses = 20;
    awcCorrection = 0;
    awcType3InUse = 0;
    constexpr int type3[7] = {0, 255, 255, 0, 255, 255, 0};
    std::copy(std::begin(type3), std::end(type3), awcType3);
    lapInput = 0;
    lcOn = 0;
    lcLockRpm = lcReleaseRpm = lcToleranceRpm = 65535;
}

void SetUnknownRevs() {
    neutralRpm = 30000;
    std::fill(std::begin(indicatorRpm), std::end(indicatorRpm), 0);
}
