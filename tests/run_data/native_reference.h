// native_reference.h -- a second decoder of native logs, one sample after the other and without tables: what the program's
// decoder is compared with.
#pragma once
#include <array>
#include <cstdint>
#include <vector>

#include "tests/run_data/log_builder.h"

struct ReferenceOptions {
    bool voltageErrorsShown = false;  // VBerrexp
    bool debug = false;
    bool rearPosition = false;  // CoursePosSource 1
    int  marksPerLap = 1;       // of the slot, for headers that do not say
};

// Columns hold a sample more than were logged: the element behind the last.
struct ReferenceLog {
    int samples = 1, laps = 1;
    std::array<std::vector<int64_t>, 15> columns;
    std::vector<int64_t> lapStart, lapLength;
    int tpsMin = 120, tpsMax = 128, fsusMax = 0, rsusMax = 0;
    int64_t sizeEstimate = 0;
};
// Columns in this order.
enum ReferenceColumn { rNe, rTH, rVFW, rVRW, rFSUS, rRSUS, rLAF1, rLAF2, rVB, rAUX1, rAUX2, rLap, rFront, rRear, rFlag };

ReferenceLog DecodeReference(const LogBytes& log, const ReferenceOptions& options);
