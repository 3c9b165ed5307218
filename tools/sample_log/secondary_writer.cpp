// Writes .qtw logs: a header of 1152 bytes, then one stream of variable-length codes.
//
// Each channel has its own interval. The stream goes through the samples in time order and, at each sample, through the
// channels whose interval has come, in the order of `channels`; a code says how far the channel moved since its last
// one, or, when that is too far, where it stands. After the channels, every 60 samples, comes a code that says how many
// samples ago a lap mark fell, or 0.
//
//   CODE                                  BITS  SAYS
//   0                                        1  no change
//   1 and 3 bits                             4  1 to 3 up or down
//   111 and 5 bits                           8  4 to 18 up or down
//   1111111 and 9 bits                      16  19 to 273 up or down
//   111111111111111 and 16 bits             31  the value itself, at most 65533
//   31 ones                                 31  nothing: filler
// The bits of a change are twice its size above the row's least, and 1 more for down. They never begin with so many ones
// that the code could be one of the next row.
#include <algorithm>
#include <cstring>

#include "tools/sample_log/bike.h"
#include "tools/sample_log/damage.h"
#include "tools/sample_log/numbers.h"
#include "tools/sample_log/ride.h"
#include "tools/sample_log/sample_log.h"

namespace {

constexpr int streamAt = 1152, memoAt = 320, memoSize = 189;
constexpr int tpsClosed = 28, tpsOpen = 228;      // readings of 8 bits; the header has them times 4
constexpr int frontZero = 900, rearZero = 940;    // readings of 10 bits
constexpr int lapEvery = 60, fillerEvery = 2000;  // samples

struct Channel {
    int intervalAt;  // in the header, ms in two bytes
    int intervalMs;  // of a typical set-up
    int (*reading)(const BikeSample&);
};

constexpr Channel channels[] = {
    {7, 10, [](const BikeSample& s) { return static_cast<int>(Nearest(s.ne, 20)); }},
    {11, 20, [](const BikeSample& s) { return static_cast<int>(Nearest(s.vfw, 10)); }},
    {13, 20, [](const BikeSample& s) { return static_cast<int>(Nearest(s.vrw, 10)); }},
    {9, 20, [](const BikeSample& s) { return tpsClosed + static_cast<int>(Nearest(s.th * (tpsOpen - tpsClosed), 1000)); }},
    {19, 1000, [](const BikeSample& s) { return static_cast<int>(Nearest(s.vb, 10)); }},
    {21, 5, [](const BikeSample& s) { return std::max(0, frontZero - static_cast<int>(Nearest(s.fsus * 1024, 18769))); }},
    {23, 5, [](const BikeSample& s) { return std::max(0, rearZero - static_cast<int>(Nearest(s.rsus * 1023, 12500))); }},
    {25, 50, [](const BikeSample& s) { return static_cast<int>(Nearest((s.laf1 - 900) * 1140, 1000)); }},
    {27, 50, [](const BikeSample& s) { return static_cast<int>(Nearest((s.laf2 - 900) * 1140, 1000)); }},
    {15, 100, [](const BikeSample& s) { return s.aux1 / 10; }},
    {17, 1000, [](const BikeSample& s) { return s.aux2 / 100; }},
};
constexpr int channelCount = sizeof channels / sizeof channels[0];

struct BitStream {
    std::vector<uint8_t>& bytes;
    uint64_t              held = 0;
    int                   heldBits = 0;
};

void PutBits(BitStream& stream, uint32_t value, int bits) {
    stream.held = stream.held << bits | value;
    for (stream.heldBits += bits; stream.heldBits >= 8; stream.heldBits -= 8)
        stream.bytes.push_back(static_cast<uint8_t>(stream.held >> (stream.heldBits - 8)));
}

void PutChange(BitStream& stream, int change, int value) {
    struct Row { int least, most, ones, bits; };
    constexpr Row rows[] = {{1, 3, 1, 3}, {4, 18, 3, 5}, {19, 273, 7, 9}};
    if (change == 0) return PutBits(stream, 0, 1);
    const int size = change < 0 ? -change : change;
    for (const Row& row : rows)
        if (size <= row.most) {
            const uint32_t ones = (1u << row.ones) - 1, u = 2 * (size - row.least) + (change < 0);
            return PutBits(stream, ones << row.bits | u, row.ones + row.bits);
        }
    PutBits(stream, 0x7FFFu << 16 | static_cast<uint32_t>(value), 31);
}

int IntervalMs(const SampleLogOptions& options, const Channel& channel) {
    return options.intervalMs > 0 ? std::clamp(options.intervalMs / 5 * 5, 5, 60000) : channel.intervalMs;
}

std::vector<uint8_t> MakeHeader(const SampleLogOptions& options) {
    std::vector<uint8_t> b(streamAt, 0);
    b[6] = static_cast<uint8_t>(0x10 | (options.linearSuspension ? 0 : 3));  // lap codes; the fixed stroke sensors
    for (const Channel& channel : channels) Put16(b, channel.intervalAt, IntervalMs(options, channel));
    Put16(b, 29, 5 * lapEvery);
    b[37] = 20;
    b[38] = 4;
    Put16(b, 39, frontWheelMm / 10);
    Put16(b, 41, rearWheelMm / 10);
    Put16(b, 47, tpsClosed * 4);
    Put16(b, 49, tpsOpen * 4);
    Put16(b, 51, frontZero);
    Put16(b, 53, rearZero);
    b[79] = options.voltInputs ? 0 : 3;  // the A/F sensors' own curve
    std::memcpy(&b[89], "SAMPLE UNIT               ", 26);
    std::memcpy(&b[115], "Q 1.04", 6);
    std::memcpy(&b[151], "11-06-18 14:20  ", 16);
    std::memcpy(&b[167], "SORREL", 6);
    b[173] = 1;
    std::copy_n(options.memo.begin(), std::min<size_t>(options.memo.size(), memoSize), &b[memoAt]);
    return b;
}

void PutSeconds(std::vector<uint8_t>& bytes, int seconds) {
    for (int k = 0; k < 3; k++) bytes[84 + k] = static_cast<uint8_t>(seconds >> (16 - 8 * k));
}

// The lap code of sample `at` (from 1): a mark that fell on sample `markedAt`, still to be told, or none.
void PutLap(BitStream& stream, int at, int& markedAt) {
    const bool told = markedAt > 0 && at > markedAt;
    PutChange(stream, told ? at - markedAt : 0, 0);
    if (told) markedAt = 0;
}

}  // namespace

