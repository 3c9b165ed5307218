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

#include "run_data/log_header.h"
#include "run_data/look_up.h"
#include "run_data/native_frames.h"
#include "run_data/native_header.h"
#include "run_data/native_tables.h"
#include "run_data/transpose_frames.h"

// Readings that are parts of words.
template <int version>
static void TakeWords(SampleBlock& b) {
    constexpr bool firstUnit = IsFirstUnitVersion(version);
    constexpr int speedBits = firstUnit ? 0x7FFF : 0x0FFF;
    constexpr int lowBits = firstUnit ? 0 : 3;  // of the strokes
    const float divisor = readingTables.neDivisor;
    for (int c = lead; c < blockCells; c++) b.ne[c] = static_cast<uint16_t>(static_cast<int>(b.words[0][c] / divisor));
    for (int c = lead; c < blockCells; c++) b.vfwWord[c] = b.words[1][c];
    for (int c = lead; c < blockCells; c++) b.vfw[c] = b.words[1][c] & speedBits;
    for (int c = lead; c < blockCells; c++) b.vrw[c] = b.words[2][c] & speedBits;
    for (int c = lead; c < blockCells; c++) b.throttleRaw[c] = b.words[3][c] >> 8;
    for (int c = lead; c < blockCells; c++)
        b.frontRaw[c] = static_cast<uint16_t>((b.words[3][c] & 0xFF) << 2 | (b.words[2][c] >> 14 & lowBits));
    for (int c = lead; c < blockCells; c++)
        b.rearRaw[c] = static_cast<uint16_t>(b.words[4][c] >> 8 << 2 | (b.words[2][c] >> 12 & lowBits));
    for (int c = lead; version == 2 && c < blockCells; c++) b.flag[c] = b.words[7][c] >> 15;
}

// Stored values of a reading that is one byte of each frame.
template <class Cell>
static void LookUpBytes(const uint8_t* readings, const Cell* table, Cell* cells) {
    FillCells(cells, table, [=](int c) { return readings[(c - lead) * frameSize]; });
}

// All cells of a block, one frame each.
template <int version>
static void DecodeFixedFrames(SampleBlock& b, const uint8_t* frames) {
    const ReadingTables& t = readingTables;
    TransposeFrames(frames, b.words);
    TakeWords<version>(b);
    FillCells(b.fsus, t.front, [&](int c) { return b.frontRaw[c]; });
    FillCells(b.rsus, t.rear, [&](int c) { return b.rearRaw[c]; });
    LookUpBytes(frames + 6, t.th, b.th);
    LookUpBytes(frames + 9, t.inputs[0], b.inputs[0]);
    LookUpBytes(frames + 10, t.inputs[1], b.inputs[1]);
    if (IsFirstUnitVersion(version)) return;
    LookUpBytes(frames + 11, t.inputs[2], b.inputs[2]);
    LookUpBytes(frames + 12, t.inputs[3], b.inputs[3]);
    LookUpBytes(frames + 13, t.vb, b.vb);
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
