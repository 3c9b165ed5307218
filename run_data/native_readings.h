// native_readings.h -- what a native log's readings tell beyond the samples: whether the battery was up, how far throttle
// and strokes went, how large the log would be as change-mask frames.
#pragma once
#include "run_data/native_block.h"

// Sets block.trusted. Throttle (of versions 1 and 2) and strokes read 0 where the battery is too low to believe them,
// unless VBerrexp.
void JudgeVoltage(SampleBlock& block, int version);
// Moves tpsMinSeen, tpsMaxSeen, fsusMaxSeen and rsusMaxSeen of the slot. capacity is that of the log's arrays, in samples.
void TrackExtremes(const SampleBlock& block, int version, int capacity);
// Adds the block to nativeSizeEstimate.
void EstimateSize(const SampleBlock& block);
