// csv_log.h -- imports CSV logs.
#pragma once
#include <cstdint>

// Decodes the file in `buffer` (`length` bytes, and at least 1024 zero bytes behind them) into the slot. 0 done; 1 the
// type is refused, the user was told and the slot is untouched.
int ReadCsvLog(int slot, const uint8_t* buffer, int length);
