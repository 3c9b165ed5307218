// transpose_frames.h -- from frames of 16 bytes to columns of 16 bit words.
#pragma once
#include <cstdint>

#include "run_data/native_block.h"

// Puts word k (big-endian) of frame i, of a block of frames, into words[k][lead + i].
void TransposeFrames(const uint8_t* frames, uint16_t (&words)[frameWords][blockCells]);
// The same without vectors: what TransposeFrames is on other machines.
void TransposeFramesPlain(const uint8_t* frames, uint16_t (&words)[frameWords][blockCells]);
