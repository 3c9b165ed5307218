// Any bytes as a .qtw log: a decoded log or the fixed messages, and the other slots keep their data.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "run_data/secondary_header.h"
#include "run_data/secondary_log.h"
#include "settings/settings.h"

// The whole slot is usable: counts and marks inside their arrays.
static void Check(int slot) {
    const bool sound = sampleCount[slot] >= 1 && sampleCount[slot] < static_cast<int>(Ne[slot].size()) &&
                       lapCount[slot] >= 1 && lapCount[slot] <= lapMarkLimit;
    if (!sound) std::abort();
    for (uint32_t mark : lapStart[slot])
        if (mark > static_cast<uint32_t>(sampleCount[slot])) std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const bool started = (LoadDefaults(), true);
    (void)started;
    if (size < 512) return 0;
    std::vector<uint8_t> log(data, data + size);
    // Most lengths would be hours; a few minutes find as much in less time. Byte 0 means nothing to the reader.
    if (data[0] % 64 != 0) std::fill_n(log.begin() + secondaryHeader::secondsAt, 2, 0);
    log.resize(size + 1024, 0);
    shown.clear();
    Debug = data[1] & 1;  // byte 1 means nothing either
    fileKind[0] = 2;
    const int before = sampleCount[1];
    ReadSecondaryLog(0, log.data(), static_cast<int>(size));
    Check(0);
    if (sampleCount[1] != before) std::abort();
    return 0;
}
