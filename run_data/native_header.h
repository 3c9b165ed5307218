// native_header.h -- what the header of a native log says, put into the slot's parameters.
//
// Written  sensor parameters, teeth, calibrations and memo of the slot; for File 1 also firmwareText, LinkRatio and
//          setup_values.h. log_header.h has the bytes.
#pragma once
#include <cstdint>

// Format version of a log: byte 15, or 2 for the early firmware that wrote fixed frames whatever byte 15 says.
int NativeVersion(const uint8_t* header);
constexpr bool IsChangeMaskVersion(int version) { return version == 3 || version == 4; }
// Versions 0 and 32 are the logs of the first units: no battery channel, no AUX, 8 bit strokes.
constexpr bool IsFirstUnitVersion(int version) { return version == 0 || version == 32; }
constexpr bool IsNativeVersion(int version) { return (version >= 0 && version <= 4) || version == 32; }
// Reads all fields into the slot, whose formatVersion is set. The header may be followed by anything.
void ReadNativeHeader(int slot, const uint8_t* header);
