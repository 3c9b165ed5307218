// The sample logs, read back by the program's own reader, which shares no code with their writer.
#include "tools/sample_log/sample_log.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "app/frame_loop.h"
#include "run_data/derived_channels.h"
#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tools/sample_log/ride.h"

namespace {

constexpr int everyVersion[] = {0, 32, 1, 2, 3, 4};

bool IsOldest(int version) { return version == 0 || version == 32; }

struct SampleLog : testing::Test {
    void SetUp() override {
        LoadDefaults();
        SmoothingSTD = 0;  // channels stay as logged
    }
};

void Read(std::vector<uint8_t> log) {
    const int length = static_cast<int>(log.size());
    log.resize(log.size() + 1024);
    ReadNativeLog(0, log.data(), length);
}

SampleLogOptions Seconds(int seconds, int version = 4) {
    SampleLogOptions options;
    options.version = version;
    options.laps = 0;
    options.seconds = seconds;
    return options;
}

// The largest difference between what was simulated and what the store holds, in the channel's stored unit.
template <class Column>
int Furthest(const std::vector<BikeSample>& samples, const Column& column, int BikeSample::*channel) {
    int furthest = 0;
    for (size_t k = 0; k < samples.size(); k++)
        furthest = std::max(furthest, std::abs(static_cast<int>(column[k + 1]) - samples[k].*channel));
    return furthest;
}

// One raw step in stored units, and the reader's own truncation.
void ExpectChannels(const std::vector<BikeSample>& samples, int version, int frontSpan, int rearSpan) {
    const bool wide = version == 4, oldest = IsOldest(version);
    const int strokeSteps = wide ? 65535 : oldest ? 255 : 1023;
    EXPECT_LE(Furthest(samples, TH[0], &BikeSample::th), wide ? 1 : 5);  // 200 steps span 100.0 %
    EXPECT_LE(Furthest(samples, FSUS[0], &BikeSample::fsus), frontSpan / strokeSteps + 1);
    EXPECT_LE(Furthest(samples, RSUS[0], &BikeSample::rsus), rearSpan / strokeSteps + 1);
    EXPECT_LE(Furthest(samples, LAF1[0], &BikeSample::laf1), wide ? 1 : 4);
    EXPECT_LE(Furthest(samples, LAF2[0], &BikeSample::laf2), wide ? 1 : 4);
    if (oldest) return;
    EXPECT_LE(Furthest(samples, VB[0], &BikeSample::vb), wide ? 1 : 8);
}

TEST_F(SampleLog, SameOptionsGiveTheSameBytesAndAnotherSeedDoesNot) {
    for (auto make : {MakeSampleLog, MakeSecondaryLog, MakeCsvLog}) {
        SampleLogOptions options = Seconds(20);
        const std::vector<uint8_t> first = make(options), again = make(options);
        options.seed = 2;
        EXPECT_EQ(first, again);
        EXPECT_NE(first, make(options));
    }
}

// A number that any change of the simulation changes, and that every compiler and system has to meet.
TEST_F(SampleLog, BytesAreTheSameOnEveryCompiler) {
    uint64_t hash = 14695981039346656037u;
    for (int version : everyVersion)
        for (uint8_t byte : MakeSampleLog(Seconds(60, version))) hash = (hash ^ byte) * 1099511628211u;
    for (const std::string& name : CourseNames())
        for (char c : MakeCourse(name)) hash = (hash ^ static_cast<uint8_t>(c)) * 1099511628211u;
    EXPECT_EQ(hash, 13059927782230869630u);
}

TEST_F(SampleLog, EveryVersionReadsBackWithinOneRawStep) {
    for (int version : everyVersion) {
        SCOPED_TRACE(version);
        const std::vector<BikeSample> samples = SimulateRide(Seconds(60, version));
        Read(MakeSampleLog(Seconds(60, version)));
        ASSERT_EQ(sampleCount[0], static_cast<int>(samples.size()) + 1);
        EXPECT_EQ(formatVersion[0], version);
        EXPECT_EQ(Furthest(samples, Ne[0], &BikeSample::ne), 0);
        EXPECT_EQ(Furthest(samples, VFW[0], &BikeSample::vfw), 0);
        EXPECT_EQ(Furthest(samples, VRW[0], &BikeSample::vrw), 0);
        ExpectChannels(samples, version, 18768, 12500);
        if (!IsOldest(version)) {
            // 5 bar a volt over 5 V; the curve of the water sensor is 0.62 degrees a step where it is steepest here.
            EXPECT_LE(Furthest(samples, AUX1[0], &BikeSample::aux1), version == 4 ? 1 : 10);
            EXPECT_LE(Furthest(samples, AUX2[0], &BikeSample::aux2), version == 4 ? 2 : 62);
        }
        const bool flagged = version >= 2 && version != 32;
        for (size_t k = 0; k < samples.size(); k++) ASSERT_EQ(sampleFlag[0][k + 1], flagged && samples[k].flag) << k;
    }
}

TEST_F(SampleLog, LinearSensorsReadBackWithinOneRawStep) {
    for (int version : {1, 2, 3, 4}) {
        SCOPED_TRACE(version);
        SampleLogOptions options = Seconds(60, version);
        options.linearSuspension = true;
        Read(MakeSampleLog(options));
        EXPECT_EQ(fsusType[0], 1);
        ExpectChannels(SimulateRide(options), version, 13000, 7500);
    }
}

TEST_F(SampleLog, VoltInputsLogTheVoltsOfTheSameSensors) {
    SampleLogOptions options = Seconds(30);
    options.voltInputs = true;
    const std::vector<BikeSample> samples = SimulateRide(options);
    Read(MakeSampleLog(options));
    EXPECT_EQ(analog[0][2].type, 1);
    for (size_t k = 0; k < samples.size(); k++) ASSERT_NEAR(AUX1[0][k + 1], (samples[k].aux1 + 250) / 5, 1) << k;
}

TEST_F(SampleLog, EngineSpeedReadsBackWithEveryDivider) {
    for (int divider : {0, 1, 2, 3, 4})
        for (int version : {2, 3, 4}) {
            SCOPED_TRACE(divider * 10 + version);
            SampleLogOptions options = Seconds(40, version);
            options.neDivider = divider;
            Read(MakeSampleLog(options));
            EXPECT_EQ(neDivider[0], divider);
            EXPECT_LE(Furthest(SimulateRide(options), Ne[0], &BikeSample::ne), divider == 0 ? 1 : 0);
        }
}

TEST_F(SampleLog, HeaderTellsTheBikeAndTheMemo) {
    for (int version : everyVersion) {
        SCOPED_TRACE(version);
        SampleLogOptions options = Seconds(1, version);
        options.memo = "dry \x90\xB0\x82\xEA";
        options.marksPerLap = 3;
        Read(MakeSampleLog(options));
        EXPECT_STREQ(memoText[0], options.memo.c_str());
        EXPECT_EQ(frontTyreMm[0], frontWheelMm);
        EXPECT_EQ(rearTyreMm[0], rearWheelMm);
        EXPECT_EQ(frontSprocket[0], sprocketTeeth[0]);
        EXPECT_EQ(rearSprocket[0], sprocketTeeth[1]);
        EXPECT_EQ(MarksPerLap[0], 3);
        EXPECT_EQ(primaryMain[0], primaryTeeth[0]);
        for (int k = 0; k < bikeGears; k++) {
            EXPECT_EQ(gearMain[0][k], gearTeeth[k][0]);
            EXPECT_EQ(gearCounter[0][k], gearTeeth[k][1]);
        }
        EXPECT_EQ(tpsSpan[0], 50);
        EXPECT_EQ(LinkRatio[0], 235);
    }
}

TEST_F(SampleLog, LongMemoIsCutAt189Bytes) {
    SampleLogOptions options = Seconds(1);
    options.memo.assign(300, 'm');
    Read(MakeSampleLog(options));
    EXPECT_EQ(std::string(memoText[0]), std::string(189, 'm'));
}

TEST_F(SampleLog, LapsAreAsAskedAndAboutEquallyLong) {
    for (int marks : {1, 2, 3}) {
        SCOPED_TRACE(marks);
        SampleLogOptions options;
        options.laps = 3;
        options.marksPerLap = marks;
        Read(MakeSampleLog(options));
        ASSERT_EQ(lapCount[0], marks * (1 + 3) + 1);  // the lap out, three laps, the way in
        for (int lap = 1; lap <= 3; lap++) {
            const int samples = static_cast<int>(lapStart[0][marks * (lap + 1)] - lapStart[0][marks * lap]);
            EXPECT_NEAR(samples, 94 * 200, 3 * 200) << lap;
            int64_t metres = 0;
            for (int k = 0; k < marks; k++) metres += lapLength[0][marks * lap + k + 1];
            EXPECT_NEAR(metres / 7200.0, 3691 * 1.005, 30) << lap;  // leaning wheels turn faster
        }
    }
}

TEST_F(SampleLog, LapsOfTheOldestVersionsFollowTheirExtraMark) {
    for (int version : {0, 32}) {
        SampleLogOptions options;
        options.version = version;
        options.laps = 1;
        Read(MakeSampleLog(options));
        EXPECT_EQ(lapCount[0], 4) << version;
    }
}

TEST_F(SampleLog, LengthIsAsAskedOrAsLongAsTheLapsTake) {
    EXPECT_EQ(MakeSampleLog(Seconds(90, 2)).size(), 512u + 90 * 200 * 16);
    SampleLogOptions options = Seconds(90, 2);
    options.laps = 6;
    EXPECT_EQ(MakeSampleLog(options).size(), 512u + 90 * 200 * 16);
    options.seconds = 0;
    options.laps = 1;
    EXPECT_NEAR(static_cast<double>(SimulateRide(options).size()), (131 + 95 + 8) * 200, 5 * 200);
    options.laps = 0;
    EXPECT_EQ(MakeSampleLog(options).size(), 512u);
}

TEST_F(SampleLog, SkippedStretchIsTheBeginningOfTheSameRide) {
    const std::vector<BikeSample> whole = SimulateRide(Seconds(30));
    SampleLogOptions options = Seconds(10);
    options.skipSeconds = 20;
    const std::vector<BikeSample> end = SimulateRide(options);
    ASSERT_EQ(end.size(), 2000u);
    for (size_t k = 0; k < end.size(); k++) {
        ASSERT_EQ(end[k].ne, whole[4000 + k].ne) << k;
        ASSERT_EQ(end[k].fsus, whole[4000 + k].fsus) << k;
    }
}

TEST_F(SampleLog, EarlyFirmwareIsReadAsVersion2) {
    SampleLogOptions options = Seconds(20, 2);
    const std::vector<uint8_t> plain = MakeSampleLog(options);
    options.earlyFirmware = true;
    const std::vector<uint8_t> early = MakeSampleLog(options);
    EXPECT_EQ(early[15], 3);
    EXPECT_TRUE(std::equal(plain.begin() + 512, plain.end(), early.begin() + 512, early.end()));
    Read(early);
    EXPECT_EQ(formatVersion[0], 2);
    EXPECT_EQ(sampleCount[0], 20 * 200 + 1);
}

TEST_F(SampleLog, LowBatteryBlanksThrottleAndStrokes) {
    SampleLogOptions options = Seconds(60, 2);
    options.lowBattery = true;
    Read(MakeSampleLog(options));
    int blanked = 0;
    for (int i = 1; i < sampleCount[0]; i++)
        if (VB[0][i] < 901) {
            blanked++;
            ASSERT_EQ(TH[0][i], 0);
            ASSERT_EQ(FSUS[0][i], 0);
        }
    EXPECT_GE(blanked, 100);
    EXPECT_LE(blanked, 400);
}

TEST_F(SampleLog, TruncationTakesBytesFromTheEnd) {
    SampleLogOptions options = Seconds(5);
    const std::vector<uint8_t> whole = MakeSampleLog(options);
    options.truncateBytes = 333;
    const std::vector<uint8_t> cut = MakeSampleLog(options);
    EXPECT_TRUE(std::equal(whole.begin(), whole.end() - 333, cut.begin(), cut.end()));
    options.truncateBytes = 1 << 30;
    EXPECT_TRUE(MakeSampleLog(options).empty());
}

TEST_F(SampleLog, FlippedBitsAreSpreadOverTheFile) {
    SampleLogOptions options = Seconds(5);
    const std::vector<uint8_t> whole = MakeSampleLog(options);
    options.flipBits = 21;
    const std::vector<uint8_t> bad = MakeSampleLog(options);
    ASSERT_EQ(bad.size(), whole.size());
    int flipped = 0;
    for (size_t k = 0; k < bad.size(); k++) flipped += std::popcount(static_cast<uint8_t>(bad[k] ^ whole[k]));
    EXPECT_EQ(flipped, 21);
}

// ---- change-mask frames ----

struct FrameCount {
    int frames, wordDeltas, wordsWhole, fieldsAbsent, fieldsPresent, flags, marksByDelta;
    int status[3];  // mask bits 2, 1, 0
    bool endsWithTheFile;
};

FrameCount WalkFrames(const std::vector<uint8_t>& log, bool wide) {
    FrameCount count{};
    size_t at = 1024;
    bool marked = false;
    for (; at + 2 <= log.size(); count.frames++) {
        const int mask = log[at] << 8 | log[at + 1];
        at += 2;
        for (int bit = 14; bit >= 12; bit--) {
            const bool whole = mask >> bit & 1;
            (whole ? count.wordsWhole : count.wordDeltas)++;
            if (bit == 13 && whole) marked = log[at] >> 7;
            else if (bit == 13 && marked) count.marksByDelta++;
            at += whole ? 2 : 1;
        }
        const int fields = std::popcount(static_cast<unsigned>(mask >> 4 & 0xFF));
        count.fieldsPresent += fields;
        count.fieldsAbsent += 8 - fields;
        at += fields * (wide ? 2 : 1);
        count.flags += mask >> 3 & 1;
        at += mask >> 3 & 1;
        constexpr int statusSize[3] = {1, 2, 4};
        for (int k = 0; k < 3; k++)
            if (mask >> (2 - k) & 1) {
                count.status[k]++;
                at += statusSize[k];
            }
    }
    count.endsWithTheFile = at == log.size();
    return count;
}

TEST_F(SampleLog, ChangeMaskFramesUseEveryForm) {
    for (int version : {3, 4}) {
        SCOPED_TRACE(version);
        SampleLogOptions options = Seconds(60, version);
        options.skipSeconds = 100;  // over the line
        const FrameCount count = WalkFrames(MakeSampleLog(options), version == 4);
        EXPECT_TRUE(count.endsWithTheFile);
        EXPECT_EQ(count.frames, 60 * 200);
        EXPECT_GT(count.wordDeltas, count.wordsWhole);
        EXPECT_GT(count.wordsWhole, 6 * 3);  // more than every ten seconds
        EXPECT_GT(count.fieldsAbsent, count.fieldsPresent);
        EXPECT_GT(count.fieldsPresent, count.frames);
        EXPECT_GE(count.flags, 6 + 2 * 5);  // restated, and the two ends of at least five upshifts
        EXPECT_EQ(count.marksByDelta, 7);   // of the eight samples with the mark
        EXPECT_EQ(count.status[0], 30);
        EXPECT_EQ(count.status[1], 12);
        EXPECT_EQ(count.status[2], 6);
    }
}

// ---- is it a motorcycle? ----

TEST_F(SampleLog, GearsFollowFromTheGearingOfTheHeader) {
    Ride ride = StartRide(Seconds(220));
    std::vector<int> gears;
    for (BikeSample sample; NextSample(ride, sample);) gears.push_back(ride.gear);
    Read(MakeSampleLog(Seconds(220)));
    int steady = 0, found = 0, seen[7] = {};
    for (size_t k = 30 * 200; k + 30 < gears.size(); k++) {
        if (!std::all_of(&gears[k - 30], &gears[k + 30], [&](int gear) { return gear == gears[k]; })) continue;
        steady++;
        found += GearPosition(0, static_cast<int>(k) + 1) == gears[k];
        seen[gears[k]]++;
    }
    EXPECT_GT(steady, 25000);
    EXPECT_GT(found, steady * 99 / 100);
    for (int gear = 1; gear <= bikeGears; gear++) EXPECT_GT(seen[gear], 200) << gear;
}

TEST_F(SampleLog, ChannelsStayInTheRangesOfAMotorcycle) {
    int topSpeed = 0, topThrottle = 0, topEngine = 0, flags = 0;
    for (const BikeSample& s : SimulateRide(Seconds(240))) {
        ASSERT_TRUE(s.laf1 >= 1240 && s.laf1 <= 1480) << s.laf1;
        ASSERT_TRUE(s.vb >= 1180 && s.vb <= 1420) << s.vb;
        ASSERT_TRUE(s.ne >= 1300 && s.ne <= 14700) << s.ne;
        ASSERT_TRUE(s.fsus <= 12500 && s.rsus <= 6500) << s.fsus << " " << s.rsus;
        topSpeed = std::max(topSpeed, s.vfw);
        topThrottle = std::max(topThrottle, s.th);
        topEngine = std::max(topEngine, s.ne);
        flags += s.flag;
    }
    EXPECT_NEAR(topSpeed, 2400, 150);
    EXPECT_EQ(topThrottle, 1000);
    EXPECT_GT(topEngine, 13000);
    EXPECT_GT(flags, 100);
}

TEST_F(SampleLog, BrakesDiveTheForkAndThrottleSquatsTheShock) {
    int64_t dive[3] = {}, squat[3] = {}, count[3] = {};  // rolling, braking, driving
    for (const BikeSample& s : SimulateRide(Seconds(240))) {
        if (s.vfw < 800) continue;
        const int state = s.aux1 > 500 ? 1 : s.th > 900 ? 2 : 0;
        dive[state] += s.fsus;
        squat[state] += s.rsus;
        count[state]++;
    }
    EXPECT_GT(dive[1] / count[1], dive[0] / count[0] + 1500);
    EXPECT_LT(dive[2] / count[2], dive[0] / count[0] - 1000);
    EXPECT_LT(squat[1] / count[1], squat[0] / count[0] - 500);
    EXPECT_GT(squat[2] / count[2], squat[1] / count[1] + 800);
}

TEST_F(SampleLog, SpeedFollowsTheBendsOfTheCourse) {
    Ride ride = StartRide(Seconds(330));
    int hairpin = 9999, straight = 0;
    double tightest = 0;
    for (double curvature : ride.circuit.curvature) tightest = std::max(tightest, curvature);
    for (BikeSample sample; NextSample(ride, sample);) {
        if (ride.lap < 1) continue;
        const int node = static_cast<int>(ride.at) % ride.circuit.length;
        if (ride.circuit.curvature[node] > tightest * 0.9) hairpin = std::min(hairpin, sample.vfw);
        if (node > 300 && node < 400) straight = std::max(straight, sample.vfw);
    }
    EXPECT_NEAR(hairpin, 600, 60);  // 24 m radius
    EXPECT_GT(straight, 2200);
}

}  // namespace
