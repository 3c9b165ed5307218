// secondary_channels.h -- puts the codes of a .qtw stream onto the samples of a slot.
//
// The stream goes through the samples in time order and, at each sample that a channel's period divides, holds one code
// for that channel, in the order Ne, VFW, VRW, TH, VB, FSUS, RSUS, LAF1, LAF2, spare 1, spare 2, lap. Between its
// samples a channel repeats its value. A lap code comes every 60 samples and says how many samples ago a mark fell.
#pragma once
#include <cstdint>

// Decodes at most `samples` samples of the file into the slot's channels, which are clear, and its sensor parameters'
// units. Stores the marks and returns the number of the first sample not decoded. markCount is that of the marks, and 1
// for the start of the log.
int DecodeSecondaryStream(int slot, const uint8_t* log, int length, int samples, int& markCount);
