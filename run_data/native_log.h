// native_log.h -- reads the logger's own files, .zrk and .zrv, versions 0, 1, 2, 3, 4 and 32.
//
// Layout   header: log_header.h. Fixed frames of versions 0, 1, 2, 32 from 512, 16 bytes each; change-mask frames of
//          versions 3 and 4 from 1024; fixed_frames.cpp and change_mask_frames.cpp describe them beside their decoding.
// Input    any bytes: fields are held in range where they come in; there is no checksum.
#pragma once
#include <cstdint>

// Size estimate of the last native load: bytes that a log of versions 1 and 2 would take as change-mask frames
extern int nativeSizeEstimate;

// Decodes the file in `buffer` (`length` bytes, and at least 1024 zero bytes behind them) into the slot, lap table and
// derived channels included. Sets formatVersion. A failure has been shown to the user and leaves the slot reset.
void ReadNativeLog(int slot, const uint8_t* buffer, int length);
// The same without the derived channels. 0 done; 1 failed, and the slot is reset.
int DecodeNativeLog(int slot, const uint8_t* buffer, int length);
// Value of the curve of an analog input at `millivolts`, 0.01 of its unit. channel is chLAF1, chLAF2, chAUX1 or chAUX2;
// any other gives 0.
int LookupAnalogCurve(int slot, int millivolts, int channel);
void DefaultNativeLog();
