#include "run_data/native_log.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

#include "run_data/byte_order.h"
#include "run_data/derived_channels.h"
#include "run_data/log_header.h"
#include "run_data/native_header.h"
#include "run_data/native_scaling.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

int nativeSizeEstimate;

void DefaultNativeLog() { nativeSizeEstimate = 0; }

constexpr int nativeSampleLimit = 21400000;  // cursorPos counts hundredths of a sample in 32 bits

// Bytes of a change-mask frame.
static int ChangeMaskFrameSize(const uint8_t* frame, int version) {
    int mask = ReadU16Be(frame);
    int wide = version == 4 ? 2 : 1;
    int size = 2;
    for (int bit = 14; bit >= 12; bit--) size += mask >> bit & 1 ? 2 : 1;
    for (int bit = 11; bit >= 4; bit--) size += mask >> bit & 1 ? wide : 0;
    return size + (mask >> 3 & 1) + (mask >> 2 & 1) + (mask >> 1 & 1) * 2 + (mask & 1) * 4;
}

static int CountFrames(const uint8_t* log, int length, int version) {
    int frames = 0;
    if (length < extendedHeaderSize) return 0;
    for (int64_t at = extendedHeaderSize; at <= length && frames < nativeSampleLimit; frames++)
        at += ChangeMaskFrameSize(log + at, version);
    return frames;
}

namespace {
// What the frame loop carries from sample to sample.
struct Decoder {
    int slot, version, capacity;
    int lap;         // index of the next mark
    int lapVoltage;  // 0.01 V a mark needs
    StrokeSensor front, rear;
    uint16_t vfwWord, vrwWord;
    int frontRaw, rearRaw;
};
}  // namespace

static bool Trusted(int voltage) { return VBerrexp || voltage >= trustedVoltage; }

static void TrackThrottle(const Decoder& d, int i, int raw, int voltage) {
    if (i < 201 || i >= d.capacity - 200 || voltage <= 900) return;
    int raw8 = d.version == 4 ? raw / 256 : raw;
    tpsMinSeen[d.slot] = std::min(tpsMinSeen[d.slot], raw8);
    tpsMaxSeen[d.slot] = std::max(tpsMaxSeen[d.slot], raw8);
}

static void TrackStroke(const Decoder& d, const StrokeSensor& sensor, int i, int raw, int voltage, int& seen) {
    int raw10 = d.version == 4 ? raw / 64 : raw;
    bool falls = sensor.type == 1 && sensor.stroke < 0 && d.version != 0;
    if (i < 200) seen = raw10;
    else if (voltage > 900) seen = falls ? std::min(seen, raw10) : std::max(seen, raw10);
}

static void DecodeStrokes(Decoder& d, int i) {
    int s = d.slot;
    bool first = IsFirstUnitVersion(d.version);
    int voltage = first ? 65535 : VB[s][i];
    FSUS[s][i] = Trusted(voltage) ? ScaleStroke(d.front, d.frontRaw, d.version) : 0;
    RSUS[s][i] = Trusted(voltage) ? ScaleStroke(d.rear, d.rearRaw, d.version) : 0;
    if (d.version == 32) return;
    TrackStroke(d, d.front, i, d.frontRaw, voltage, fsusMaxSeen[s]);
    TrackStroke(d, d.rear, i, d.rearRaw, voltage, rsusMaxSeen[s]);
}

static SampleArray<int32_t>& InputArray(int slot, int input) {
    return input == 0 ? LAF1[slot] : input == 1 ? LAF2[slot] : input == 2 ? AUX1[slot] : AUX2[slot];
}

static void DecodeFirstUnitFrame(Decoder& d, const uint8_t* frame, int i) {
    int s = d.slot;
    Ne[s][i] = WrapU16(ScaleEngineSpeed(ReadU16Be(frame), neDivider[s]));
    TH[s][i] = ScaleThrottle(s, frame[6], d.version);
    d.vfwWord = ReadU16Be(frame + 2);
    VFW[s][i] = d.vfwWord & 0x7FFF;
    VRW[s][i] = ReadU16Be(frame + 4) & 0x7FFF;
    d.frontRaw = frame[7] * 4;
    d.rearRaw = frame[8] * 4;
    DecodeStrokes(d, i);
    LAF1[s][i] = ScaleAnalog(s, 0, frame[9], d.version);
    LAF2[s][i] = ScaleAnalog(s, 1, frame[10], d.version);
}

