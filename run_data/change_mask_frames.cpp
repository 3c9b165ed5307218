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
// Frames have no common size, so their places are found one after the other; all else goes field by field, in loops too
// short to stall.
#include <algorithm>
#include <new>

#include "run_data/byte_order.h"
#include "run_data/log_header.h"
#include "run_data/native_frames.h"
#include "run_data/native_scaling.h"
#include "run_data/native_tables.h"
#include "settings/settings.h"

// Bytes of a frame by the mask's first and second byte.
struct FrameSizes {
    uint8_t high[256], low[256];
};
static constexpr FrameSizes SizesOf(int version) {
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
static constexpr FrameSizes byteFrameSizes = SizesOf(3), wideFrameSizes = SizesOf(4);
static size_t FrameSize(const FrameSizes& sizes, const uint8_t* frame) {
    return size_t{sizes.high[frame[0]]} + size_t{sizes.low[frame[1]]};
}
static const FrameSizes& SizesFor(int version) { return version == 4 ? wideFrameSizes : byteFrameSizes; }

int ChangeMaskFrameSize(const uint8_t* frame, int version) { return static_cast<int>(FrameSize(SizesFor(version), frame)); }

int WalkChangeMaskFrames(const uint8_t* log, int length, int version, int limit, FrameSteps& steps) {
    steps.reset();
    if (length < extendedHeaderSize) return 0;
    limit = std::min(limit, (length - extendedHeaderSize) / smallestMaskFrame + 1);
    steps.reset(new (std::nothrow) uint8_t[limit]);
    if (!steps) return -1;
    const FrameSizes& sizes = SizesFor(version);
    const uint8_t *frame = log + extendedHeaderSize, *end = log + length;
    int frames = 0;
    // Kept: a frame that begins right at the end counts.
    for (uint8_t* step = steps.get(); frame <= end && frames < limit; frames++) {
        size_t size = FrameSize(sizes, frame);
        step[frames] = static_cast<uint8_t>(size);
        frame += size;
    }
    return frames;
}

// The frames of a block: their masks, and where each one's next field stands.
struct FrameList {
    const uint8_t* base;  // first frame of the block
    int first, end;       // cells
    alignas(16) uint16_t mask[blockCells];
    alignas(16) uint16_t next[blockCells];  // bytes behind base; 256 of the largest frames are 8192
};

static void ListFrames(FrameReader& reader, FrameList& f, int stop) {
    const uint8_t* base = f.base = reader.log + reader.at;
    const uint8_t* step = reader.nextStep;
    int64_t left = reader.length - reader.at;
    unsigned at = 0;
    int c = f.first;
    for (; c < stop && at < left; c++) {
        __builtin_prefetch(base + at + 4096);
        f.mask[c] = ReadU16Be(base + at);
        f.next[c] = static_cast<uint16_t>(at + 2);
        at += *step++;
    }
    reader.at += at;
    reader.nextStep = step;
    f.end = c;
}

// Steps over a field of all frames.
static void StepOver(FrameList& f, int bit, int bytes, int bytesIfClear = 0) {
    for (int c = lead; c < blockCells; c++)
        f.next[c] += static_cast<uint16_t>(bytesIfClear + (f.mask[c] >> bit & 1) * (bytes - bytesIfClear));
}

// Takes a field of all frames: value(its bytes) where the mask has it, the cell before where not; returns the last. Whether a field is there
// is as good as random, so no branch is spent on it.
template <class T, class Value>
static T TakeField(const FrameList& f, int bit, T* cells, T before, Value value) {
    const uint8_t* base = f.base;
#pragma GCC unroll 4
    for (int c = f.first, end = f.end; c < end; c++) {
        T taken = static_cast<T>(value(base + f.next[c]));
        before = f.mask[c] & 1 << bit ? taken : before;
        cells[c] = before;
    }
    return before;
}

// Takes a word of all frames: absolute(bytes) where the mask says so, else the word before plus delta(byte).
template <class Absolute, class Delta>
static void TakeWord(FrameList& f, int bit, uint16_t* cells, Absolute absolute, Delta delta) {
    uint16_t before = cells[f.first - 1];
    const uint8_t* base = f.base;
#pragma GCC unroll 4
    for (int c = f.first, end = f.end; c < end; c++) {
        const uint8_t* p = base + f.next[c];
        uint16_t word = static_cast<uint16_t>(absolute(p)), sum = static_cast<uint16_t>(before + delta(*p));
        uint16_t chosen = static_cast<uint16_t>(-(f.mask[c] >> bit & 1));  // all bits or none, as a branch would often be missed
        before = static_cast<uint16_t>((word & chosen) | (sum & ~chosen));
        cells[c] = before;
    }
    StepOver(f, bit, 2, 1);
}

static void TakeWords(FrameList& f, SampleBlock& b) {
    const ReadingTables& t = readingTables;
    auto speedDelta = [](uint8_t byte) { return static_cast<int8_t>(byte); };
    auto count = [&](const uint8_t* p) { return static_cast<int>(ReadU16Be(p) / t.neDivisor); };
    TakeWord(f, 14, b.ne, count, [&](uint8_t byte) { return t.neDelta[byte]; });
    TakeWord(f, 13, b.vfwWord, ReadU16Be, speedDelta);
    TakeWord(f, 12, b.vrwWord, ReadU16Be, speedDelta);
    for (int c = lead; c < blockCells; c++) b.vfw[c] = b.vfwWord[c] & 0x7FFF;
    for (int c = lead; c < blockCells; c++) b.vrw[c] = b.vrwWord[c] & 0x0FFF;
}

// The throttle, once VB is known; raw and scaled hold it where it is present. Kept: it is judged by the voltage of the
// frame before, and by none in the first second.
static void JudgeThrottle(const FrameList& f, SampleBlock& b, const uint16_t* raw, int toEightBits, const int32_t* scaled) {
    alignas(16) uint16_t trusted[blockCells];  // all bits or none
    for (int c = lead; c < blockCells; c++) trusted[c] = b.vb[c - 1] >= trustedVoltage ? 0xFFFF : 0;
    for (int c = lead; c < blockCells; c++) {
        int counts = trusted[c] & -(f.mask[c] >> 11 & 1);
        b.throttleRaw[c] = static_cast<uint8_t>((raw[c] >> toEightBits & counts) | (throttleNotSeen & ~counts));
    }
    std::fill(trusted + lead, trusted + (VBerrexp ? blockCells : CellOf(b, 200)), 0xFFFF);
    int32_t before = b.th[f.first - 1];
    for (int c = f.first, end = f.end; c < end; c++) {
        int32_t taken = scaled[c] & static_cast<int16_t>(trusted[c]);
        before = f.mask[c] & 1 << 11 ? taken : before;
        b.th[c] = before;
    }
}

static void TakeByteFields(FrameList& f, SampleBlock& b) {
    const ReadingTables& t = readingTables;
    alignas(16) uint16_t throttle[blockCells];
    alignas(16) int32_t scaledThrottle[blockCells];
    auto byte = [](const uint8_t* p) { return *p; };
    TakeField<uint16_t>(f, 11, throttle, 0, byte);
    StepOver(f, 11, 1);
    // The low bits of the strokes come with each VRW word.
    TakeField<uint16_t>(f, 10, b.frontRaw, b.frontRaw[f.first - 1] >> 2, byte);
    StepOver(f, 10, 1);
    TakeField<uint16_t>(f, 9, b.rearRaw, b.rearRaw[f.first - 1] >> 2, byte);
    StepOver(f, 9, 1);
    for (int c = lead; c < blockCells; c++) b.frontRaw[c] = static_cast<uint16_t>(b.frontRaw[c] << 2 | b.vrwWord[c] >> 14);
    for (int c = lead; c < blockCells; c++) b.rearRaw[c] = static_cast<uint16_t>(b.rearRaw[c] << 2 | (b.vrwWord[c] >> 12 & 3));
    for (int input = 0; input < analogInputs; input++) {
        int32_t* cells = b.inputs[input];
        TakeField(f, 8 - input, cells, cells[f.first - 1], [table = t.inputs[input]](const uint8_t* p) { return table[*p]; });
        StepOver(f, 8 - input, 1);
    }
    TakeField(f, 4, b.vb, b.vb[f.first - 1], [&](const uint8_t* p) { return t.vb[*p]; });
    StepOver(f, 4, 1);
    TakeField(f, 3, b.flag, b.flag[f.first - 1], [](const uint8_t* p) { return *p >> 7; });
    for (int c = f.first, end = f.end; c < end; c++) b.fsus[c] = t.front[b.frontRaw[c]];
    for (int c = f.first, end = f.end; c < end; c++) b.rsus[c] = t.rear[b.rearRaw[c]];
    for (int c = f.first, end = f.end; c < end; c++) scaledThrottle[c] = t.th[throttle[c]];
    JudgeThrottle(f, b, throttle, 0, scaledThrottle);
}

// An input of all frames, by value(its reading). Where there is none, other bytes would be looked up all over the large
// table: reading 0 is, which is never far.
template <class Value>
static void TakeWideInput(const FrameList& f, int bit, int32_t* cells, Value value) {
    int32_t before = cells[f.first - 1];
    const uint8_t* base = f.base;
#pragma GCC unroll 4
    for (int c = f.first, end = f.end; c < end; c++) {
        int present = -(f.mask[c] >> bit & 1);  // all bits or none
        int32_t taken = value(ReadU16Be(base + f.next[c]) & present);
        before = present ? taken : before;
        cells[c] = before;
    }
}

static void TakeWideFields(FrameList& f, SampleBlock& b) {
    WideTables& t = wideTables;
    int slot = b.slot;
    const StrokeSensor front = FrontSensor(slot), rear = RearSensor(slot);
    alignas(16) uint16_t throttle[blockCells];
    alignas(16) int32_t scaledThrottle[blockCells];
    TakeField<uint16_t>(f, 11, throttle, 0, ReadU16Be);
    StepOver(f, 11, 2);
    TakeField(f, 10, b.frontRaw, b.frontRaw[f.first - 1], ReadU16Be);
    StepOver(f, 10, 2);
    TakeField(f, 9, b.rearRaw, b.rearRaw[f.first - 1], ReadU16Be);
    StepOver(f, 9, 2);
    for (int input = 0; input < analogInputs; input++) {
        int32_t* cells = b.inputs[input];
        auto scale = [=](int raw) { return ScaleInput(slot, input, raw, 4); };
        TakeWideInput(f, 8 - input, cells, [=](int raw) { return Remember(wideTables.inputs[input], raw, scale); });
        StepOver(f, 8 - input, 2);
    }
    TakeField(f, 4, b.vbRaw, b.vbRaw[f.first - 1], ReadU16Be);
    StepOver(f, 4, 2);
    for (int c = lead; c < blockCells; c++) b.vb[c] = static_cast<uint16_t>(ScaleVoltage(b.vbRaw[c], 4));
    TakeField(f, 3, b.flag, b.flag[f.first - 1], [](const uint8_t* p) { return *p >> 7; });
    for (int c = f.first, end = f.end; c < end; c++)
        b.fsus[c] = static_cast<int16_t>(Remember(t.front, b.frontRaw[c], [&](int raw) { return ScaleStroke(front, raw, 4); }));
    for (int c = f.first, end = f.end; c < end; c++)
        b.rsus[c] = static_cast<int16_t>(Remember(t.rear, b.rearRaw[c], [&](int raw) { return ScaleStroke(rear, raw, 4); }));
    for (int c = f.first, end = f.end; c < end; c++)
        scaledThrottle[c] = Remember(t.th, throttle[c], [&](int raw) { return ScaleThrottle(slot, raw, 4); });
    JudgeThrottle(f, b, throttle, 8, scaledThrottle);
}

void ReadChangeMaskFrames(FrameReader& reader, SampleBlock& block) {
    static FrameList frames;
    frames.first = block.first;
    int stop = CellOf(block, reader.samples);
    ListFrames(reader, frames, stop);
    TakeWords(frames, block);
    if (reader.version == 4) {
        TakeWideFields(frames, block);
    } else {
        TakeByteFields(frames, block);
    }
    block.end = frames.end;
}
