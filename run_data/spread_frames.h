// spread_frames.h -- from change-mask frames to columns: every field of every frame in its own place.
#pragma once
#include <cstdint>

#include "run_data/native_block.h"

// The mask's bit of a word (Ne, VFW, VRW), and of a field; change_mask_frames.cpp has the layout.
constexpr int WordBit(int word) { return 14 - word; }
constexpr int FieldBit(int field) { return 11 - field; }

// What absent fields repeat: the readings of the frame before.
struct FrameBefore {
    alignas(16) uint16_t words[8];  // of words, as in a block; the upper half means nothing
    alignas(16) uint16_t fields[fieldTotal];
    uint8_t flag;
};

// Reads block.end - block.first frames from `frames` on, of steps[i] bytes each, into the cells from block.first on: words,
// fields and flag of the block, an absent field being that of the frame before. words[neWord] is the count where the mask
// has it, and else the delta, signed. Reads up to 16 bytes behind a frame's fields. Fields of cells without a frame
// are 0.
void SpreadFrames(const uint8_t* frames, const uint8_t* steps, int version, FrameBefore& before, SampleBlock& block);
// The same one field after the other: what SpreadFrames does where the machine cannot shuffle bytes.
void SpreadFramesPlain(const uint8_t* frames, const uint8_t* steps, int version, FrameBefore& before, SampleBlock& block);