static void DecodeFixedFrame(Decoder& d, const uint8_t* frame, int i) {
    int s = d.slot;
    VB[s][i] = ScaleVoltage(frame[13], d.version);
    Ne[s][i] = WrapU16(ScaleEngineSpeed(ReadU16Be(frame), neDivider[s]));
    TH[s][i] = Trusted(VB[s][i]) ? ScaleThrottle(s, frame[6], d.version) : 0;
    TrackThrottle(d, i, frame[6], VB[s][i]);
    d.vfwWord = ReadU16Be(frame + 2);
    d.vrwWord = ReadU16Be(frame + 4);
    d.frontRaw = frame[7] * 4 + (d.vrwWord >> 14);
    d.rearRaw = frame[8] * 4 + (d.vrwWord >> 12 & 3);
    DecodeStrokes(d, i);
    VFW[s][i] = d.vfwWord & 0x0FFF;
    VRW[s][i] = d.vrwWord & 0x0FFF;
    for (int input = 0; input < analogInputs; input++)
        InputArray(s, input)[i] = ScaleAnalog(s, input, frame[9 + input], d.version);
    if (d.version == 2) sampleFlag[s][i] = frame[14] >> 7;
}

static int ReadWide(const uint8_t*& p, int version) {
    int value = version == 4 ? ReadU16Be(p) : *p;
    p += version == 4 ? 2 : 1;
    return value;
}

static uint16_t ReadWord(const uint8_t*& p, bool absolute, uint16_t previous) {
    if (!absolute) return WrapU16(previous + static_cast<int8_t>(*p++));
    p += 2;
    return ReadU16Be(p - 2);
}

static void DecodeChangeMaskFrame(Decoder& d, const uint8_t* p, int i) {
    int s = d.slot;
    int mask = ReadU16Be(p);
    p += 2;
    if (mask & 1 << 14) {
        Ne[s][i] = WrapU16(ScaleEngineSpeed(ReadU16Be(p), neDivider[s]));
        p += 2;
    } else {
        Ne[s][i] = WrapU16(Ne[s][i - 1] + ScaleEngineSpeed(static_cast<int8_t>(*p++), neDivider[s]));
    }
    d.vfwWord = ReadWord(p, mask & 1 << 13, d.vfwWord);
    d.vrwWord = ReadWord(p, mask & 1 << 12, d.vrwWord);
    VFW[s][i] = d.vfwWord & 0x7FFF;
    VRW[s][i] = d.vrwWord & 0x0FFF;
    TH[s][i] = TH[s][i - 1];
    if (mask & 1 << 11) {
        int raw = ReadWide(p, d.version);
        TH[s][i] = i < 200 || Trusted(VB[s][i]) ? ScaleThrottle(s, raw, d.version) : 0;
        TrackThrottle(d, i, raw, VB[s][i]);
    }
    int low = d.version == 3 ? 4 : 1;
    if (mask & 1 << 10) d.frontRaw = ReadWide(p, d.version) * low;
    if (mask & 1 << 9) d.rearRaw = ReadWide(p, d.version) * low;
    if (d.version == 3) {
        d.frontRaw = (d.frontRaw & ~3) | d.vrwWord >> 14;
        d.rearRaw = (d.rearRaw & ~3) | (d.vrwWord >> 12 & 3);
    }
    for (int input = 0; input < analogInputs; input++) {
        SampleArray<int32_t>& array = InputArray(s, input);
        array[i] = mask & 1 << (8 - input) ? ScaleAnalog(s, input, ReadWide(p, d.version), d.version) : array[i - 1];
    }
    if (mask & 1 << 4) VB[s][i] = ScaleVoltage(ReadWide(p, d.version), d.version);
    VB[s][i + 1] = VB[s][i];
    DecodeStrokes(d, i);
    sampleFlag[s][i] = mask & 1 << 3 ? *p >> 7 : sampleFlag[s][i - 1];
}

static void AddDistance(const Decoder& d, int i) {
    int s = d.slot;
    uint32_t speed = CoursePosSource == 1 ? VRW[s][i] : VFW[s][i];
    lapLength[s][d.lap] += speed;
    lapDistance[s][i] = lapDistance[s][i - 1] + speed;
    distFront[s][i] = distFront[s][i - 1] + VFW[s][i];
    distRear[s][i] = distRear[s][i - 1] + VRW[s][i];
}

