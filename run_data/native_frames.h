// native_frames.h -- the frames of a native log, read block by block.
//
// Fixed frames (16 bytes, from 512) and change-mask frames (5 to 32 bytes, from 1024); their layouts stand in
// fixed_frames.cpp and change_mask_frames.cpp.
#pragma once
#include <cstdint>
#include <memory>

#include "run_data/native_block.h"
#include "run_data/spread_frames.h"

constexpr int smallestMaskFrame = 5, largestMaskFrame = 32;  // bytes

// Bytes of a change-mask frame.
int ChangeMaskFrameSize(const uint8_t* frame, int version);
// Complete fixed frames of a log, at most `limit`.
int CountFixedFrames(int length, int limit);
// Bytes of each change-mask frame of a log: finding them is a long chain of look-ups that need not be gone through twice.
struct FrameSteps {
    std::unique_ptr<uint8_t[]> bytes;
    int64_t room = 0;  // bytes at hand; the steps stand in front, behind them is what the walk needs besides
};
// Change-mask frames of a log up to and with one that begins at its end, at most `limit`. -1 when there is no memory.
int WalkChangeMaskFrames(const uint8_t* log, int length, int version, int limit, FrameSteps& steps);

struct FrameReader {
    const uint8_t* log;      // with 1024 zero bytes behind its end
    int64_t        length;
    int            version;
    int            samples;  // at most, sample 0 included
    int64_t        at;       // of the next frame
    const uint8_t* nextStep; // its bytes, change-mask versions
    FrameBefore    before;   // the frame before, change-mask versions
};

FrameReader StartFrames(const uint8_t* log, int64_t length, int version, int samples, const FrameSteps& steps);
// Reads frames into the block's cells from block.first on, until the block is full or the log at its end; sets block.end.
// Fills the readings and the stored values but for the distances. What the other cells hold afterwards means nothing.
void ReadFrames(FrameReader& reader, SampleBlock& block);
void ReadFixedFrames(FrameReader& reader, SampleBlock& block);
void ReadChangeMaskFrames(FrameReader& reader, SampleBlock& block);
