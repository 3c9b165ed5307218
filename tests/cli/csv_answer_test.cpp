// CSV logs on the command line: the selection dialog is answered with its preselection and the options of dump.
#include <gtest/gtest.h>

#include "run_data/run_store.h"
#include "tests/cli/cli_run.h"
#include "tests/test_folder.h"

namespace {

struct CliCsv : testing::Test {
    TestFolder folder;
    std::string log;
    CliCsv() {
        folder.Write("csvlabel.ini", "[Time]\n0=Time\n[Ne]\n0=RPM\n[VFW]\n0=Speed\n[LAP]\n0=Lap\n1=Metres\n");
        // Lap numbers that count as distances would give one mark less.
        std::string text = "Time,RPM,Speed,Metres,Lap,Other\n";
        for (int i = 1; i <= 60; i++) {
            char line[80];
            std::snprintf(line, sizeof line, "%.2f,%d,%.1f,%d,%d,%d\n", i * 0.01, 8000 + i, 100 + i * 0.5, i % 25, 1 + i / 20, i);
            text += line;
        }
        log = folder.Write("run.csv", text);
    }
    CliRun Dump(std::vector<std::string> options) const {
        std::vector<std::string> words = {"--home", folder.Path(), "dump"};
        words.insert(words.end(), options.begin(), options.end());
        words.push_back(folder.Path("out"));
        words.push_back(log);
        return RunCli(words);
    }
    // The line of a value in slot1.txt, without its name.
    std::string Value(const std::string& name) const {
        const std::string text = "\n" + folder.Read("out/slot1.txt");
        const size_t start = text.find("\n" + name + " ");
        return start == std::string::npos ? "none" : text.substr(start + name.size() + 2, text.find('\n', start + 1) - start - name.size() - 2);
    }
    // Cells of a line in samples1.csv, from the second on: Ne, TH, VFW.
    std::string Sample(int sample) const {
        const std::string text = folder.Read("out/samples1.csv"), start = "\n" + std::to_string(sample) + ",";
        const size_t at = text.find(start) + start.size();
        return text.substr(at, text.find(',', text.find(',', text.find(',', at) + 1) + 1) - at);
    }
};

TEST_F(CliCsv, DialogIsAnsweredWithItsPreselection) {
    const CliRun run = Dump({});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.err, "");
    EXPECT_EQ(Value("fileKind"), "3");
    EXPECT_EQ(Value("sampleCount"), "62");
    EXPECT_EQ(Value("timeFactor"), "0.5");
    EXPECT_EQ(Value("lapStart"), "0 20 40 60 62 62 62");
    EXPECT_EQ(Sample(2), "8002,0,1010");
}

TEST_F(CliCsv, RowOptionsChangeTheSelection) {
    EXPECT_EQ(Dump({"--csv-row", "0=4", "--csv-row", "2=5", "--csv-row", "1=6"}).status, 0);
    EXPECT_EQ(Value("timeFactor"), "0.050000000000000003");
    EXPECT_EQ(Sample(2), "0,20,1010");
}

TEST_F(CliCsv, LastOptionForARowCounts) {
    EXPECT_EQ(Dump({"--csv-row", "0=4", "--csv-row", "0=6"}).status, 0);
    EXPECT_EQ(Value("timeFactor"), "0.5");
}

TEST_F(CliCsv, LapOptionSaysWhatTheColumnHolds) {
    EXPECT_EQ(Dump({"--csv-lap", "distance"}).status, 0);
    EXPECT_EQ(Value("lapStart"), "0 62 62 62");
    EXPECT_EQ(Dump({"--csv-row", "12=3", "--csv-lap", "distance"}).status, 0);
    EXPECT_EQ(Value("lapStart"), "0 25 50 62 62 62");
    EXPECT_EQ(Dump({"--csv-row", "12=4", "--csv-lap", "number"}).status, 0);
    EXPECT_EQ(Value("lapStart"), "0 20 40 60 62 62 62");
}

TEST_F(CliCsv, OptionsDoNotOutliveTheirCommand) {
    Dump({"--csv-row", "0=4", "--csv-lap", "distance"});
    EXPECT_EQ(Dump({}).status, 0);
    EXPECT_EQ(Value("timeFactor"), "0.5");
    EXPECT_EQ(Value("lapCount"), "4");
}

TEST_F(CliCsv, ItemThatTheListLacksLeavesTheRowEmpty) {
    EXPECT_EQ(Dump({"--csv-row", "1=7"}).status, 0);
    EXPECT_EQ(Sample(2), "0,0,1010");
    const CliRun run = Dump({"--csv-row", "0=12"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "box File Error!! | The BaseTime that is not compatible.\n");
}

TEST_F(CliCsv, FailureOfTheTimeBaseIsTold) {
    log = folder.Write("bad.csv", "Time,RPM\n" + std::string(600, '\n'));
    const CliRun run = Dump({});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "box File Error!! | There was a problem with BaseTime data.  Manually setting the BaseTime.\n");
    EXPECT_EQ(Value("sampleCount"), "1");
}

TEST_F(CliCsv, UnusableOptionsAreRefused) {
    for (const char* value : {"0", "=1", "x=1", "1=x", "16=0", "-1=0", "1=106", "1=-2", "1=1x", ""}) {
        const CliRun run = Dump({"--csv-row", value});
        EXPECT_EQ(run.status, 2) << value;
        EXPECT_NE(run.err.find("accepted is ROW=ITEM"), std::string::npos) << run.err;
    }
    for (const char* value : {"", "numbers", "0"}) {
        const CliRun run = Dump({"--csv-lap", value});
        EXPECT_EQ(run.status, 2) << value;
        EXPECT_NE(run.err.find("accepted are number and distance"), std::string::npos) << run.err;
    }
    const CliRun run = RunCli({"--home", folder.Path(), "render", "--csv-row", "0=1", folder.Path("a.bmp"), log});
    EXPECT_EQ(run.status, 2);
}

TEST_F(CliCsv, HelpOfDumpTellsTheRows) {
    const CliRun run = RunCli({"dump", "--help"});
    for (const char* part : {"--csv-row ROW=ITEM", "--csv-lap number|distance", "preselection", "12 LAP"})
        EXPECT_NE(run.out.find(part), std::string::npos) << part;
}

TEST_F(CliCsv, ScriptsLoadCsvLogsWithTheirPreselection) {
    const std::string script = folder.Write("script.txt", "load 2 " + log + "\nboxes\nanswer " + log +
                                                              "\nkey 1\npass 1\nboxes\nstate sampleCount timeFactor csvRow lapByNumber\n");
    folder.Write("sorrel.crs", "0,0\n100,100\n");
    const CliRun run = RunCli({"--home", folder.Path(), "play", script});
    EXPECT_EQ(run.status, 0) << run.err;
    EXPECT_EQ(run.out,
              "dialog 1027\n"
              "open | *(*.*)|*.*|zrk(*.zrk)|*.zrk|qtw(*.qtw)|*.qtw|csv(*.csv)|*.csv\n"
              "dialog 1027\n"
              "sampleCount 62 62 1\ntimeFactor 0.5 0.5 1\ncsvRow 6 1 6 2 6 6 6 6 6 6 6 6 4 6 6 6\nlapByNumber 1\n");
}

}  // namespace
