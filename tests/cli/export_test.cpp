// The command export: it writes what the window's export writes.
#include <gtest/gtest.h>

#include <sstream>

#include "tests/cli/cli_run.h"
#include "tests/cli/sample_run.h"
#include "tests/source_folder.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

struct CliExport : testing::Test {
    TestFolder folder;
    std::string log;

    CliExport() {
        SampleLogOptions options;
        options.laps = 3;
        log = WriteSampleRun(folder, "run.zrk", options);
    }
    CliRun Run(std::vector<std::string> words) {
        words.insert(words.begin(), {"--home", folder.Path(), "--set", "ModeSetting.ExpertMode=2", "export"});
        return RunCli(words);
    }
    // The lines of the table that these options give.
    std::vector<std::string> Lines(std::vector<std::string> words) {
        words.insert(words.end(), {folder.Path("out.csv"), log});
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitDone) << run.err;
        EXPECT_EQ(run.err, "box Saved | Done.\n");
        std::vector<std::string> lines;
        std::string line;
        for (std::istringstream text(folder.Read("out.csv")); std::getline(text, line);) {
            EXPECT_EQ(line.back(), '\r');
            lines.push_back(line.substr(0, line.size() - 1));
        }
        return lines;
    }
};

TEST_F(CliExport, WritesTheCheckedLapsWithTheChannelsOfTheGraph) {
    const std::vector<std::string> lines = Lines({});
    EXPECT_EQ(lines[0].rfind("Time,Ne,TH,", 0), 0u);
    EXPECT_GT(lines.size(), 1000u);
    EXPECT_EQ(lines[1].rfind("0.000,", 0), 0u);
}

TEST_F(CliExport, ColumnsAreThoseNamed) {
    EXPECT_EQ(Lines({"--columns", "RrSusSpeed,Lap,SlipRatio,Distance,Time", "--range", "10-20"})[0], "Time,Distance,LAP,Slip,vRSus");
    EXPECT_EQ(Lines({"--columns", "", "--range", "10-20"})[0], "Time");
}

TEST_F(CliExport, RateThinsTheRowsOut) {
    EXPECT_EQ(Lines({"--range", "100-1099"}).size(), 1001u);
    EXPECT_EQ(Lines({"--rate", "10", "--range", "100-1099"}).size(), 51u);
    EXPECT_EQ(Lines({"--rate", "1", "--columns", "", "--range", "100-1099"})[5], "4.000");
}

TEST_F(CliExport, LapsAreTheRowsNamed) {
    const size_t one = Lines({"--laps", "1"}).size(), two = Lines({"--laps", "2"}).size();
    EXPECT_GT(one, 1000u);
    EXPECT_EQ(Lines({"--laps", "1,2"}).size(), one + two - 1);
}

TEST_F(CliExport, ARangePastTheEndStopsAtTheLogsEnd) {
    EXPECT_EQ(Lines({"--range", "0-2147483647"}).size(), Lines({"--laps", "0,1,2,3,4,5"}).size() + 1) << "sample 0 is no lap's";
    EXPECT_EQ(Lines({"--range", "2147483647-2147483647"}).size(), 1u);
}

TEST_F(CliExport, WhatCannotBeWrittenFailsWithTheBox) {
    const CliRun run = Run({folder.Path("absent/out.csv"), log});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_EQ(run.err, "box Error !! | Not Saved !!\n");
}

TEST_F(CliExport, ALogThatCannotBeLoadedWritesNothing) {
    const CliRun run = Run({folder.Path("out.csv"), folder.Path("absent.zrk")});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_NE(run.err.find("box File Error | Load file error"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.Path("out.csv")));
}

// One sample of a dump: the fields of line `sample`, by the order of the header.
std::vector<long> DumpedSample(const std::string& dump, size_t sample) {
    std::istringstream lines(dump);
    std::string line, field;
    for (size_t i = 0; i <= sample + 1; i++) std::getline(lines, line);
    std::vector<long> values;
    for (std::istringstream fields(line); std::getline(fields, field, ',');) values.push_back(std::stol(field));
    return values;
}

TEST_F(CliExport, WhatIsExportedCanBeLoadedAgainAsFarAsItsDigitsGo) {
    std::filesystem::copy_file(SourceFolder() + "/resources/data/csvlabel.ini", folder.path / "csvlabel.ini");
    const auto unsmoothed = [&](std::vector<std::string> words) {
        words.insert(words.begin(), {"--home", folder.Path(), "--set", "SPLConfig.SmoothingSTD=0"});
        const CliRun run = RunCli(words);
        EXPECT_EQ(run.status, exitDone) << run.err;
    };
    const auto dump = [&](const std::string& name, const std::string& file) {
        unsmoothed({"dump", folder.Path(name), file});
        return folder.Read(name + "/samples1.csv");
    };
    unsmoothed({"export", "--columns", "Lap,Ne,TH,VFW,VRW,FrSUS,RrSUS,LAF1,LAF2,VB,AUX1,AUX2", "--range", "0-2147483647", folder.Path("out.csv"), log});
    const std::string logged = dump("logged", log), loaded = dump("loaded", folder.Path("out.csv"));
    ASSERT_GT(LineCount(logged), 10000);
    EXPECT_EQ(LineCount(loaded), LineCount(logged) + 1) << "without the last sample, and with those that the import adds";
    for (size_t sample = 1; sample < 10000; sample += 111) {
        SCOPED_TRACE(sample);
        std::vector<long> a = DumpedSample(logged, sample), b = DumpedSample(loaded, sample + 1);
        ASSERT_EQ(a.size(), 18u);
        ASSERT_EQ(b.size(), 18u);
        for (const int exact : {1, 3, 4}) EXPECT_EQ(b[exact], a[exact]) << exact;
        EXPECT_EQ(b[2], a[2] / 10 * 10);
        for (const int stroke : {5, 6}) EXPECT_EQ(b[stroke], a[stroke] / 100 * 100) << stroke;
        for (const int tenth : {7, 8, 9, 10, 11}) EXPECT_NEAR(static_cast<double>(b[tenth]), static_cast<double>(a[tenth]), 5) << tenth;
    }
}

TEST_F(CliExport, UnusableArgumentsSayWhatIsAccepted) {
    const std::vector<std::vector<std::string>> unusable = {
        {"--rate", "20", "o.csv", log},     {"--columns", "Speed", "o.csv", log}, {"--columns", "Ne,,TH", "o.csv", log},
        {"--laps", "x", "o.csv", log},      {"--laps", "512", "o.csv", log},      {"--range", "5", "o.csv", log},
        {"--range", "9-5", "o.csv", log},   {"--range", "-5-9", "o.csv", log},    {"--laps", "1", "--range", "1-5", "o.csv", log},
        {"o.csv"},                          {"o.csv", log, log}};
    for (const auto& words : unusable) {
        SCOPED_TRACE(words[0] + words[words.size() > 1]);
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitUnusable);
        EXPECT_EQ(LineCount(run.err), 1) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(CliExport, HelpNamesEveryOption) {
    const CliRun run = Run({"--help"});
    EXPECT_EQ(run.status, exitDone);
    for (const char* word : {"--rate", "--columns", "--laps", "--range", "FrSusSpeed", "OUT.csv"})
        EXPECT_NE(run.out.find(word), std::string::npos) << word;
}

}  // namespace
