// setup_values.h -- the logger unit's set-up as File 1's header gave it.
//
// Owns     what the unit is to be configured with, beyond the sensor parameters of run_store.h.
// Written  by the native reader from a log in File 1, by the set-up dialogs, and by nothing else.
// Read     by the set-up file writer. log_header.h has the bytes.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

constexpr int shiftTotal     = 5;  // shifts 1-2 to 5-6
constexpr int cutRows        = 3;  // rows of cut pulses, by engine speed
constexpr int indicatorGears = 6;

extern int neutralRpm;                        // neutral indicator, rpm, 0..30000
extern int indicatorRpm[indicatorGears];      // gear indicator, rpm, stored / 100
extern int shifterHysteresis;                 // stored, mV / 4
extern int shifterDirection;                  // 0 up, 1 down, 2 function off
extern int shifterResetLevel;                 // raw 8 bit of 0..5000 mV
extern int shifterTrigger[shiftTotal];        // raw 8 bit of 0..5000 mV
extern int cutPulses[cutRows][shiftTotal];    // 0..100
extern int cutRpm[cutRows];                   // rpm, stored / 250
extern int asMode;                            // AS mode: 0 off, 1, 2, 3
extern int awcMode;                           // 0 off, 1 Type1, 2 Type2, 3 Type3
extern int awcSlipThreshold;                  // 0.1 %, 0..3000; 65535 at start
extern int awcOffPulses, awcOnPulses;         // 0..100
extern int awcContinuousPulses;               // threshold pulses, 0..255
extern int awcRepeatPulses;                   // cut mode repeat pulses, 0..255
extern int awcCorrection;                     // throttle opening correction, %
extern int awcType3InUse;                     // 0 or 1
extern int awcType3[7];                       // point 1 %, on, off; point 2 %, on, off; point 3 %
extern int lapInput;                          // 0 "Default", 1 "One shot", 2 "IR decode", 3 "Logger"
extern int lcOn;                              // LC tick
extern int lcLockRpm, lcReleaseRpm, lcToleranceRpm;  // 65535 when off

// Puts every value into its start state.
void DefaultSetupValues();
// The rev values of a log in File 1 that tells none: 30000 for the neutral indicator, 0 for each gear.
void SetUnknownRevs();
