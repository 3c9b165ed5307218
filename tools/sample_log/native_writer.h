// native_writer.h -- writes samples as the logger unit stores them, in each of its six formats.
//
// Layout   versions 0, 32, 1, 2: a header of 512 bytes, then 16 bytes a sample. Versions 3, 4: a header of 1024 bytes,
//          then frames that begin with a mask of what follows and carry only what changed. Numbers are big-endian.
#pragma once
#include <cstdint>
#include <vector>

#include "tools/sample_log/bike.h"
#include "tools/sample_log/sample_log.h"

// Readings as the unit takes them: 8, 10 or 16 bits, by version.
struct RawSample {
    int  ne, vfw, vrw;
    int  fields[8];  // TH, FSUS, RSUS, LAF1, LAF2, AUX1, AUX2, VB: the order of the change mask
    bool mark, flag;
};

struct NativeWriter {
    SampleLogOptions     options;
    std::vector<uint8_t> bytes;
    RawSample            last;       // what the change mask compares with
    int                  neWord, vfwWord, vrwWord, flagByte;
    int                  frames;
};

NativeWriter StartNativeLog(const SampleLogOptions& options);
void AppendSample(NativeWriter& writer, const BikeSample& sample);
