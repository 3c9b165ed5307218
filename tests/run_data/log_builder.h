// log_builder.h -- small native logs, made byte by byte in the test that reads them.
#pragma once
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

#include "run_data/log_header.h"
#include "run_data/native_log.h"

using LogBytes = std::vector<uint8_t>;

inline void Put16(LogBytes& log, int at, int value) {
    log[at] = static_cast<uint8_t>(value >> 8);
    log[at + 1] = static_cast<uint8_t>(value);
}
inline void PutText(LogBytes& log, int at, const char* text) { std::memcpy(log.data() + at, text, std::strlen(text)); }

// A header with one pulse per turn, throttle readings 0 to 200, strokes with their zero at the top of the scale, volts on
// all analog inputs, one mark per lap and 9.49 V for a mark.
inline LogBytes HeaderOf(int version) {
    LogBytes log(version == 3 || version == 4 ? extendedHeaderSize : headerSize, 0);
    PutText(log, typeMarkAt, "3ZrvetV9.01.10");
    log[versionAt] = static_cast<uint8_t>(version);
    log[neDividerAt] = 1;
    log[frontPulsesAt] = 20;
    Put16(log, frontTyreAt, 1900);
    log[rearPulsesAt] = 4;
    Put16(log, rearTyreAt, 2000);
    log[frontSprocketAt] = 16;
    log[rearSprocketAt] = 42;
    log[marksPerLapAt] = 1;
    log[tpsOpenAt] = 200;
    Put16(log, tpsSpanAt, 50);
    log[fsusZeroHighAt] = log[rsusZeroHighAt] = 255;
    log[fsusZeroLowAt] = log[rsusZeroLowAt] = 0xC0;
    log[lapVoltageAt] = 121;
    for (int i = 0; i < 14; i++) log[teethAt + i] = static_cast<uint8_t>(30 + i);
    for (int input = 0; input < 4; input++) log[analogTypeAt + input] = 1;
    return log;
}

// The fixed frame of a sample, from 1 on.
inline uint8_t* FrameOf(LogBytes& log, int sample) { return log.data() + headerSize + frameSize * (sample - 1); }

constexpr uint8_t goodBattery = 170;  // 13.33 V

// A log of fixed frames that are all 0, but for a good battery.
inline LogBytes QuietLog(int version, int frames) {
    LogBytes log = HeaderOf(version);
    log.resize(headerSize + frameSize * frames, 0);
    for (int sample = 1; sample <= frames; sample++) FrameOf(log, sample)[13] = goodBattery;
    return log;
}
inline void SetMark(LogBytes& log, int sample) { FrameOf(log, sample)[2] |= 0x80; }

// One change-mask frame: what is not set is absent, or a delta for the three words.
struct MaskFrame {
    std::optional<int> ne, vfw, vrw;  // absolute words
    int neDelta = 0, vfwDelta = 0, vrwDelta = 0;
    std::optional<int> th, fsus, rsus, laf1, laf2, aux1, aux2, vb;
    std::optional<int> flag;
    bool unused1 = false, unused2 = false, unused4 = false;  // the fields of 1, 2 and 4 bytes
};
inline void AddFrame(LogBytes& log, const MaskFrame& f) {
    size_t start = log.size();
    int mask = 0, bit = 14;
    bool wide = log[versionAt] == 4;
    auto add = [&](int value, int bytes) {
        while (bytes-- > 0) log.push_back(static_cast<uint8_t>(value >> 8 * bytes));
    };
    add(0, 2);
    auto word = [&](const std::optional<int>& absolute, int delta) {
        if (absolute) mask |= 1 << bit;
        add(absolute.value_or(delta), absolute ? 2 : 1);
        bit--;
    };
    auto field = [&](const std::optional<int>& value, int bytes) {
        if (value) mask |= 1 << bit, add(*value, bytes);
        bit--;
    };
    auto unused = [](bool here) { return here ? std::optional<int>(0x5A5A5A5A) : std::nullopt; };
    word(f.ne, f.neDelta);
    word(f.vfw, f.vfwDelta);
    word(f.vrw, f.vrwDelta);
    for (const auto& value : {f.th, f.fsus, f.rsus, f.laf1, f.laf2, f.aux1, f.aux2, f.vb}) field(value, wide ? 2 : 1);
    field(f.flag, 1);
    field(unused(f.unused1), 1);
    field(unused(f.unused2), 2);
    field(unused(f.unused4), 4);
    Put16(log, static_cast<int>(start), mask);
}
inline void AddFrames(LogBytes& log, int count, const MaskFrame& frame) {
    while (count-- > 0) AddFrame(log, frame);
}

// Reads a log as LoadFile does, with 1024 zero bytes behind its end and nothing behind those.
inline void ReadIntoSlot(int slot, LogBytes log) {
    int length = static_cast<int>(log.size());
    log.resize(length + 1024, 0);
    log.shrink_to_fit();
    ReadNativeLog(slot, log.data(), length);
}
