// sample_log.h -- believable logs of a motorcycle on a closed circuit, for tests, benchmarks, fuzzers and demonstrations.
//
// Every byte follows from the options alone: the same options give the same file on every compiler and machine. The
// simulation therefore uses its own random numbers and, of floating point, only the operations that are exactly rounded
// everywhere (+ - * / and the square root). The encoders share no code with the readers, so that a test that compares
// what was simulated with what was read tests both.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

struct SampleLogOptions {
    int         version     = 4;         // 0, 32, 1, 2, 3 or 4
    std::string course      = "sorrel";  // a name of CourseNames()
    int         laps        = 6;         // timed laps between the lap out and the lap in; 0: as many as `seconds` hold
    int         seconds     = 0;         // length of the log, up to 8 hours; 0: as long as the laps take
    int         skipSeconds = 0;         // the logger is switched on that long after the start in the pit lane
    uint64_t    seed        = 1;         // rider, conditions and sensor noise
    int         marksPerLap = 1;         // 1, 2 or 3
    std::string memo        = "Sorrel circuit, dry, track 31 C";  // Shift-JIS, 189 bytes are used

    bool linearSuspension = false;  // linear stroke sensors of 130.0 and 75.0 mm in place of the fixed ones
    bool voltInputs       = false;  // both AUX inputs log plain volts, without calibration
    bool lowBattery       = false;  // the battery breaks down below 9.01 V now and then
    bool earlyFirmware    = false;  // version 2 frames under a header that says 3, as firmware before 9.01.10 wrote them
    int  neDivider        = 2;      // pulses per turn, 0 half a pulse

    int intervalMs = 0;  // .qtw: between two readings of every channel; 0: a typical interval for each

    int  stepMs      = 10;     // CSV: between two lines, 5 to 1000
    int  titleStyle  = 0;      // CSV: 0, 1 or 2, the ways in which loggers write their titles
    bool lapDistance = false;  // CSV: distance since the start line in place of lap numbers

    int truncateBytes = 0;  // damage: bytes missing at the end
    int flipBits      = 0;  // damage: bits turned over anywhere in the file
};

constexpr int longestLogSeconds = 8 * 3600;

// The whole file, .zrk, .qtw or CSV. Unknown versions and courses are taken as the defaults, other numbers are held inside
// their ranges.
std::vector<uint8_t> MakeSampleLog(const SampleLogOptions& options);
std::vector<uint8_t> MakeSecondaryLog(const SampleLogOptions& options);
std::vector<uint8_t> MakeCsvLog(const SampleLogOptions& options);

// Courses that the bike can be sent round, "sorrel" first.
std::vector<std::string> CourseNames();
// A course file: `points` lines "x,y" (3 to 2999) along the circuit, from the start line on; where the circuit has sector
// boundaries each is a line "1024.00,1024.00" in front of its point.
std::string MakeCourse(const std::string& name, int points = 900);
