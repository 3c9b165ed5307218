// native_block.h -- samples of a native log on their way into the store, 256 at a time.
//
// A block stays in the first cache while each step of the decoder passes over it, and goes to the slot's arrays in one
// piece. Its steps run over all cells, whether there is a sample in each or not, since loops of a fixed length are what
// compilers turn into vector code; cells without a sample are cleared before anything looks at them. Sample 0 lies in the
// first cell of the first block, so that blocks are aligned in the arrays.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

constexpr int blockSize  = 256;
constexpr int lead       = 16;  // cells in front of the first sample; the last of them holds the sample before the block
constexpr int blockCells = lead + blockSize;

constexpr int frameWords = 8;  // 16 bit words of a fixed frame
// Words of both kinds of frames. Bit 15 of the VFW word is the lap mark; the VRW word carries the strokes' low bits, but for
// version 4.
enum { neWord, vfwWord, vrwWord, maskWord };
// Readings of their own, in the order of a change-mask frame.
enum { throttleField, frontField, rearField, inputFields, voltageField = inputFields + analogInputs, fieldTotal };

// A throttle reading that moves neither extreme, as they start at 120 and 128 and only move apart.
constexpr uint8_t throttleNotSeen = 124;

struct SampleBlock {
    int slot;
    int start;  // sample in the cell `lead`
    int first;  // first cell with a logged sample: lead, in the first block lead + 1
    int end;    // cell behind the last logged sample
    bool trusted;  // the battery was up in all cells, or the version logs none
    bool delivered[analogInputs];  // inputs whose values went straight to the arrays: the cells mean nothing

    // Readings. Fixed frames: all words, [word of a frame][cell]. Change-mask frames: Ne count or delta, VFW and VRW word, mask.
    alignas(16) uint16_t words[frameWords][blockCells];
    alignas(16) uint16_t fields[fieldTotal][blockCells];  // strokes of 10 bits, the others of 8; in version 4 all of 16
    alignas(16) uint8_t  throttleRaw[blockCells];         // 8 bits, also in version 4; or throttleNotSeen

    // Stored values, as in the arrays of the same names; inputs are LAF1, LAF2, AUX1, AUX2.
    alignas(16) uint16_t ne[blockCells];
    alignas(16) uint16_t vfw[blockCells];
    alignas(16) uint16_t vrw[blockCells];
    alignas(16) uint16_t vb[blockCells];
    alignas(16) int16_t  fsus[blockCells];
    alignas(16) int16_t  rsus[blockCells];
    alignas(16) int32_t  th[blockCells];
    alignas(16) int32_t  inputs[analogInputs][blockCells];
    alignas(16) uint32_t lapDistance[blockCells];
    alignas(16) uint32_t distFront[blockCells];
    alignas(16) uint32_t distRear[blockCells];
    alignas(16) uint8_t  flag[blockCells];
};

inline int SampleAt(const SampleBlock& block, int cell) { return block.start + cell - lead; }
inline bool IsFullBlock(const SampleBlock& block) { return block.first == lead && block.end == blockCells; }
// The cell of a sample, held inside the block's cells.
int CellOf(const SampleBlock& block, int sample);
// Makes the block the one of the log's first samples, all cells 0.
void StartBlocks(SampleBlock& block, int slot);
// Moves on to the next samples and keeps the last one as the sample before.
void NextBlock(SampleBlock& block);
// Clears the cells without a logged sample.
void ClearUnusedCells(SampleBlock& block);
// Writes all cells into the slot's arrays, as far as these reach.
void DeliverBlock(const SampleBlock& block);
// Delivers the last block, which has an empty cell, and clears what lies behind it in the arrays. The element behind the
// last sample repeats the distances, and with keepVoltage VB; otherwise it is 0.
void EndBlocks(SampleBlock& block, bool keepVoltage);
