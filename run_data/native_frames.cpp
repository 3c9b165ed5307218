#include "run_data/native_frames.h"

#include "run_data/log_header.h"
#include "run_data/native_scaling.h"

FrameReader StartFrames(const uint8_t* log, int64_t length, int version, int samples, const FrameSteps& steps) {
    int64_t first = IsChangeMaskVersion(version) ? extendedHeaderSize : headerSize;
    return {log, length, version, samples, first, steps.bytes.get(), {}};
}

void ReadFrames(FrameReader& reader, SampleBlock& block) {
    if (IsChangeMaskVersion(reader.version)) ReadChangeMaskFrames(reader, block);
    else ReadFixedFrames(reader, block);
}
