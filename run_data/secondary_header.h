// secondary_header.h -- the first 1152 bytes of a .qtw log. Numbers of two and three bytes are big-endian.
//
// An interval is in ms, divided by 5 it is the channel's period in samples; 0 means that the stream lacks the channel.
//
//   OFFSET SIZE MEANING
#pragma once

namespace secondaryHeader {

constexpr int flagsAt        = 6;     //  1  bit 0 set: fsusType 0, else 16; bit 1: rsusType; bit 4: the stream has lap codes
constexpr int neIntervalAt   = 7;     //  2
constexpr int thIntervalAt   = 9;     //  2
constexpr int vfwIntervalAt  = 11;    //  2
constexpr int vrwIntervalAt  = 13;    //  2
constexpr int spare1IntervalAt = 15;  //  2
constexpr int spare2IntervalAt = 17;  //  2
constexpr int vbIntervalAt   = 19;    //  2
constexpr int fsusIntervalAt = 21;    //  2
constexpr int rsusIntervalAt = 23;    //  2
constexpr int laf1IntervalAt = 25;    //  2
constexpr int laf2IntervalAt = 27;    //  2
constexpr int frontPulsesAt  = 37;    //  1
constexpr int rearPulsesAt   = 38;    //  1
constexpr int frontTyreAt    = 39;    //  2  mm per turn / 10
constexpr int rearTyreAt     = 41;    //  2
constexpr int throttleMinAt  = 47;    //  2  10 bit reading at 0 %
constexpr int throttleMaxAt  = 49;    //  2  at 100 %
constexpr int fsusZeroAt     = 51;    //  2  10 bit reading at stroke zero
constexpr int rsusZeroAt     = 53;    //  2
constexpr int analogFlagsAt  = 79;    //  1  bit 0 set: LAF1 is the built-in A/F sensor, else volts; bit 1: LAF2
constexpr int secondsAt      = 84;    //  3  logged time
constexpr int textAt[]       = {89, 115, 151, 167};
constexpr int textSize[]     = {26, 6, 16, 6};
constexpr int firmwareBlock  = 1;     //     the text that is also the firmware's
constexpr int smallNumberAt  = 173;   //  1
constexpr int memoAt         = 320;   // 189 up to the first zero
constexpr int streamAt       = 1152;  //     codes, see secondary_stream.h

}  // namespace secondaryHeader
