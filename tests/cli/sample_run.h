// sample_run.h -- made-up logs as files for the command line's tests.
#pragma once
#include <string>
#include <vector>

#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

// Returns the file's path.
inline std::string WriteSampleRun(TestFolder& folder, const char* name, const SampleLogOptions& options) {
    const std::vector<uint8_t> bytes = MakeSampleLog(options);
    return folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}
