// damage.h -- what cards, cables and hands do to a finished file.
#pragma once
#include <cstdint>
#include <vector>

#include "tools/sample_log/sample_log.h"

// Cuts off the end and turns bits over, as the options ask.
void DamageBytes(std::vector<uint8_t>& bytes, const SampleLogOptions& options);
