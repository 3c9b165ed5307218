#include "tools/sample_log/damage.h"

#include <algorithm>

#include "tools/sample_log/random.h"

void DamageBytes(std::vector<uint8_t>& bytes, const SampleLogOptions& options) {
    bytes.resize(bytes.size() - std::min<size_t>(bytes.size(), std::max(options.truncateBytes, 0)));
    Random random{options.seed ^ 0x5EEDu};
    for (int k = 0; k < options.flipBits && !bytes.empty(); k++) {
        const uint64_t bit = RandomBelow(random, bytes.size() * 8);
        bytes[bit / 8] ^= static_cast<uint8_t>(1 << bit % 8);
    }
}
