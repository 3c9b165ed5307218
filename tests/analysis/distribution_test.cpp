// The shares of the time by bands of values: fields, bins, texts.
#include "analysis/distribution.h"

#include <gtest/gtest.h>

#include <random>

#include "analysis/lap_stats.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "run_data/fixed_point.h"
#include "tests/analysis/random_log.h"

namespace {

struct Distribution : testing::Test {
    Distribution() { LoadDefaults(); }
    ~Distribution() override { LoadDefaults(); }

    // A log with one lap of these values behind sample 0, which counts as well.
    template <class T>
    static void Log(int slot, SampleArray<T>* channel, const std::vector<T>& values) {
        MakeRandomLog(slot, static_cast<int>(values.size()), {});
        std::copy(values.begin(), values.end(), channel[slot].begin());
    }
    static void Choose(int channel, int min, int max, int step) {
        distChannel = channel;
        distBands[distFieldMin] = min, distBands[distFieldMax] = max, distBands[distFieldStep] = step;
    }
    static std::string TextOf(int channel, int min, int max, int step, int file = 0) {
        Choose(channel, min, max, step);
        AnalyzeBands();
        return distTexts[file];
    }
};

// --- fields --------------------------------------------------------------------------------------------------------------

TEST_F(Distribution, StartsWithTheBandsOfEachChannel) {
    const int expected[distChannels][3] = {{6000, 16000, 500}, {0, 100, 5}, {0, 125, 5}, {0, 50, 5}};
    for (int channel = 0; channel < distChannels; channel++) {
        EXPECT_EQ(distMin[channel], expected[channel][0]);
        EXPECT_EQ(distMax[channel], expected[channel][1]);
        EXPECT_EQ(distStep[channel], expected[channel][2]);
    }
    OpenDistribution();
    EXPECT_EQ(distChannel, distNe);
    EXPECT_EQ(distLaps, 0);
    EXPECT_EQ(distBands[distFieldMax], 16000);
}

TEST_F(Distribution, FieldsOfNeAreLimitedWhenTheyAreLeft) {
    OpenDistribution();
    EXPECT_EQ(LeaveDistField(distFieldMin, "25000"), 20000);
    EXPECT_EQ(distBands[distFieldMax], 20000) << "raised to Min";
    EXPECT_EQ(LeaveDistField(distFieldMin, "-30000"), -20000);
    EXPECT_EQ(LeaveDistField(distFieldMax, "20001"), 20000);
    EXPECT_EQ(LeaveDistField(distFieldMax, "-50"), 0);
    EXPECT_EQ(LeaveDistField(distFieldMin, "700"), 700);
    EXPECT_EQ(LeaveDistField(distFieldMax, "300"), 700);
    EXPECT_EQ(LeaveDistField(distFieldStep, "9"), 10);
    EXPECT_EQ(LeaveDistField(distFieldStep, "10001"), 10000);
    EXPECT_EQ(LeaveDistField(distFieldStep, "words"), 10);
    EXPECT_EQ(LeaveDistField(distFieldMax, "99999999999999"), 20000);
}

TEST_F(Distribution, FieldsOfTheOtherChannelsAreLimitedTo200) {
    for (int channel = distTh; channel <= distRrSUS; channel++) {
        SCOPED_TRACE(distChannelNames[channel]);
        Choose(channel, 0, 50, 5);
        EXPECT_EQ(LeaveDistField(distFieldMin, "201"), 200);
        EXPECT_EQ(LeaveDistField(distFieldMin, "-201"), -200);
        EXPECT_EQ(LeaveDistField(distFieldMax, "201"), 200);
        EXPECT_EQ(LeaveDistField(distFieldStep, "0"), 1);
        EXPECT_EQ(LeaveDistField(distFieldStep, "201"), 200);
    }
}

TEST_F(Distribution, AChannelKeepsWhatItsFieldsShowedWhenItIsLeft) {
    OpenDistribution();
    const char* const typed[] = {"7000", "9000", "250"};
    ChooseDistChannel(distTh, typed);
    EXPECT_EQ(distBands[distFieldMax], 100);
    const char* const throttle[] = {"10", "90", "20"};
    ChooseDistChannel(distNe, throttle);
    EXPECT_EQ(distBands[distFieldMin], 7000);
    EXPECT_EQ(distBands[distFieldStep], 250);
    EXPECT_EQ(distMin[distTh], 10);
}

TEST_F(Distribution, ClosingKeepsNothingOfTheChannelAtHand) {
    OpenDistribution();
    LeaveDistField(distFieldMin, "7000");
    OpenDistribution();
    EXPECT_EQ(distBands[distFieldMin], 6000);
}

TEST_F(Distribution, AnalyzeLimitsWhatStandsInTheFields) {
    Log<uint16_t>(0, Ne, {0, 1, 2});
    OpenDistribution();
    const char* const typed[] = {"100", "50", "0"};
    Analyze(typed);
    EXPECT_EQ(distBands[distFieldMax], 100);
    EXPECT_EQ(distBands[distFieldStep], 10);
    EXPECT_EQ(distTexts[0], "- rpm - \t - % - \r\n- 100 \t 100.000 \r\n 100 -\t 0.000 \r\n");
}

// --- bins ----------------------------------------------------------------------------------------------------------------

TEST_F(Distribution, BandsBeginAtTheirValueAndTheLastOneTakesWhatIsAbove) {
    Log<uint16_t>(0, Ne, {999, 1000, 1499, 1500, 1999, 2000, 2499, 2500, 9000, 9000});
    EXPECT_EQ(TextOf(distNe, 1000, 2000, 500),
              "- rpm - \t - % - \r\n- 1000 \t 10.000 \r\n 1000 -\t 20.000 \r\n 1500 -\t 20.000 \r\n 2000 -\t 50.000 \r\n");
}

TEST_F(Distribution, MinEqualToMaxGivesOneRowForAllThatIsNotBelow) {
    Log<uint16_t>(0, Ne, {999, 1000, 5000, 9000});
    EXPECT_EQ(TextOf(distNe, 1000, 1000, 500), "- rpm - \t - % - \r\n- 1000 \t 25.000 \r\n 1000 -\t 75.000 \r\n");
}

TEST_F(Distribution, TheFactorOfFinalSimulationMovesSamplesBetweenBands) {
    Log<uint16_t>(0, Ne, {1000, 1400, 1800, 2000});
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 50.000 \r\n 1500 -\t 50.000 \r\n");
    neFactor[0] = 0.75f;
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 25.000 \r\n 1000 -\t 50.000 \r\n 1500 -\t 25.000 \r\n");
}

TEST_F(Distribution, ThrottleIsCountedInPercent) {
    Log<int32_t>(0, TH, {99, 100, 149, 150, 1000, -5, 2000000000, -2000000000});
    EXPECT_EQ(TextOf(distTh, 10, 15, 5), "- Th% - \t - % - \r\n- 10 \t 37.500 \r\n 10 -\t 25.000 \r\n 15 -\t 37.500 \r\n");
}

TEST_F(Distribution, StrokesAreTestedAgainstATenthOfMinAndCutInMillimetres) {
    // Kept: between 1 and 10 mm no stroke counts as below 10 mm.
    Log<int16_t>(0, FSUS, {99, 100, 999, 1000, 1499, 1500, -3000, 32767});
    const char* expected = "- mm - \t - % - \r\n- 10 \t 25.000 \r\n 10 -\t 50.000 \r\n 15 -\t 25.000 \r\n";
    EXPECT_EQ(TextOf(distFrSUS, 10, 15, 5), expected);
    std::copy(FSUS[0].begin(), FSUS[0].begin() + 8, RSUS[0].begin());
    std::fill(FSUS[0].begin(), FSUS[0].end(), int16_t{0});
    EXPECT_EQ(TextOf(distRrSUS, 10, 15, 5), expected);
}

TEST_F(Distribution, WithoutFile2TheRightBoxHasRowsOfZero) {
    Log<uint16_t>(0, Ne, {1000, 1000});
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500, 1), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 0.000 \r\n 1500 -\t 0.000 \r\n");
}

