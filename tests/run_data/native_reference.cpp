#include "tests/run_data/native_reference.h"

#include <cstdlib>
#include <string>

namespace {

// Everything about one log, as the format tells it; all arithmetic is 64 bits wide and cut down where a value is stored.
struct Reference {
    LogBytes b;  // with zero bytes behind the end
    int64_t  length;
    ReferenceOptions options;
    ReferenceLog out;
    int version = 0, capacity = 0, i = 1, L = 1, m = 1;
    int64_t vfwWord = 0, vrwWord = 0, fsusByte = 0, rsusByte = 0;

    int64_t U16(int64_t at) const { return b[at] * 256 + b[at + 1]; }
    int64_t S16(int64_t at) const { return U16(at) >= 32768 ? U16(at) - 65536 : U16(at); }
    static int64_t S8(uint8_t byte) { return byte >= 128 ? byte - 256 : byte; }
    static int64_t ToS16(int64_t v) { return static_cast<int16_t>(static_cast<uint16_t>(v)); }
    std::vector<int64_t>& C(int column) { return out.columns[column]; }
    int64_t& V(int column) { return out.columns[column][i]; }
    int64_t Before(int column) { return out.columns[column][i - 1]; }

    void FindVersion() {
        version = b[15];
        if (version <= 2) return;
        std::string start(b.begin(), b.begin() + 13);
        if (start == "3ZrvetV9.01.0" || start == "3ZrvetV9.001.") version = 2;
        int64_t number = ((b[11] * 16 + b[12]) * 16 + b[13]) * 16 + b[14];
        if (start.substr(0, 11) == "3Zrvetger V" && number < 32) version = 2;
    }
    bool Old() const { return version == 0 || version == 32; }
    bool Mask() const { return version == 3 || version == 4; }
    bool Wide() const { return version == 4; }

    int64_t FrameBytes(int64_t at) const {
        int64_t mask = U16(at), size = 2, w = Wide() ? 2 : 1;
        for (int bit = 14; bit >= 12; bit--) size += (mask >> bit & 1) ? 2 : 1;
        for (int bit = 11; bit >= 4; bit--) size += (mask >> bit & 1) * w;
        return size + (mask >> 3 & 1) + (mask >> 2 & 1) + (mask >> 1 & 1) * 2 + (mask & 1) * 4;
    }
    void FindCapacity() {
        if (!Mask()) {
            capacity = static_cast<int>((length - 512) / 16 + 16);
            return;
        }
        int frames = 0;
        if (length >= 1024)
            for (int64_t at = 1024; at <= length; at += FrameBytes(at)) frames++;
        capacity = 16 + frames;
    }

    // -- scaling --
    int64_t NeScaled(int64_t raw) const { return b[16] == 0 ? raw * 2 : raw / b[16]; }
    int64_t VbScaled(int64_t raw) const { return raw * 2000 / (Wide() ? 65535 : 255); }
    bool Gated(int64_t vb) const { return !options.voltageErrorsShown && vb < 901; }
    int64_t ThScaled(int64_t raw) const {
        int64_t closed = b[32], open = b[33];
        if (Old()) return (raw - closed) * U16(34) / 10;
        if (open == closed) return 0;
        if (Wide()) return (raw - closed * 256) * 1000 / ((open - closed) * 256);
        return (raw - closed) * 1000 / (open - closed);
    }
    int64_t Zero(int which) const { return b[39 + which] * 4 + (Old() ? 0 : b[41 + which] / 64); }
    int64_t StrokeScaled(int which, int64_t x) const {
        int64_t F = which == 0 ? 18768 : 12500, z = Zero(which), s = S16(43 + 2 * which), type = b[36 + which];
        if (version == 32) return ToS16(F - x * F / 1024 - 25 * z);
        if (version == 0) return ToS16(F - (x + 1023 - z) * F / 1023);
        if (Wide()) {
            if (type == 0) return ToS16(F - (x + 65535 - 64 * z) * F / 65535);
            if (type == 1) return ToS16(s * 10 - s * (x + 65535 - 64 * z) * 10 / 65535);
            return 0;
        }
        if (type == 0) return ToS16(F - (x + 1023 - z) * F / 1023);
        if (type != 1) return 0;
        if (version == 3 || s >= 0) return ToS16(s * 10 - s * (x + 1023 - z) * 10 / 1023);
        return ToS16(s * (x + 1023 - z) * 10 / 1023);
    }
    int64_t Curve(int input, int64_t v) const {
        int64_t x[16], y[16];
        for (int p = 0; p < 16; p++) {
            x[p] = (b[112 + 48 * input + p] * 5000 + 127) / 255;
            y[p] = S16(128 + 48 * input + 2 * p);
        }
        if (v >= x[15]) return y[15];
        for (int p = 14; p >= 0; p--)
            if (v >= x[p]) return (y[p + 1] - y[p]) * (v - x[p]) / (x[p + 1] - x[p]) + y[p];
        return y[0];
    }
    int64_t InputScaled(int input, int64_t raw) const {
        if (Old()) return raw * 1000 / 285 + 900;
        int64_t slope = S16(112 + 48 * input), offset = S16(128 + 48 * input);
        int64_t added = input == 3 ? offset : offset * 100;
        switch (b[108 + input]) {
            case 0: return Wide() ? ToS16(raw * 1000 / 283 / 256) + 900 : ToS16(raw * 1000 / 283) + 900;
            case 1: return Wide() ? raw * 500 / 65535 : raw * 500 / 255;
            case 2: return Wide() ? ((slope * raw * 500 + 32767) / 65535 + added) / 100 : ((slope * raw * 500 + 127) / 255 + added) / 100;
            case 3: return Wide() ? Curve(input, (raw * 5000 + 32767) / 65535) : Curve(input, (raw * 5000 + 127) / 255);
            default: return raw;
        }
    }

