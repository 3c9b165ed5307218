// The command laps: what it prints is what the lap table holds.
#include <gtest/gtest.h>

#include <set>
#include <sstream>

#include "analysis/lap_stats.h"
#include "run_data/run_store.h"
#include "tests/cli/cli_run.h"
#include "tests/cli/sample_run.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::string part;
    for (std::istringstream stream(text); std::getline(stream, part, separator);) parts.push_back(part);
    if (!text.empty() && text.back() == separator && separator != '\n') parts.emplace_back();
    return parts;
}

struct CliLaps : testing::Test {
    TestFolder folder;
    std::string log = Log("run.zrk", 1), second = Log("other.zrk", 2);

    std::string Log(const char* name, uint64_t seed) {
        SampleLogOptions options;
        options.laps = 5;
        options.seed = seed;
        return WriteSampleRun(folder, name, options);
    }
    CliRun Run(std::vector<std::string> words) {
        words.insert(words.begin(), {"--home", folder.Path(), "laps"});
        return RunCli(words);
    }
    std::vector<std::string> Lines(const std::vector<std::string>& words) {
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitDone) << run.err;
        return Split(run.out, '\n');
    }
    // A column of the numbers by name, one entry a line behind the header.
    std::vector<std::string> Column(const std::vector<std::string>& lines, const std::string& name) {
        const std::vector<std::string> header = Split(lines.at(0), ',');
        const size_t column = std::find(header.begin(), header.end(), name) - header.begin();
        std::vector<std::string> values;
        for (size_t i = 1; i < lines.size(); i++) values.push_back(Split(lines[i], ',').at(column));
        return values;
    }
};

TEST_F(CliLaps, NumbersHaveALinePerLapAndOneForTheAverages) {
    const std::vector<std::string> lines = Lines({log});
    ASSERT_GE(lines.size(), 5u);
    EXPECT_EQ(lines[0].rfind("row,checked,lapTime,minNe,minNe_at,maxNe,maxNe_at,maxVFW,", 0), 0u);
    EXPECT_NE(lines[0].find(",avrFSUS,avrRSUS,minSlip,minSlip_at,"), std::string::npos);
    EXPECT_EQ(lines[0].substr(lines[0].size() - 12), ",sectorTime7");
    const std::vector<std::string> rows = Column(lines, "row"), checked = Column(lines, "checked");
    for (size_t i = 0; i < rows.size(); i++) EXPECT_EQ(rows[i], std::to_string(i));
    EXPECT_EQ(checked.front(), "0") << "the out lap";
    EXPECT_EQ(checked[1], "1");
    EXPECT_EQ(Column(lines, "lapTime").back(), "2147483647");
    const size_t fields = Split(lines[0], ',').size();
    EXPECT_EQ(fields, 3u + statTotal + 20u + 8u) << "the two means have no sample";
    for (const std::string& line : lines) EXPECT_EQ(Split(line, ',').size(), fields);
}

TEST_F(CliLaps, TablesHaveEightLinesOfThirteenCellsAndMarkTheBest) {
    for (const char* table : {"page1", "page2", "sectors"}) {
        SCOPED_TRACE(table);
        const std::vector<std::string> lines = Lines({"--table", table, log});
        ASSERT_EQ(lines.size(), 8u);
        int best = 0;
        for (const std::string& line : lines) {
            const std::vector<std::string> cells = Split(line, '\t');
            EXPECT_EQ(cells.size(), 13u);
            best += !cells[0].empty() && cells[0].back() == '*';
        }
        EXPECT_GE(best, 1);
        EXPECT_EQ(Split(lines[7], '\t')[0], std::string(table) == "sectors" ? "00'00.00" : "Avr.");
    }
}

TEST_F(CliLaps, CellsOfPageOneAreTheNumbers) {
    const std::vector<std::string> numbers = Lines({log}), table = Lines({"--table", "page1", log});
    for (int row = 0; row < 3; row++) {
        std::vector<std::string> cells = Split(table[row], '\t');
        for (std::string& cell : cells)
            if (!cell.empty() && cell.back() == '*') cell.pop_back();
        EXPECT_EQ(cells[2], Column(numbers, "maxNe")[row]);
        EXPECT_DOUBLE_EQ(std::stod(cells[3]) * 10, std::stod(Column(numbers, "maxVFW")[row]));
        EXPECT_NEAR(std::stod(cells[6]), std::stod(Column(numbers, "avrFSUS")[row]) * 0.01, 0.051);
    }
}

