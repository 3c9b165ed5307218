// secondary_log.h -- reads .qtw logs: every channel at an interval of its own, all in one stream of codes.
//
// Layout   secondary_header.h, then a stream: secondary_stream.h has its codes, secondary_channels.h what they are for.
// Input    any bytes: there is no checksum.
#pragma once
#include <cstdint>

// Decodes the file in `buffer` (`length` bytes, and at least 1024 zero bytes behind them) into the slot, lap table and
// derived channels included. A failure has been shown to the user. AUX1, AUX2 and sampleFlag, which the format lacks,
// are 0; formatVersion stays as the slot's last load set it.
void ReadSecondaryLog(int slot, const uint8_t* buffer, int length);
