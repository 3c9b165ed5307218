// byte_order.h -- big-endian numbers of the logger's formats, read and written byte by byte.
#pragma once
#include <cstdint>

constexpr uint16_t ReadU16Be(const uint8_t* p) { return static_cast<uint16_t>(p[0] << 8 | p[1]); }
constexpr int16_t  ReadI16Be(const uint8_t* p) { return static_cast<int16_t>(ReadU16Be(p)); }
constexpr void WriteU16Be(uint8_t* p, unsigned value) {
    p[0] = static_cast<uint8_t>(value >> 8);
    p[1] = static_cast<uint8_t>(value);
}
