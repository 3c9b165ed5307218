// channels.h -- the channel numbers, the same in every table of the program.
//
// Layout keys, colour tables, value rows, grids and analog calibration all key on these numbers.
#pragma once

constexpr int fileSlots = 3;  // 0, 1, 2 are File 1, File 2, File 3

enum Channel : int {
    chNe = 0,      // engine speed
    chTH = 1,      // throttle, shown as "TH" or "TPS"
    chVFW = 2,     // front wheel speed
    chVRW = 3,     // rear wheel speed
    chFSUS = 4,    // front stroke, shown as "FrSUS"
    chRSUS = 5,    // rear stroke, shown as "RrSUS"
    chLAF1 = 6,    // analog inputs 1 and 2
    chLAF2 = 7,
    chVB = 8,      // battery voltage
    chAUX1 = 9,    // analog inputs 3 and 4
    chAUX2 = 10,
    chSlip = 11,   // computed from VFW and VRW
    chVFSus = 12,  // suspension speed front, shown as "FrSusSpeed"
    chVRSus = 13,  // suspension speed rear, shown as "RrSusSpeed"
    channelTotal = 14
};

// Analog inputs in the order LAF1, LAF2, AUX1, AUX2: the index of analogType and its fellows.
constexpr int analogInputs = 4;