static void TestLap(Decoder& d, int i) {
    int s = d.slot;
    if (!(d.vfwWord & 0x8000) || d.lap >= lapMarkLimit) return;
    if (!IsFirstUnitVersion(d.version) && VB[s][i] <= d.lapVoltage) return;
    if (lapStart[s][d.lap - 1] + 600 >= static_cast<uint32_t>(i) && !Debug) return;
    lapStart[s][d.lap] = i;
    if (d.lap % HeldMarksPerLap(s) == 0) {
        lapLength[s][d.lap + 1] = 0;
        lapDistance[s][i] = 0;
    }
    d.lap++;
}

static void CountEstimate(int s, int i) {
    auto changed = [&](const auto& array) { return array[i] != array[i - 1] ? 1 : 0; };
    auto word = [&](const auto& array) { return std::abs(array[i] - array[i - 1]) >= 127 ? 2 : 1; };
    nativeSizeEstimate += 2 + changed(VB[s]) + word(Ne[s]) + word(VFW[s]) + word(VRW[s]) + changed(TH[s]) + changed(FSUS[s]) +
                          changed(RSUS[s]) + changed(LAF1[s]) + changed(LAF2[s]) + changed(AUX1[s]) + changed(AUX2[s]);
}

// Decodes all frames; the number of the first sample not written.
static int DecodeFrames(Decoder& d, const uint8_t* log, int length) {
    bool changeMask = IsChangeMaskVersion(d.version);
    int i = 1;
    for (int64_t at = changeMask ? extendedHeaderSize : headerSize; at < length && i < d.capacity; i++) {
        if (changeMask) DecodeChangeMaskFrame(d, log + at, i);
        else if (IsFirstUnitVersion(d.version)) DecodeFirstUnitFrame(d, log + at, i);
        else DecodeFixedFrame(d, log + at, i);
        AddDistance(d, i);
        TestLap(d, i);
        if (d.version == 1 || d.version == 2) CountEstimate(d.slot, i);
        at += changeMask ? ChangeMaskFrameSize(log + at, d.version) : frameSize;
    }
    return i;
}

static void Finish(Decoder& d, int n) {
    int s = d.slot;
    for (auto* array : {lapDistance, distFront, distRear}) array[s][n] = array[s][n - 1];
    if (d.lap > 1 && n - lapStart[s][d.lap - 1] < 50) d.lap--;
    lapCount[s] = d.lap;
    sampleCount[s] = n;
    FillLapEnd(s);
    cursorPos[s] = 0;
    currentLap[s] = 1;
    lapViewOffset[s] = 0;
    std::fill(std::begin(jumpTarget), std::end(jumpTarget), -1);
    ComputeSuspensionSpeed(s);
    SmoothChannels(s);
    ComputeStatistics(s);
}

void ReadNativeLog(int slot, const uint8_t* buffer, int length) {
    int version = formatVersion[slot] = NativeVersion(buffer);
    CompressFile = version >= 3;
    if (version >= 3) CompressFileVer = version == 4 ? 4 : 3;
    int frames = IsChangeMaskVersion(version) ? CountFrames(buffer, length, version) : std::max(length - headerSize, 0) / frameSize;
    int capacity = IsNativeVersion(version) ? std::min(frames, nativeSampleLimit) + 16 : 0;
    if (EnsureChannels(slot, capacity)) {
        ResetSlot(slot);
        return;
    }
    ClearChannels(slot, capacity);
    std::fill(std::begin(lapStart[slot]), std::end(lapStart[slot]), 0);
    std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0);
    timeFactor[slot] = 1.0;
    slotInUse[slot] = 1;
    nativeSizeEstimate = 0;
    for (int k = 0; k < 2; k++) auxDivider[slot][k] = lafDivider[slot][k] = 1;
    ReadNativeHeader(slot, buffer);
    tpsMinSeen[slot] = 120;
    tpsMaxSeen[slot] = 128;
    fsusMaxSeen[slot] = rsusMaxSeen[slot] = 0;
    Decoder d{slot, version, capacity, IsFirstUnitVersion(version) ? 2 : 1, ScaleVoltage(buffer[lapVoltageAt], 1),
              FrontSensor(slot), RearSensor(slot), 0, 0, 0, 0};
    Finish(d, DecodeFrames(d, buffer, length));
}