std::vector<uint8_t> MakeSecondaryLog(const SampleLogOptions& options) {
    std::vector<uint8_t> bytes = MakeHeader(options);
    BitStream stream{bytes};
    int last[channelCount] = {}, every[channelCount];
    for (int f = 0; f < channelCount; f++) every[f] = IntervalMs(options, channels[f]) / 5;
    Ride ride = StartRide(options);
    int count = 0, markedAt = 0;  // samples ridden; number of the sample with a mark not yet told, from 1
    bool marked = false;
    for (BikeSample sample; NextSample(ride, sample); marked = sample.mark) {
        const int at = count++;  // the stream begins at the second sample, which it calls 1
        if (sample.mark && !marked) markedAt = count;
        if (at == 0) continue;
        if (at % fillerEvery == 0) PutBits(stream, 0x7FFFFFFF, 31);
        for (int f = 0; f < channelCount; f++)
            if (at % every[f] == 0) {
                const int reading = channels[f].reading(sample);
                PutChange(stream, reading - last[f], reading);
                last[f] = reading;
            }
        if (at % lapEvery == 0) PutLap(stream, at, markedAt);
    }
    PutBits(stream, 0, 32);  // a reader needs a code more to come to the end
    PutSeconds(bytes, count / samplesPerSecond);
    DamageBytes(bytes, options);
    return bytes;
}