    // -- what the log tells about its sensors --
    void SeeThrottle(int64_t raw, int64_t vb) {
        if (i < 201 || i >= capacity - 200 || vb <= 900) return;
        if (Wide()) {
            if (raw < out.tpsMin * 256) out.tpsMin = static_cast<int>(raw / 256);
            if (raw > out.tpsMax * 256) out.tpsMax = static_cast<int>(raw / 256);
        } else {
            if (raw < out.tpsMin) out.tpsMin = static_cast<int>(raw);
            if (raw > out.tpsMax) out.tpsMax = static_cast<int>(raw);
        }
    }
    void SeeStroke(int which, int64_t x, int64_t vb) {
        if (version == 32) return;
        int& seen = which == 0 ? out.fsusMax : out.rsusMax;
        int64_t unit = Wide() ? 64 : 1;
        bool reversed = version != 0 && b[36 + which] == 1 && S16(43 + 2 * which) < 0;
        if (i < 200) seen = static_cast<int>(x / unit);
        else if (version != 0 && vb <= 900) return;
        else if (reversed ? x < seen * unit : x > seen * unit) seen = static_cast<int>(x / unit);
    }

    // -- frames --
    void OldFrame(int64_t p) {
        V(rNe) = NeScaled(U16(p)) & 0xFFFF;
        V(rTH) = ThScaled(b[p + 6]);
        vfwWord = U16(p + 2);
        V(rVFW) = vfwWord & 0x7FFF;
        V(rVRW) = U16(p + 4) & 0x7FFF;
        for (int which = 0; which < 2; which++) {
            V(rFSUS + which) = StrokeScaled(which, b[p + 7 + which] * 4);
            SeeStroke(which, b[p + 7 + which] * 4, 0);
        }
        V(rLAF1) = InputScaled(0, b[p + 9]);
        V(rLAF2) = InputScaled(1, b[p + 10]);
    }
    void FixedFrame(int64_t p) {
        int64_t vb = V(rVB) = VbScaled(b[p + 13]);
        V(rNe) = NeScaled(U16(p)) & 0xFFFF;
        V(rTH) = Gated(vb) ? 0 : ThScaled(b[p + 6]);
        SeeThrottle(b[p + 6], vb);
        int64_t raw[2] = {b[p + 7] * 4 + b[p + 4] / 64, b[p + 8] * 4 + b[p + 4] / 16 % 4};
        for (int which = 0; which < 2; which++) {
            V(rFSUS + which) = Gated(vb) ? 0 : StrokeScaled(which, raw[which]);
            SeeStroke(which, raw[which], vb);
        }
        vfwWord = U16(p + 2);
        V(rVFW) = vfwWord & 0x0FFF;
        V(rVRW) = U16(p + 4) & 0x0FFF;
        V(rLAF1) = InputScaled(0, b[p + 9]);
        V(rLAF2) = InputScaled(1, b[p + 10]);
        V(rAUX1) = InputScaled(2, b[p + 11]);
        V(rAUX2) = InputScaled(3, b[p + 12]);
        if (version == 2) V(rFlag) = b[p + 14] / 128;
    }
    int64_t Take(int64_t& p) {
        int64_t value = Wide() ? U16(p) : b[p];
        p += Wide() ? 2 : 1;
        return value;
    }
    void TakeWord(int64_t& p, bool absolute, int64_t& word) {
        word = (absolute ? U16(p) : word + S8(b[p])) & 0xFFFF;
        p += absolute ? 2 : 1;
    }
    void MaskedFrame(int64_t p) {
        int64_t mask = U16(p);
        p += 2;
        auto has = [mask](int bit) { return (mask >> bit & 1) != 0; };
        V(rNe) = (has(14) ? NeScaled(U16(p)) : NeScaled(S8(b[p])) + Before(rNe)) & 0xFFFF;
        p += has(14) ? 2 : 1;
        TakeWord(p, has(13), vfwWord);
        TakeWord(p, has(12), vrwWord);
        V(rVFW) = vfwWord & 0x7FFF;
        V(rVRW) = vrwWord & 0x0FFF;
        V(rTH) = Before(rTH);
        if (has(11)) {
            int64_t raw = Take(p), vb = V(rVB);
            V(rTH) = i >= 200 && Gated(vb) ? 0 : ThScaled(raw);
            SeeThrottle(raw, vb);
        }
        if (has(10)) fsusByte = Take(p);
        if (has(9)) rsusByte = Take(p);
        int64_t raw[2] = {fsusByte, rsusByte};
        if (version == 3) {
            raw[0] = fsusByte * 4 + vrwWord / 16384;
            raw[1] = rsusByte * 4 + vrwWord / 4096 % 4;
        }
        constexpr int inputColumns[4] = {rLAF1, rLAF2, rAUX1, rAUX2};
        for (int input = 0; input < 4; input++)
            V(inputColumns[input]) = has(8 - input) ? InputScaled(input, Take(p)) : Before(inputColumns[input]);
        if (has(4)) V(rVB) = VbScaled(Take(p));
        int64_t vb = C(rVB)[i + 1] = V(rVB);
        for (int which = 0; which < 2; which++) {
            V(rFSUS + which) = Gated(vb) ? 0 : StrokeScaled(which, raw[which]);
            SeeStroke(which, raw[which], vb);
        }
        V(rFlag) = has(3) ? b[p] / 128 : Before(rFlag);
    }

