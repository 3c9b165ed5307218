// bike.h -- the machine whose rides are logged. The header of a log tells the same figures to the reader.
#pragma once

constexpr int bikeGears        = 6;
constexpr int primaryTeeth[2]  = {76, 36};                                                    // main, counter
constexpr int gearTeeth[bikeGears][2] = {{33, 12}, {32, 16}, {30, 18}, {26, 18}, {30, 23}, {29, 24}};  // main, counter
constexpr int sprocketTeeth[2] = {16, 42};                                                    // front, rear
constexpr int frontWheelMm     = 1920;                                                        // per turn
constexpr int rearWheelMm      = 2010;

// One sample of a ride in the units of the program's channels: rpm, 0.1 %, 0.1 km/h, 0.01 mm, 0.01 of the analog inputs'
// units, 0.01 V. AUX1 is the front brake pressure in bar, AUX2 the water temperature in degrees Celsius.
struct BikeSample {
    int  ne, th, vfw, vrw, fsus, rsus, laf1, laf2, aux1, aux2, vb;
    bool mark;  // the receiver sees a lap transmitter
    bool flag;  // the quick shifter cuts the ignition
};

constexpr int samplesPerSecond = 200;