TEST_F(Distribution, File2StandsInTheRightBoxAndFile3Nowhere) {
    Log<uint16_t>(0, Ne, {1000, 1000});
    Log<uint16_t>(1, Ne, {1500, 1500, 1000, 1500});
    Log<uint16_t>(2, Ne, {1500});
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 100.000 \r\n 1500 -\t 0.000 \r\n");
    EXPECT_EQ(distTexts[1], "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 25.000 \r\n 1500 -\t 75.000 \r\n");
}

TEST_F(Distribution, MinZeroShowsNoLineBelowItYetCountsTheSamples) {
    Log<int16_t>(0, FSUS, {-100, 100, 200, 300});
    EXPECT_EQ(TextOf(distFrSUS, 0, 0, 5), "- mm - \t - % - \r\n 0 -\t 75.000 \r\n");
    // Kept: -1.00 mm is below -0.5 mm, hence counted, and in no line.
    EXPECT_EQ(TextOf(distFrSUS, -5, 0, 5), "- mm - \t - % - \r\n -5 -\t 0.000 \r\n 0 -\t 75.000 \r\n");
}

TEST_F(Distribution, AnEmptyRunHasNothingAnywhere) {
    EXPECT_EQ(TextOf(distTh, 0, 5, 5), "- Th% - \t - % - \r\n 0 -\t 0.000 \r\n 5 -\t 0.000 \r\n");
}