TEST_F(CliLaps, SectorsAreThoseOfTheCourseAndTheBoundariesInTheFolder) {
    EXPECT_EQ(Split(Lines({"--table", "sectors", log})[1], '\t')[2].front(), '-') << "without a course";
    folder.Write("sorrel.crs", MakeCourse("sorrel"));
    folder.Write("Sector.ini", "[sorrel.crs]\nSec1=300\nSec2=600\n");
    const std::vector<std::string> cells = Split(Lines({"--table", "sectors", log})[1], '\t');
    double sum = 0;
    for (int column = 1; column <= 3; column++) sum += std::stod(cells[column]);
    EXPECT_NEAR(sum, std::stod(cells[0].substr(0, 2)) * 60 + std::stod(cells[0].substr(3)), 0.5);
    EXPECT_EQ(cells[4].front(), '-');
    const std::vector<std::string> numbers = Lines({log});
    EXPECT_NEAR(std::stod(Column(numbers, "sectorTime1")[1]) * 0.005, std::stod(cells[2]), 0.0051);
    EXPECT_EQ(Column(numbers, "sectorTime3")[1], "2147483647");
}

TEST_F(CliLaps, EverySortKeyOfEveryTableOrdersItsColumnAndKeepsTheLaps) {
    for (const char* table : {"page1", "page2", "sectors"}) {
        std::multiset<std::string> laps;
        for (int key = 0; key <= 13; key++) {
            SCOPED_TRACE(std::string(table) + std::to_string(key));
            const std::vector<std::string> lines = Lines({"--table", table, "--sort", std::to_string(key), log});
            ASSERT_EQ(lines.size(), 8u);
            std::multiset<std::string> times;
            for (const std::string& line : lines) times.insert(Split(line, '\t')[0]);
            if (key == 0) laps = times;
            EXPECT_EQ(times, laps);
        }
    }
}

TEST_F(CliLaps, SortPutsTheBetterLapFirstAndTheAveragesLast) {
    const std::vector<std::string> lines = Lines({"--sort", "1", log});
    std::vector<std::string> times = Column(lines, "lapTime");
    times.pop_back();
    for (size_t i = 1; i < times.size(); i++) EXPECT_LE(std::stoi(times[i - 1]), std::stoi(times[i]));
    const std::vector<std::string> table = Lines({"--table", "page1", "--sort", "1", log});
    EXPECT_LE(table[0].substr(0, 8), table[1].substr(0, 8));
}

TEST_F(CliLaps, FirstChoosesTheFirstLine) {
    const std::vector<std::string> whole = Lines({"--table", "page1", log}), from = Lines({"--table", "page1", "--first", "2", log});
    EXPECT_EQ(from[0], whole[2]);
    EXPECT_EQ(from[7], whole[7]);
    EXPECT_EQ(Lines({"--table", "page1", "--first", "511", log})[0], std::string(12, '\t')) << "behind the last lap";
}

TEST_F(CliLaps, ChecksChooseWhatCounts) {
    const std::vector<std::string> lines = Lines({"--check", "2", log});
    const std::vector<std::string> checked = Column(lines, "checked");
    for (size_t row = 0; row + 1 < checked.size(); row++) EXPECT_EQ(checked[row], row == 2 ? "1" : "0");
    EXPECT_EQ(Column(lines, "avrFSUS").back(), Column(lines, "avrFSUS")[2]) << "the mean of one lap";
}

TEST_F(CliLaps, FileChoosesTheLog) {
    const std::string alone = Run({second}).out;
    EXPECT_EQ(Run({"--file", "2", log, second}).out, alone);
    EXPECT_EQ(Run({"--file", "3", log, log, second}).out, alone);
    EXPECT_EQ(Run({"--table", "page1", "--file", "3", log, log, second}).out, Run({"--table", "page1", second}).out);
}

TEST_F(CliLaps, UnusableArgumentsSayWhatIsAccepted) {
    const std::vector<std::vector<std::string>> unusable = {{"--table", "page3", log},  {"--file", "0", log},   {"--file", "2", log},
                                                            {"--sort", "14", log},      {"--sort", "Ne", log},  {"--first", "1", log},
                                                            {"--check", "1,,2", log},   {"--check", "", log},   {"--check", "512", log},
                                                            {log, log, log, log},       {}};
    for (const auto& words : unusable) {
        const CliRun run = Run(words);
        EXPECT_EQ(run.status, exitUnusable);
        EXPECT_EQ(LineCount(run.err), 1) << run.err;
        EXPECT_EQ(run.out, "");
    }
}

TEST_F(CliLaps, AFileThatCannotBeLoadedFailsAndShowsAnEmptyRun) {
    const CliRun run = Run({folder.Path("absent.zrk")});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_NE(run.err.find("box "), std::string::npos);
    EXPECT_EQ(LineCount(run.out), 3) << "header, the one empty lap, averages";
}

TEST_F(CliLaps, HelpNamesEveryOption) {
    const CliRun run = Run({"--help"});
    EXPECT_EQ(run.status, exitDone);
    for (const char* option : {"--table", "--file", "--sort", "--first", "--check"})
        EXPECT_NE(run.out.find(option), std::string::npos);
}

}  // namespace
