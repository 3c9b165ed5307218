// frame_sizes.h -- bytes of change-mask frames and of their parts.
#pragma once
#include <cstddef>
#include <cstdint>

#include "run_data/native_frames.h"

// Bytes of a frame by the mask's first and second byte.
struct FrameSizes {
    uint8_t high[256], low[256];
};
constexpr FrameSizes FrameSizesOf(int version) {
    FrameSizes sizes{};
    uint8_t wide = version == 4 ? 2 : 1;
    const uint8_t highBits[8] = {wide, wide, wide, wide, 1, 1, 1, 0};  // bits 8 to 15; of a word its second byte
    const uint8_t lowBits[8] = {4, 2, 1, 1, wide, wide, wide, wide};
    for (int byte = 0; byte < 256; byte++) {
        sizes.high[byte] = smallestMaskFrame;
        for (int bit = 0; bit < 8; bit++) {
            sizes.high[byte] += byte >> bit & 1 ? highBits[bit] : 0;
            sizes.low[byte] += byte >> bit & 1 ? lowBits[bit] : 0;
        }
    }
    return sizes;
}
inline constexpr FrameSizes byteFrameSizes = FrameSizesOf(3), wideFrameSizes = FrameSizesOf(4);
inline const FrameSizes& SizesFor(int version) { return version == 4 ? wideFrameSizes : byteFrameSizes; }
inline size_t FrameSize(const FrameSizes& sizes, const uint8_t* frame) {
    return size_t{sizes.high[frame[0]]} + size_t{sizes.low[frame[1]]};
}
