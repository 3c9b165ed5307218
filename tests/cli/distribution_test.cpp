// The command distribution: the texts of the window's two boxes.
#include <gtest/gtest.h>

#include "analysis/distribution.h"
#include "tests/cli/cli_run.h"
#include "tests/cli/sample_run.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

struct CliDistribution : testing::Test {
    TestFolder folder;
    std::string log = Log("run.zrk", 1), second = Log("other.zrk", 2);

    std::string Log(const char* name, uint64_t seed) {
        SampleLogOptions options;
        options.laps = 2;
        options.seed = seed;
        return WriteSampleRun(folder, name, options);
    }
    CliRun Run(std::vector<std::string> words) {
        words.insert(words.begin(), {"--home", folder.Path(), "distribution"});
        return RunCli(words);
    }
    std::string Out(const std::vector<std::string>& words) {
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitDone) << run.err;
        return run.out;
    }
    // The sum of the shares of one box, whose lines begin at `at`.
    static double Sum(const std::string& text) {
        double sum = 0;
        for (size_t at = text.find('\n') + 1, tab; (tab = text.find('\t', at)) != std::string::npos; at = text.find('\n', tab))
            sum += std::stod(text.substr(tab + 1));
        return sum;
    }
};

TEST_F(CliDistribution, PrintsBothBoxesAndEachAddsUpToAHundred) {
    const std::string both = Out({log, second});
    const size_t right = both.find("- rpm - ", 1);
    ASSERT_NE(right, std::string::npos);
    EXPECT_EQ(both.rfind("- rpm - \t - % - \r\n- 6000 \t ", 0), 0u);
    EXPECT_EQ(LineCount(both), 2 * (1 + 1 + 21));
    EXPECT_NEAR(Sum(both.substr(0, right)), 100, 0.02);
    EXPECT_NEAR(Sum(both.substr(right)), 100, 0.02);
    EXPECT_NE(both.substr(0, right), both.substr(right));
}

TEST_F(CliDistribution, WithoutASecondFileTheRightBoxIsZeros) {
    const std::string both = Out({"--channel", "Th", log});
    const size_t right = both.find("- Th% - ", 1);
    ASSERT_NE(right, std::string::npos);
    EXPECT_NEAR(Sum(both.substr(0, right)), 100, 0.02);
    EXPECT_EQ(Sum(both.substr(right)), 0);
}

TEST_F(CliDistribution, BandsAreThoseGivenAndLimitedAsInTheWindow) {
    EXPECT_EQ(LineCount(Out({"--channel", "FrSUS", "--min", "0", "--max", "40", "--step", "10", log})), 2 * (1 + 5));
    EXPECT_EQ(LineCount(Out({"--channel", "RrSUS", "--max", "1000", "--step", "0", log})), 2 * (1 + 201));
    EXPECT_EQ(LineCount(Out({"--min", "17000", log})), 2 * (1 + 1 + 1));
}

TEST_F(CliDistribution, CheckedLapsAreAllButTheFirstAndTheLast) {
    EXPECT_NE(Out({"--laps", "checked", log}), Out({log}));
    EXPECT_EQ(Out({"--laps", "all", log}), Out({log}));
}

TEST_F(CliDistribution, UnusableArgumentsSayWhatIsAccepted) {
    const std::vector<std::vector<std::string>> unusable = {{"--channel", "VFW", log}, {"--laps", "some", log}, {"--min", "x", log},
                                                            {"--step", "1.5", log},    {"--bins", "4", log},    {log, log, log}, {}};
    for (const auto& words : unusable) {
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitUnusable);
        EXPECT_EQ(LineCount(run.err), 1) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(CliDistribution, HelpNamesEveryOption) {
    const CliRun run = Run({"--help"});
    EXPECT_EQ(run.status, exitDone);
    for (const char* option : {"--channel", "--min", "--max", "--step", "--laps"}) EXPECT_NE(run.out.find(option), std::string::npos);
}

}  // namespace
