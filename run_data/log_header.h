// log_header.h -- the first 512 or 1024 bytes of a native log, which are also the logger's set-up image.
//
// The same bytes stand in three places: at the start of every .zrk and .zrv log, in the file "SETUP.ZRV", and in the
// unit's reply to the wire command "3". Reader, writer and wire share these offsets. Numbers of two bytes are big-endian.
//
//   OFFSET SIZE MEANING
#pragma once

constexpr int headerSize         = 512;   // versions 0, 1, 2, 32
constexpr int extendedHeaderSize = 1024;  // versions 3 and 4
constexpr int frameSize          = 16;    // of versions 0, 1, 2, 32; 3 and 4 have change-mask frames

constexpr int typeMarkAt         = 0;    //  1  the character '3'
constexpr int firmwareAt         = 1;    // 14  firmware text
constexpr int firmwareSize       = 14;
constexpr int versionAt          = 15;   //  1  raw format version
constexpr int neDividerAt        = 16;   //  1  Ne code: 0 half a pulse per turn, else pulses per turn
constexpr int frontPulsesAt      = 17;   //  1  pulses per turn
constexpr int frontTyreAt        = 18;   //  2  mm per turn
constexpr int rearOnGearboxAt    = 20;   //  1  0 wheel sensor, 1 gearbox sensor
constexpr int rearPulsesAt       = 21;   //  1
constexpr int rearTyreAt         = 22;   //  2
constexpr int gearboxPulsesAt    = 24;   //  1
constexpr int frontSprocketAt    = 25;   //  1  teeth
constexpr int rearSprocketAt     = 26;   //  1  teeth
constexpr int marksPerLapAt      = 27;   //  1  1, 2, 3; 0 none
constexpr int neRangeAt          = 28;   //  1  extended Ne code, 0 or 3..16
constexpr int debugAt            = 30;   //  1  set-up writer's Debug, ignored by the reader
constexpr int linkRatioAt        = 31;   //  1  ratio in hundredths - 150; 0 means 229
constexpr int tpsClosedAt        = 32;   //  1  raw 8 bit
constexpr int tpsOpenAt          = 33;   //  1
constexpr int tpsSpanAt          = 34;   //  2  normally 50
constexpr int fsusTypeAt         = 36;   //  1
constexpr int rsusTypeAt         = 37;   //  1
constexpr int fsusZeroHighAt     = 39;   //  1  bits 9..2
constexpr int rsusZeroHighAt     = 40;   //  1
constexpr int fsusZeroLowAt      = 41;   //  1  bits 1..0 in the top two bits
constexpr int rsusZeroLowAt      = 42;   //  1
constexpr int fsusStrokeAt       = 43;   //  2  signed, 0.1 mm
constexpr int rsusStrokeAt       = 45;   //  2
constexpr int lapVoltageAt       = 47;   //  1  x 2000 / 255 = 0.01 V a lap mark needs; normally 121
constexpr int awcModeAt          = 48;   //  1
constexpr int hysteresisAt       = 49;   //  1  mV / 4
constexpr int neutralRpmAt       = 50;   //  2
constexpr int awcSlipAt          = 52;   //  2  0.1 %
constexpr int awcOffPulsesAt     = 54;   //  1
constexpr int awcOnPulsesAt      = 55;   //  1
constexpr int awcContinuousAt    = 56;   //  1
constexpr int awcRepeatAt        = 57;   //  1
constexpr int indicatorRpmAt     = 58;   //  6  gears 1 to 6, rpm / 100
constexpr int teethAt            = 64;   // 14  seven pairs, the even offset into primaryMain, gearMain, the odd one
                                         //     into primaryCounter, gearCounter
constexpr int shifterDirectionAt = 80;   //  1
constexpr int resetLevelAt       = 81;   //  1
constexpr int triggerLevelAt     = 82;   //  5
constexpr int cutPulses1At       = 87;   //  5  first row of cut pulses
constexpr int asModeAt           = 92;   //  1
constexpr int cutRpmAt           = 93;   //  3  rpm / 250 of the three rows
constexpr int cutPulses2At       = 96;   //  5
constexpr int cutPulses3At       = 101;  //  5
constexpr int lapInputAt         = 106;  //  1
constexpr int analogTypeAt       = 108;  //  4  LAF1, LAF2, AUX1, AUX2
constexpr int analogBlockAt      = 112;  // 48 each: 16 bytes A (slope, or curve x as bytes), 32 bytes B (offset, curve y)
constexpr int analogBlockSize    = 48;
constexpr int analogBlockB       = 16;   // of part B in a block
constexpr int memoAt             = 320;  // 189 bytes and a zero
// Versions 3 and 4 only:
constexpr int lcOnAt             = 512;  //  1
constexpr int lcLockRpmAt        = 513;  //  2
constexpr int lcReleaseRpmAt     = 515;  //  2
constexpr int lcToleranceRpmAt   = 517;  //  2
constexpr int awcCorrectionAt    = 519;  //  1  %
constexpr int awcType3InUseAt    = 528;  //  1
constexpr int awcType3At         = 529;  //  7
