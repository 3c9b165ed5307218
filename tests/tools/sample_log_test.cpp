#include "tools/sample_log/sample_log.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>

#include "run_data/native_log.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tools/sample_log/ride.h"

namespace {

constexpr int everyVersion[] = {0, 32, 1, 2, 3, 4};

bool HasPower(int version) { return version != 0 && version != 32; }

std::vector<BikeSample> Simulate(const SampleLogOptions& options) {
    std::vector<BikeSample> samples;
    Ride ride = StartRide(options);
    for (BikeSample sample; NextSample(ride, sample);) samples.push_back(sample);
    return samples;
}

void Read(std::vector<uint8_t> log) {
    DefaultRunStore();
    DefaultSettings();
    SmoothingSTD = 0;  // values as logged
    const int length = static_cast<int>(log.size());
    log.resize(log.size() + 1024);
    ReadNativeLog(0, log.data(), length);
}

SampleLogOptions Shortest(int version) {
    SampleLogOptions options;
    options.version = version;
    options.laps = 0;
    options.seconds = 40;
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

}  // namespace

TEST(SampleLog, SameOptionsGiveTheSameBytesAndAnotherSeedDoesNot) {
    SampleLogOptions options = Shortest(4);
    const std::vector<uint8_t> first = MakeSampleLog(options), again = MakeSampleLog(options);
    options.seed = 2;
    EXPECT_EQ(first, again);
    EXPECT_NE(first, MakeSampleLog(options));
}

TEST(SampleLog, EveryVersionReadsBackWithinOneRawStep) {
    for (int version : everyVersion) {
        SCOPED_TRACE(version);
        const SampleLogOptions options = Shortest(version);
        const std::vector<BikeSample> samples = Simulate(options);
        Read(MakeSampleLog(options));
        ASSERT_EQ(sampleCount[0], static_cast<int>(samples.size()) + 1);
        EXPECT_EQ(formatVersion[0], version);
        EXPECT_EQ(Furthest(samples, Ne[0], &BikeSample::ne), 0);
        EXPECT_EQ(Furthest(samples, VFW[0], &BikeSample::vfw), 0);
        EXPECT_EQ(Furthest(samples, VRW[0], &BikeSample::vrw), 0);
        // A step of 200 is 0.5 % of throttle; 1023 readings span 187.68 mm in front, 255 in version 0 four times as much.
        const bool wide = version == 4, coarse = !HasPower(version);
        EXPECT_LE(Furthest(samples, TH[0], &BikeSample::th), wide ? 1 : 5);
        EXPECT_LE(Furthest(samples, FSUS[0], &BikeSample::fsus), wide ? 2 : coarse ? 75 : 19);
        EXPECT_LE(Furthest(samples, RSUS[0], &BikeSample::rsus), wide ? 2 : coarse ? 50 : 13);
        EXPECT_LE(Furthest(samples, LAF1[0], &BikeSample::laf1), wide ? 1 : 4);
        EXPECT_LE(Furthest(samples, LAF2[0], &BikeSample::laf2), wide ? 1 : 4);
        if (!HasPower(version)) continue;
        EXPECT_LE(Furthest(samples, VB[0], &BikeSample::vb), wide ? 1 : 8);
        EXPECT_LE(Furthest(samples, AUX1[0], &BikeSample::aux1), wide ? 2 : 10);
        EXPECT_LE(Furthest(samples, AUX2[0], &BikeSample::aux2), wide ? 2 : 62);
        for (size_t k = 0; k < samples.size(); k++)
            ASSERT_EQ(sampleFlag[0][k + 1], version >= 2 && samples[k].flag) << k;
    }
}