TEST_F(Distribution, OnlyCheckedLapsCountWhenSoChosen) {
    Log<uint16_t>(0, Ne, {1000, 1000, 1500, 1500, 1500, 1000});
    lapCount[0] = 3;
    lapStart[0][1] = 2, lapStart[0][2] = 4;
    FillLapEnd(0);
    std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 0);
    lapChecked[0][1] = 1;
    distLaps = 1;
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 0.000 \r\n 1500 -\t 100.000 \r\n");
    distLaps = 0;
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 50.000 \r\n 1500 -\t 50.000 \r\n");
}

TEST_F(Distribution, ChecksOfEntriesThatAreNoRowsCountWithTwoMarksPerLap) {
    Log<uint16_t>(0, Ne, {1000, 1000, 1500, 1500, 1500, 1000});
    MarksPerLap[0] = 2;
    lapCount[0] = 3;
    lapStart[0][1] = 2, lapStart[0][2] = 4;
    FillLapEnd(0);
    std::fill(std::begin(lapChecked[0]), std::end(lapChecked[0]), 0);
    lapChecked[0][1] = 1;
    distLaps = 1;
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 0.000 \r\n 1500 -\t 100.000 \r\n");
}

TEST_F(Distribution, MarksBeyondTheLogAndBackwardsReadNothingOutside) {
    Log<uint16_t>(0, Ne, {1000, 1000, 1000, 1500});
    lapCount[0] = 3;
    lapStart[0][1] = 4000000000u, lapStart[0][2] = 1;
    FillLapEnd(0);
    EXPECT_EQ(TextOf(distNe, 1000, 1500, 500), "- rpm - \t - % - \r\n- 1000 \t 0.000 \r\n 1000 -\t 71.429 \r\n 1500 -\t 28.571 \r\n")
        << "four samples and three of them again";
}

// The same, a sample at a time, as the rule for a sample says it.
struct Plain {
    std::vector<unsigned> bins;
    int total = 0;

    void Count(bool below, int band) {
        total++;
        bins[below ? 0 : std::clamp(band + 1, 1, static_cast<int>(bins.size()) - 1)]++;
    }
    void Sample(int i, int min, int step) {
        const float rpm = static_cast<float>(Ne[0][i]) * neFactor[0];
        const int f = FSUS[0][i], r = RSUS[0][i], t = TH[0][i];
        switch (distChannel) {
            case distNe: Count(static_cast<int>(rpm) < min, static_cast<int>((rpm - min) / step)); break;
            case distTh: Count(t < min * 10, (t - min * 10) / 10 / step); break;
            case distFrSUS: Count(f < min * 10, (f - min * 100) / 100 / step); break;
            default: Count(r < min * 10, (r - min * 100) / 100 / step); break;
        }
    }
};

TEST_F(Distribution, SharesAreThoseOfASampleAtATime) {
    std::mt19937 random(3);
    for (int round = 0; round < 60; round++) {
        SCOPED_TRACE(round);
        const int samples = 1 + static_cast<int>(random() % 5000);
        MakeRandomLog(0, samples, {}, random());
        for (int i = 0; i < samples; i++) {
            TH[0][i] = static_cast<int32_t>(random() % (round % 2 ? 1200 : 200000)) - 100;
            if (round % 3 == 0) FSUS[0][i] = static_cast<int16_t>(random());
            if (round % 4 == 0) Ne[0][i] = static_cast<uint16_t>(random());
        }
        neFactor[0] = 0.5f + static_cast<float>(random() % 1000) / 700.0f;
        const int channel = static_cast<int>(random() % distChannels), scale = channel == distNe ? 100 : 1;
        const int min = static_cast<int>(random() % 90) * scale - 20 * scale, max = min + static_cast<int>(random() % 100) * scale;
        Choose(channel, min, max, 1 + static_cast<int>(random() % (20 * scale)));
        AnalyzeBands();
        const int step = distBands[distFieldStep];
        Plain plain;
        plain.bins.resize(static_cast<size_t>((distBands[distFieldMax] - min) / step + 2));
        for (int i = 0; i < samples; i++) plain.Sample(i, min, step);
        std::string expected = channel == distNe ? "- rpm - \t - % - \r\n" : channel == distTh ? "- Th% - \t - % - \r\n" : "- mm - \t - % - \r\n";
        char line[64];
        const auto share = [&](size_t bin) { return static_cast<float>(plain.bins[bin] * 100) / static_cast<float>(plain.total); };
        if (min > 0) {
            std::snprintf(line, sizeof line, "- %d \t %.3f \r\n", min, share(0));
            expected += line;
        }
        for (size_t bin = 1; bin < plain.bins.size(); bin++) {
            std::snprintf(line, sizeof line, " %d -\t %.3f \r\n", min + (static_cast<int>(bin) - 1) * step, share(bin));
            expected += line;
        }
        ASSERT_EQ(distTexts[0], expected);
    }
}

TEST_F(Distribution, TheFinestBandsOverTheWidestRangeHave4001Lines) {
    Log<uint16_t>(0, Ne, {1000, 1000});
    const std::string text = TextOf(distNe, -20000, 20000, 10);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 1 + 4001);
}

}  // namespace
