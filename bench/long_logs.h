// long_logs.h -- logs of 8 hours for the benchmarks, each made once in a run.
#pragma once
#include <cstdint>
#include <string>
#include <vector>

// The bytes of a native log of a version, in frames of 5 ms.
const std::vector<uint8_t>& LongNativeLog(int version);
// The bytes of a .qtw log; every channel at `intervalMs`, or at an interval of its own when that is 0.
const std::vector<uint8_t>& LongSecondaryLog(int intervalMs);
// A native log as a file, which goes away at the end of the run.
const std::string& LongNativeFile(int version);
