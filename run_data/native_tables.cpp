#include "run_data/native_tables.h"

#include <algorithm>
#include <iterator>

#include "run_data/native_scaling.h"

ReadingTables readingTables;
WideTables wideTables;

// Counts and deltas of the engine speed. A float holds 16 bits divided by 8 exactly enough: what is no whole number keeps
// away from the next one by more than it rounds.
static void BuildEngineSpeed(ReadingTables& t, int divider) {
    t.neDivisor = divider == 0 ? 0.5f : static_cast<float>(divider);
    for (int byte = 0; byte < byteReadings; byte++)
        t.neDelta[byte] = static_cast<int16_t>(ScaleEngineSpeed(static_cast<int8_t>(byte), divider));
}

static void ForgetWideReadings(WideTables& t) {
    std::fill(std::begin(t.th), std::end(t.th), notWorkedOut);
    for (auto& input : t.inputs) std::fill(std::begin(input), std::end(input), notWorkedOut);
    std::fill(std::begin(t.front), std::end(t.front), notWorkedOut);
    std::fill(std::begin(t.rear), std::end(t.rear), notWorkedOut);
}

static void BuildByteReadings(ReadingTables& t, int slot, int version) {
    for (int raw = 0; raw < byteReadings; raw++) {
        t.vb[raw] = static_cast<uint16_t>(ScaleVoltage(raw, version));
        t.th[raw] = ScaleThrottle(slot, raw, version);
        for (int input = 0; input < analogInputs; input++) t.inputs[input][raw] = ScaleInput(slot, input, raw, version);
    }
}

static void BuildStrokes(ReadingTables& t, int slot, int version) {
    StrokeSensor front = FrontSensor(slot), rear = RearSensor(slot);
    for (int raw = 0; raw < strokeReadings; raw++) {
        t.front[raw] = ScaleStroke(front, raw, version);
        t.rear[raw] = ScaleStroke(rear, raw, version);
    }
}

void BuildReadingTables(int slot, int version) {
    BuildEngineSpeed(readingTables, neDivider[slot]);
    if (version == 4) {
        ForgetWideReadings(wideTables);
    } else {
        BuildByteReadings(readingTables, slot, version);
        BuildStrokes(readingTables, slot, version);
    }
}
