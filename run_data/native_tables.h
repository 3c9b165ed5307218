// native_tables.h -- the stored values of a log's readings, made once per load from native_scaling.h.
//
// Written  by BuildReadingTables when a header has been read; valid while its frames are.
#pragma once
#include <cstdint>

#include "run_data/channels.h"

constexpr int byteReadings   = 256;
constexpr int strokeReadings = 1024;
constexpr int wideReadings   = 65536;

struct ReadingTables {
    float    neDivisor;              // Ne is (raw count / neDivisor), truncated
    int16_t  neDelta[byteReadings];  // by a delta's byte, change-mask versions
    uint16_t vb[byteReadings];
    int32_t  th[byteReadings];
    int32_t  inputs[analogInputs][byteReadings];
    int16_t  front[strokeReadings], rear[strokeReadings];
};
extern ReadingTables readingTables;

// 16 bit readings of version 4: worked out when they come up first, since most never do.
struct WideTables {
    int32_t th[wideReadings];
    int32_t inputs[analogInputs][wideReadings];
    int32_t front[wideReadings], rear[wideReadings];
};
extern WideTables wideTables;
constexpr int32_t notWorkedOut = INT32_MIN;  // no formula gives it

// The table's value of a reading, at first scale(raw).
template <class Scale>
inline int32_t Remember(int32_t* table, int raw, Scale scale) {
    if (table[raw] == notWorkedOut) table[raw] = scale(raw);
    return table[raw];
}

// Tables of a log whose header has been read.
void BuildReadingTables(int slot, int version);