    void Distance() {
        int64_t s = options.rearPosition ? V(rVRW) : V(rVFW);
        out.lapLength[L] = (out.lapLength[L] + s) & 0xFFFFFFFF;
        V(rLap) = (Before(rLap) + s) & 0xFFFFFFFF;
        V(rFront) = (Before(rFront) + V(rVFW)) & 0xFFFFFFFF;
        V(rRear) = (Before(rRear) + V(rVRW)) & 0xFFFFFFFF;
    }
    void LapTest() {
        if (vfwWord < 32768 || L >= 510) return;
        if (!Old() && V(rVB) <= b[47] * 2000 / 255) return;
        if (!(out.lapStart[L - 1] + 600 < i) && !options.debug) return;
        out.lapStart[L] = i;
        if (L % m == 0) {
            out.lapLength[L + 1] = 0;
            V(rLap) = 0;
        }
        L++;
    }
    void Estimate() {
        out.sizeEstimate += 2;
        for (int column : {rVB, rTH, rFSUS, rRSUS, rLAF1, rLAF2, rAUX1, rAUX2}) out.sizeEstimate += V(column) != Before(column);
        for (int column : {rNe, rVFW, rVRW}) out.sizeEstimate += std::abs(V(column) - Before(column)) >= 127 ? 2 : 1;
    }

    void Frames() {
        L = Old() ? 2 : 1;
        for (int64_t at = Mask() ? 1024 : 512; at < length && i < capacity; i++) {
            if (Mask()) MaskedFrame(at);
            else if (Old()) OldFrame(at);
            else FixedFrame(at);
            if (version == 1 || version == 2) Estimate();
            Distance();
            LapTest();
            at += Mask() ? FrameBytes(at) : 16;
        }
    }
    void Finish() {
        for (int column : {rLap, rFront, rRear}) V(column) = Before(column);
        if (L > 1 && i - out.lapStart[L - 1] < 50) L--;
        for (int k = L; k < 520; k++) out.lapStart[k] = i;
        out.laps = L;
        out.samples = i;
    }
};

}  // namespace

ReferenceLog DecodeReference(const LogBytes& log, const ReferenceOptions& options) {
    Reference r{log, static_cast<int64_t>(log.size()), options, {}};
    r.b.resize(log.size() + 1024, 0);
    r.FindVersion();
    r.FindCapacity();
    r.m = r.b[27] >= 1 && r.b[27] <= 3 ? r.b[27] : options.marksPerLap;
    for (auto& column : r.out.columns) column.assign(r.capacity + 1, 0);
    r.out.lapStart.assign(520, 0);
    r.out.lapLength.assign(520, 0);
    r.Frames();
    r.Finish();
    return r.out;
}
