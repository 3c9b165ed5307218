// Writes .zrk logs as the logger unit stores them, in each of its six formats.
//
// Versions 0, 32, 1, 2: a header of 512 bytes, then 16 bytes a sample. Versions 3, 4: a header of 1024 bytes, then frames
// that begin with a mask of what follows and carry only what changed. Numbers are big-endian.
#include <algorithm>
#include <cstring>

#include "tools/sample_log/bike.h"
#include "tools/sample_log/damage.h"
#include "tools/sample_log/numbers.h"
#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

namespace {

// Readings as the unit takes them: 8, 10 or 16 bits, by version.
struct RawSample {
    int  ne, vfw, vrw;
    int  fields[8];  // TH, FSUS, RSUS, LAF1, LAF2, AUX1, AUX2, VB: the order of the change mask
    bool mark, flag;
};

struct NativeWriter {
    SampleLogOptions     options;
    std::vector<uint8_t> bytes;
    RawSample            last;       // what the change mask compares with
    int                  neWord, vfwWord, vrwWord, flagByte;
    int                  frames;
};

constexpr int tpsClosed = 28, tpsOpen = 228;              // 8 bit
constexpr int frontZero = 900, rearZero = 940;            // 10 bit
constexpr int fixedFront = 18768, fixedRear = 12500;      // 0.01 mm, span of the fixed sensors
constexpr int linearFront = 1300, linearRear = 750;       // 0.1 mm
constexpr int pressureSlope = 500, pressureOffset = -250; // AUX1: 5 bar a volt from 0.5 V on, in 0.01 bar

// Water sensor on AUX2: its voltage falls with the temperature. Bytes of 5000 / 255 mV, and 0.01 degrees.
constexpr int waterCurve[16][2] = {
    {10, 14000}, {18, 12500}, {28, 11000}, {40, 9800}, {54, 8800}, {70, 7900}, {88, 7000}, {106, 6200},
    {124, 5400}, {142, 4600}, {160, 3800}, {178, 2900}, {196, 1900}, {214, 800}, {232, -600}, {250, -2500}};

struct VersionForm {
    int         version;
    const char* firmware;  // 14 characters
    int         headerSize;
};

constexpr VersionForm versionForms[] = {
    {0, "ZrvetV5.00.07 ", 512},  {32, "ZrvetV5.32.02 ", 512}, {1, "ZrvetV7.01.00 ", 512},
    {2, "Zrvetger V0020", 512},  {3, "Zrvetger V0030", 1024}, {4, "Zrvetger V0040", 1024},
};

const VersionForm& FormOf(int version) {
    for (const VersionForm& form : versionForms)
        if (form.version == version) return form;
    return versionForms[5];
}

bool IsOldest(int version) { return version == 0 || version == 32; }

// ---- from channel units to readings ----

int RawThrottle(int version, int th) {
    if (version != 4) return tpsClosed + static_cast<int>(Nearest(th * (tpsOpen - tpsClosed), 1000));
    return tpsClosed * 256 + static_cast<int>(Nearest(int64_t{th} * (tpsOpen - tpsClosed) * 256, 1000));
}

// Both kinds of sensor fall from their zero reading as the stroke grows. `span` is what the full range measures, 0.01 mm.
int RawStroke(int version, int stroke, int span, int zero) {
    if (version == 4) return std::clamp<int>(zero * 64 - Nearest(int64_t{stroke} * 65535, span), 0, 65535);
    // Version 32 counts from the full range and takes 0.25 mm off for each count of its zero.
    if (version == 32) return std::clamp<int>(Nearest((span - 25 * zero - stroke) * 1024, span), 0, 1023);
    return std::clamp<int>(zero - Nearest(stroke * 1023, span), 0, 1023);
}

// Zero readings of the header. Version 32 has them in its own unit, chosen so that the readings stay where the other
// versions have them; the two oldest have no low bits.
int StrokeZero(int version, int span, int zero) {
    if (version == 32) return (span - zero * span / 1024) / 25 & ~3;
    return version == 0 ? zero & ~3 : zero;
}

// Reading of `value` where the whole range of the input is `fullScale`.
int RawShare(int version, int64_t value, int fullScale) {
    const int full = version == 4 ? 65535 : 255;
    return static_cast<int>(std::clamp<int64_t>(Nearest(value * full, fullScale), 0, full));
}

int RawMixture(int version, int af) {
    if (version == 4) return std::clamp((af - 900) * 283 * 256 / 1000, 0, 65535);
    return std::clamp<int>(Nearest((af - 900) * (IsOldest(version) ? 285 : 283), 1000), 0, 255);
}

int RawWater(int version, int temperature) {
    int k = 0;
    while (k < 14 && temperature < waterCurve[k + 1][1]) k++;
    const auto [x0, y0] = waterCurve[k];
    const auto [x1, y1] = waterCurve[k + 1];
    // The curve's bytes share their full range with the 8 bit reading.
    return RawShare(version, int64_t{x0} * (y0 - y1) + int64_t{x1 - x0} * (y0 - temperature), 255 * (y0 - y1));
}

int StrokeSpan(const SampleLogOptions& options, bool front) {
    if (options.linearSuspension && !IsOldest(options.version)) return 10 * (front ? linearFront : linearRear);
    return front ? fixedFront : fixedRear;
}

RawSample ToRaw(const SampleLogOptions& options, const BikeSample& s) {
    const int version = options.version, frontSpan = StrokeSpan(options, true), rearSpan = StrokeSpan(options, false);
    RawSample raw;
    raw.ne = options.neDivider == 0 ? s.ne / 2 : s.ne * options.neDivider;
    raw.vfw = s.vfw;
    raw.vrw = s.vrw;
    const int fields[8] = {
        RawThrottle(version, s.th),
        RawStroke(version, s.fsus, frontSpan, StrokeZero(version, frontSpan, frontZero)),
        RawStroke(version, s.rsus, rearSpan, StrokeZero(version, rearSpan, rearZero)),
        RawMixture(version, s.laf1),
        RawMixture(version, s.laf2),
        RawShare(version, s.aux1 - pressureOffset, 5 * pressureSlope),  // the same volts, calibrated or not
        RawWater(version, s.aux2),
        RawShare(version, s.vb, 2000),
    };
    std::copy(std::begin(fields), std::end(fields), raw.fields);
    raw.mark = s.mark;
    raw.flag = s.flag;
    return raw;
}

// ---- header ----

void PutZero(std::vector<uint8_t>& bytes, int highAt, int lowAt, int zero) {
    bytes[highAt] = static_cast<uint8_t>(zero >> 2);
    bytes[lowAt] = static_cast<uint8_t>(zero << 6);
}

void PutWheelsAndGears(std::vector<uint8_t>& b, const SampleLogOptions& options) {
    b[16] = static_cast<uint8_t>(options.neDivider);
    b[17] = 20;  // pulses a turn of the front wheel
    Put16(b, 18, frontWheelMm);
    b[20] = 1;  // rear speed from the gearbox
    b[21] = 4;
    Put16(b, 22, rearWheelMm);
    b[24] = 29;
    b[25] = static_cast<uint8_t>(sprocketTeeth[0]);
    b[26] = static_cast<uint8_t>(sprocketTeeth[1]);
    b[27] = static_cast<uint8_t>(options.marksPerLap);
    b[31] = 235 - 150;  // link ratio
    b[64] = static_cast<uint8_t>(primaryTeeth[0]);
    b[65] = static_cast<uint8_t>(primaryTeeth[1]);
    for (int k = 0; k < bikeGears; k++) {
        b[66 + 2 * k] = static_cast<uint8_t>(gearTeeth[k][0]);
        b[67 + 2 * k] = static_cast<uint8_t>(gearTeeth[k][1]);
    }
}

void PutSensors(std::vector<uint8_t>& b, const SampleLogOptions& options) {
    b[32] = tpsClosed;
    b[33] = tpsOpen;
    Put16(b, 34, 50);
    b[36] = b[37] = options.linearSuspension ? 1 : 0;
    PutZero(b, 39, 41, StrokeZero(options.version, StrokeSpan(options, true), frontZero));
    PutZero(b, 40, 42, StrokeZero(options.version, StrokeSpan(options, false), rearZero));
    Put16(b, 43, linearFront);
    Put16(b, 45, linearRear);
    b[47] = 121;  // marks count above 9.49 V
    b[110] = b[111] = 1;
    if (options.voltInputs || IsOldest(options.version)) return;
    b[110] = 2;
    Put16(b, 208, pressureSlope);
    Put16(b, 224, pressureOffset);
    b[111] = 3;
    for (int k = 0; k < 16; k++) {
        b[256 + k] = static_cast<uint8_t>(waterCurve[k][0]);
        Put16(b, 272 + 2 * k, waterCurve[k][1]);
    }
}

// What the unit does besides logging: gear lamps, quick shifter and wheelie control.
void PutControls(std::vector<uint8_t>& b) {
    b[49] = 62;
    Put16(b, 50, 15000);
    Put16(b, 52, 65535);
    b[55] = 10;
    b[56] = b[57] = 20;
    std::fill_n(&b[58], 6, uint8_t{150});
    b[81] = 140;
    std::fill_n(&b[82], 5, uint8_t{160});
    constexpr uint8_t cuts[3][5] = {{40, 36, 32, 32, 32}, {36, 32, 30, 30, 30}, {20, 18, 16, 16, 16}};
    constexpr int cutsAt[3] = {87, 96, 101};
    constexpr uint8_t cutRpm[3] = {40, 28, 16};
    for (int row = 0; row < 3; row++) {
        std::copy(std::begin(cuts[row]), std::end(cuts[row]), &b[cutsAt[row]]);
        b[93 + row] = cutRpm[row];
    }
    if (b.size() < 1024) return;
    std::fill_n(&b[513], 6, uint8_t{255});
    constexpr uint8_t type3[8] = {0, 0, 255, 255, 0, 255, 255, 0};
    std::copy(std::begin(type3), std::end(type3), &b[528]);
}

// ---- frames ----

void AppendOldestFrame(NativeWriter& w, const RawSample& raw) {
    const uint8_t frame[16] = {
        static_cast<uint8_t>(raw.ne >> 8), static_cast<uint8_t>(raw.ne),
        static_cast<uint8_t>((raw.mark ? 0x80 : 0) | raw.vfw >> 8), static_cast<uint8_t>(raw.vfw),
        static_cast<uint8_t>(raw.vrw >> 8), static_cast<uint8_t>(raw.vrw),
        static_cast<uint8_t>(raw.fields[0]),
        static_cast<uint8_t>(raw.fields[1] >> 2), static_cast<uint8_t>(raw.fields[2] >> 2),
        static_cast<uint8_t>(raw.fields[3]), static_cast<uint8_t>(raw.fields[4])};
    w.bytes.insert(w.bytes.end(), frame, frame + 16);
}

void AppendFixedFrame(NativeWriter& w, const RawSample& raw) {
    const int front = raw.fields[1], rear = raw.fields[2];
    uint8_t frame[16] = {
        static_cast<uint8_t>(raw.ne >> 8), static_cast<uint8_t>(raw.ne),
        static_cast<uint8_t>((raw.mark ? 0x80 : 0) | raw.vfw >> 8), static_cast<uint8_t>(raw.vfw),
        static_cast<uint8_t>((front & 3) << 6 | (rear & 3) << 4 | raw.vrw >> 8), static_cast<uint8_t>(raw.vrw),
        static_cast<uint8_t>(raw.fields[0]), static_cast<uint8_t>(front >> 2), static_cast<uint8_t>(rear >> 2)};
    for (int k = 3; k < 8; k++) frame[6 + k] = static_cast<uint8_t>(raw.fields[k]);
    if (w.options.version == 2) frame[14] = raw.flag ? 0x80 : 0;
    w.bytes.insert(w.bytes.end(), frame, frame + 16);
}

uint8_t* Append16(uint8_t* p, int value) {
    *p++ = static_cast<uint8_t>(value >> 8);
    *p++ = static_cast<uint8_t>(value);
    return p;
}

// A word goes as a signed byte to add to the word before wherever that reaches, marks and all; else, and when the frame
// restates everything, as it is.
uint8_t* AppendWord(uint8_t* p, int& mask, int bit, bool restate, int& last, int word) {
    const int delta = static_cast<int16_t>(static_cast<uint16_t>(word - last));
    last = word;
    if (!restate && delta >= -128 && delta <= 127) {
        *p++ = static_cast<uint8_t>(delta);
        return p;
    }
    mask |= 1 << bit;
    return Append16(p, word);
}

// The unit keeps status bytes of its own in the log now and then, which no reader uses.
uint8_t* AppendStatus(uint8_t* p, int& mask, int frames) {
    constexpr struct { int every, bit, size; } status[] = {{400, 2, 1}, {1000, 1, 2}, {2000, 0, 4}};
    for (const auto& row : status)
        if (frames % row.every == row.every - 1) {
            mask |= 1 << row.bit;
            for (int k = row.size - 1; k >= 0; k--) *p++ = static_cast<uint8_t>(frames >> (8 * k));
        }
    return p;
}

void AppendChangeFrame(NativeWriter& w, const RawSample& raw) {
    const bool wide = w.options.version == 4;
    const bool restate = w.frames % 2000 == 0;  // every ten seconds, so that a reader can start in the middle
    int vrwWord = raw.vrw;
    if (!wide) vrwWord |= (raw.fields[1] & 3) << 14 | (raw.fields[2] & 3) << 12;
    uint8_t frame[40];
    int mask = 0;
    uint8_t* p = AppendWord(frame + 2, mask, 14, restate, w.neWord, raw.ne);
    p = AppendWord(p, mask, 13, restate, w.vfwWord, (raw.mark ? 0x8000 : 0) | raw.vfw);
    p = AppendWord(p, mask, 12, restate, w.vrwWord, vrwWord);
    for (int k = 0; k < 8; k++) {
        const int shift = !wide && (k == 1 || k == 2) ? 2 : 0;  // the low bits of the strokes ride in the VRW word
        if (!restate && raw.fields[k] >> shift == w.last.fields[k] >> shift) continue;
        mask |= 1 << (11 - k);
        if (wide) p = Append16(p, raw.fields[k]);
        else *p++ = static_cast<uint8_t>(raw.fields[k] >> shift);
    }
    const int flagByte = raw.flag ? 0x80 : 0;
    if (restate || flagByte != w.flagByte) {
        mask |= 1 << 3;
        *p++ = static_cast<uint8_t>(flagByte);
    }
    w.flagByte = flagByte;
    p = AppendStatus(p, mask, w.frames);
    Append16(frame, mask);
    w.bytes.insert(w.bytes.end(), frame, p);
    w.last = raw;
}

NativeWriter StartNativeLog(const SampleLogOptions& options) {
    NativeWriter writer{};
    writer.options = options;
    const VersionForm& form = FormOf(options.version);
    writer.options.version = form.version;
    writer.options.neDivider = std::clamp(options.neDivider, 0, 4);
    writer.options.marksPerLap = std::clamp(options.marksPerLap, 1, 3);
    std::vector<uint8_t>& bytes = writer.bytes;
    bytes.assign(form.headerSize, 0);
    const bool early = options.earlyFirmware && form.version == 2;
    bytes[0] = '3';
    std::memcpy(&bytes[1], early ? "ZrvetV9.01.05 " : form.firmware, 14);
    bytes[15] = static_cast<uint8_t>(early ? 3 : form.version);
    PutWheelsAndGears(bytes, writer.options);
    PutSensors(bytes, writer.options);
    PutControls(bytes);
    std::copy_n(options.memo.begin(), std::min<size_t>(options.memo.size(), 189), &bytes[320]);
    return writer;
}

void AppendSample(NativeWriter& writer, const BikeSample& sample) {
    const RawSample raw = ToRaw(writer.options, sample);
    switch (writer.options.version) {
        case 0:
        case 32: AppendOldestFrame(writer, raw); break;
        case 1:
        case 2:  AppendFixedFrame(writer, raw); break;
        default: AppendChangeFrame(writer, raw);
    }
    writer.frames++;
}

}  // namespace

std::vector<uint8_t> MakeSampleLog(const SampleLogOptions& options) {
    Ride ride = StartRide(options);
    NativeWriter writer = StartNativeLog(options);
    for (BikeSample sample; NextSample(ride, sample);) AppendSample(writer, sample);
    DamageBytes(writer.bytes, options);
    return std::move(writer.bytes);
}
