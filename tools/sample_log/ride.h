// ride.h -- a rider, a motorcycle and a circuit, simulated in steps of 5 ms.
//
// Speed follows the bends: each lap has a speed for every metre, from the grip in the bends and the power and brakes
// between them, varied by what the rider makes of each bend. Throttle, brake and gears then chase that speed, and all
// that the logger sees follows from them.
#pragma once
#include <vector>

#include "tools/sample_log/bike.h"
#include "tools/sample_log/circuit.h"
#include "tools/sample_log/random.h"
#include "tools/sample_log/sample_log.h"

struct Suspension {
    double body, bodySpeed;  // mm, mm/s: where the frame stands above its place at rest
    double wheel;            // mm: where the tyre stands on the road
};

struct Ride {
    Circuit circuit;
    Random  random;
    int     samplesLeft;  // until the log ends
    int     timedLaps;    // 0: ride on until samplesLeft is used up
    int     marksPerLap;
    bool    lowBattery;

    std::vector<double> pace;    // m/s for each node, of the lap under way
    int    tick;               // samples ridden
    int    lap;                // 0 the lap out, then 1, 2, ...
    double at;                 // m after the start line
    double line;               // metres of road per metre of the circuit: no two laps take the same line
    double speed, acceleration;  // m/s, m/s2
    double throttle, brake;      // 0 to 1
    int    gear;                 // 0 neutral
    double rpm;
    int    cut, blip, sinceShift;  // samples left of an upshift and a downshift; samples since the last
    double blipSize;               // throttle of the downshift under way
    double spin;                   // rear wheel slip beyond what the drive takes
    int    markLeft;               // samples that the receiver still sees the transmitter
    Suspension front, rear;
    double mixture, water, volts, hand;  // air/fuel, degrees, V, slow unrest of the throttle hand
    BikeSample shown;                    // what the sensors gave last; not all of them are as fast as the log
};

// What one sample brings.
struct Moment {
    double noise[8];                 // -1 to 1
    double pull;                     // m/s2 that the engine gives
    double sideways;                 // m/s2 in a bend
    double frontSpeed, rearSpeed;    // m/s of the tyres' treads
    double frontStroke, rearStroke;  // mm
};

constexpr int cutTicks  = 12;  // samples of an upshift
constexpr int blipTicks = 26;  // and of a downshift

Ride StartRide(const SampleLogOptions& options);
// The next sample, or false when the log is over.
bool NextSample(Ride& ride, BikeSample& sample);
// All samples of a log, for comparison with what a reader makes of it. Sample k is the reader's sample k + 1.
std::vector<BikeSample> SimulateRide(const SampleLogOptions& options);
