// Fixed frames of versions 0, 1, 2 and 32: 16 bytes each, from the end of the header.
//
//   OFFSET  versions 1 and 2                                          versions 0 and 32
//   0, 1    raw Ne count                                              the same
//   2, 3    bit 15 lap mark, bits 11-0 VFW                            bit 15 lap mark, bits 14-0 VFW
//   4, 5    bits 15-14 FSUS low, bits 13-12 RSUS low, bits 11-0 VRW   bits 14-0 VRW
//   6       raw TH                                                    the same
//   7, 8    raw FSUS, RSUS: high 8 of 10 bits                         8 bits, taken times 4
//   9, 10   raw LAF1, LAF2                                            the same
//   11, 12  raw AUX1, AUX2                                            unused
//   13      raw VB                                                    unused
//   14      bit 7 sampleFlag, version 2 only                          unused
//   15      unused                                                    unused
#include <algorithm>
#include <cstring>
#include <type_traits>

#include "run_data/log_header.h"
#include "run_data/native_frames.h"
#include "run_data/native_header.h"
#include "run_data/native_scaling.h"
#include "run_data/transpose_frames.h"

template <int version>
static void TakeReadings(SampleBlock& b) {
    constexpr bool firstUnit = IsFirstUnitVersion(version);
    constexpr int speedBits = firstUnit ? 0x7FFF : 0x0FFF;
    constexpr int lowBits = firstUnit ? 0 : 3;  // of the strokes
    auto take = [](auto* cells, auto reading) {
        for (int c = lead; c < blockCells; c++) cells[c] = static_cast<std::remove_pointer_t<decltype(cells)>>(reading(c));
    };
    auto high = [&](int word) { return [cells = b.words[word]](int c) { return cells[c] >> 8; }; };
    auto low = [&](int word) { return [cells = b.words[word]](int c) { return cells[c] & 0xFF; }; };
    take(b.vfw, [&](int c) { return b.words[vfwWord][c] & speedBits; });
    take(b.vrw, [&](int c) { return b.words[vrwWord][c] & speedBits; });
    take(b.fields[throttleField], high(3));
    take(b.throttleRaw, high(3));
    take(b.fields[frontField], [&](int c) { return (b.words[3][c] & 0xFF) << 2 | (b.words[vrwWord][c] >> 14 & lowBits); });
    take(b.fields[rearField], [&](int c) { return b.words[4][c] >> 8 << 2 | (b.words[vrwWord][c] >> 12 & lowBits); });
    take(b.fields[inputFields], low(4));
    take(b.fields[inputFields + 1], high(5));
    if (firstUnit) return;
    take(b.fields[inputFields + 2], low(5));
    take(b.fields[inputFields + 3], high(6));
    take(b.fields[voltageField], low(6));
    if (version == 2) take(b.flag, [&](int c) { return b.words[7][c] >> 15; });
}

// All cells of a block, one frame each.
template <int version>
static void DecodeFixedFrames(SampleBlock& b, const uint8_t* frames) {
    TransposeFrames(frames, b.words);
    TakeReadings<version>(b);
    ScaleReadings(b, version, frames + blockSize * frameSize, blockSize * frameSize);
}

int CountFixedFrames(int length, int limit) { return std::clamp((length - headerSize) / frameSize, 0, limit); }

void ReadFixedFrames(FrameReader& reader, SampleBlock& block) {
    int64_t left = (reader.length - reader.at + frameSize - 1) / frameSize;
    int64_t room = std::min(blockCells, CellOf(block, reader.samples)) - block.first;
    int frames = static_cast<int>(std::clamp<int64_t>(left, 0, std::max<int64_t>(room, 0)));
    block.end = block.first + frames;
    // In the first block the cell of sample 0 takes the end of the header; it is cleared later.
    const uint8_t* first = reader.log + reader.at - (block.first - lead) * frameSize;
    static uint8_t lastFrames[blockSize * frameSize];
    if (block.end < blockCells) {
        std::memcpy(lastFrames, first, (block.end - lead) * frameSize);
        first = lastFrames;
    }
    switch (reader.version) {
        case 1: DecodeFixedFrames<1>(block, first); break;
        case 2: DecodeFixedFrames<2>(block, first); break;
        default: DecodeFixedFrames<0>(block, first); break;  // 32 differs in its tables only
    }
    reader.at += int64_t{frames} * frameSize;
}
