// Change-mask frames of versions 3 and 4, from 1024. A frame is one sample: a 16 bit mask, then the fields in this order.
//
//   BIT   FIELD                    VERSION 3  VERSION 4  BIT CLEAR
//   15    unused
//   14    Ne word, raw count       2          2          1 byte, signed delta
//   13    VFW word                 2          2          1 byte, signed delta on the whole word
//   12    VRW word                 2          2          1 byte, signed delta on the whole word
//   11-4  TH, FSUS, RSUS, LAF1,    1          2          absent
//         LAF2, AUX1, AUX2, VB
//   3     bit 7 is sampleFlag      1          1          absent
//   2-0   unused                   1, 2, 4    1, 2, 4    absent
//
// VFW word: bit 15 lap mark, bits 14-0 speed. VRW word: bits 11-0 speed; version 3 has the low bits of FSUS in bits 15-14
// and those of RSUS in bits 13-12. What is absent repeats the value before; all values before the first are 0.
//
// Frames have no common size: frame_walk.cpp finds their places, spread_frames.cpp their fields.
#include <algorithm>

#include "run_data/frame_sizes.h"
#include "run_data/native_frames.h"
#include "run_data/native_scaling.h"
#include "run_data/spread_frames.h"
#include "settings/settings.h"

int ChangeMaskFrameSize(const uint8_t* frame, int version) { return static_cast<int>(FrameSize(SizesFor(version), frame)); }

// First cell whose frame has a field; the block's end without one.
static int FirstWith(const SampleBlock& b, int field) {
    int c = b.first;
    while (c < b.end && !(b.words[maskWord][c] >> FieldBit(field) & 1)) c++;
    return c;
}

// Until a field comes in this block, its stored value is that of the sample before. Mostly its reading gives the same; not so
// where none has come in the log yet, as reading 0 is no value 0, or where the value before was not believed.
static void HoldUntilFirst(const SampleBlock& b, int field, int32_t* cells) {
    const int32_t before = cells[b.first - 1];
    if (cells[b.first] != before) std::fill(cells + b.first, cells + FirstWith(b, field), before);
}

// The strokes' low bits come with each VRW word.
static void AddLowBits(SampleBlock& b) {
    for (int c = lead; c < blockCells; c++)
        b.fields[frontField][c] = static_cast<uint16_t>(b.fields[frontField][c] << 2 | b.words[vrwWord][c] >> 14);
    for (int c = lead; c < blockCells; c++)
        b.fields[rearField][c] = static_cast<uint16_t>(b.fields[rearField][c] << 2 | (b.words[vrwWord][c] >> 12 & 3));
}

static void TakeSpeeds(SampleBlock& b) {
    for (int c = lead; c < blockCells; c++) b.vfw[c] = b.words[vfwWord][c] & 0x7FFF;
    for (int c = lead; c < blockCells; c++) b.vrw[c] = b.words[vrwWord][c] & 0x0FFF;
}

// Kept: the throttle is judged by the voltage of the frame before, and its value by none in the first second.
static void JudgeThrottle(SampleBlock& b, int version) {
    const int toEightBits = version == 4 ? 8 : 0;
    alignas(16) uint16_t trusted[blockCells];  // all bits or none
    uint16_t always = 0xFFFF;
    for (int c = lead; c < blockCells; c++) trusted[c] = b.vb[c - 1] >= trustedVoltage ? 0xFFFF : 0;
    for (int c = lead; c < blockCells; c++) always &= trusted[c];
    for (int c = lead; c < blockCells; c++) {
        int counts = trusted[c] & -(b.words[maskWord][c] >> FieldBit(throttleField) & 1);
        int raw = b.fields[throttleField][c] >> toEightBits;
        b.throttleRaw[c] = static_cast<uint8_t>((raw & counts) | (throttleNotSeen & ~counts));
    }
    if (always) return HoldUntilFirst(b, throttleField, b.th);
    std::fill(trusted + lead, trusted + (VBerrexp ? blockCells : CellOf(b, 200)), 0xFFFF);
    int32_t before = b.th[b.first - 1];
    for (int c = b.first; c < b.end; c++) {
        int32_t taken = b.th[c] & static_cast<int16_t>(trusted[c]);
        before = b.words[maskWord][c] & 1 << FieldBit(throttleField) ? taken : before;
        b.th[c] = before;
    }
}

// Frames for the block from those left: sets block.end and returns their bytes.
static int64_t CountFrames(const FrameReader& reader, SampleBlock& block) {
    const int64_t left = reader.length - reader.at;
    const uint8_t* step = reader.nextStep;
    int64_t bytes = 0;
    int c = block.first;
    for (int stop = CellOf(block, reader.samples); c < stop && bytes < left; c++) bytes += *step++;
    block.end = c;
    return bytes;
}

void ReadChangeMaskFrames(FrameReader& reader, SampleBlock& block) {
    const int64_t bytes = CountFrames(reader, block);
    SpreadFrames(reader.log + reader.at, reader.nextStep, reader.version, reader.before, block);
    reader.at += bytes;
    reader.nextStep += block.end - block.first;
    TakeSpeeds(block);
    if (reader.version == 3) AddLowBits(block);
    ScaleReadings(block, reader.version, reader.log + reader.at, bytes);
    ClearUnusedCells(block);  // what the first frame repeats is 0
    for (int input = 0; input < analogInputs; input++) HoldUntilFirst(block, inputFields + input, block.inputs[input]);
    JudgeThrottle(block, reader.version);
}
