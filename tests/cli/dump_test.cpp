// The command dump: what it writes is what the store holds.
#include <gtest/gtest.h>

#include <sstream>

#include "run_data/run_store.h"
#include "cli/session.h"
#include "tests/cli/cli_run.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

std::string SampleLog(int version, int seconds) {
    SampleLogOptions options;
    options.version = version;
    options.laps = 0;
    options.seconds = seconds;
    const std::vector<uint8_t> bytes = MakeSampleLog(options);
    return {bytes.begin(), bytes.end()};
}

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

// Loads the file as the command does and keeps it in the store.
void LoadIntoStore(const std::string& home, const std::string& path) {
    CliCapture capture;
    Invocation invocation;
    invocation.home = home;
    BeginSession(invocation);
    LoadLog(invocation, path, 0);
    capture.Finish(0);
}

TEST(CliDump, EveryLineOfSamplesIsWhatTheStoreHolds) {
    for (const int version : {0, 32, 1, 2, 3, 4}) {
        SCOPED_TRACE(version);
        TestFolder folder;
        const std::string log = folder.Write("run.zrk", SampleLog(version, 20));
        const CliRun run = RunCli({"--home", folder.Path(), "dump", folder.Path("out"), log});
        ASSERT_EQ(run.status, exitDone) << run.err;
        LoadIntoStore(folder.Path(), log);
        const std::vector<std::string> lines = Lines(folder.Read("out/samples1.csv"));
        ASSERT_EQ(lines.size(), static_cast<size_t>(sampleCount[0]) + 1);
        ASSERT_GT(sampleCount[0], 3000);
        EXPECT_EQ(lines[0], "i,Ne,TH,VFW,VRW,FSUS,RSUS,LAF1,LAF2,VB,AUX1,AUX2,lapDistance,distFront,distRear,sampleFlag,VFSus,VRSus");
        for (int i = 0; i < sampleCount[0]; i++) {
            std::ostringstream line;
            line << i << ',' << Ne[0][i] << ',' << TH[0][i] << ',' << VFW[0][i] << ',' << VRW[0][i] << ',' << FSUS[0][i] << ','
                 << RSUS[0][i] << ',' << LAF1[0][i] << ',' << LAF2[0][i] << ',' << VB[0][i] << ',' << AUX1[0][i] << ','
                 << AUX2[0][i] << ',' << lapDistance[0][i] << ',' << distFront[0][i] << ',' << distRear[0][i] << ','
                 << int{sampleFlag[0][i]} << ',' << VFSus[0][i] << ',' << VRSus[0][i];
            ASSERT_EQ(lines[i + 1], line.str());
        }
    }
}

TEST(CliDump, WritesOneSlotPerFileInUse) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 5));
    const CliRun run = RunCli({"--home", folder.Path(), "dump", folder.Path("a/b"), log, log});
    EXPECT_EQ(run.status, exitDone) << run.err;
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(folder.Read("a/b/samples1.csv"), folder.Read("a/b/samples2.csv"));
    EXPECT_NE(folder.Read("a/b/slot2.txt").find("\nfileTitle \"run.zrk\"\n"), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "a" / "b" / "slot3.txt"));
}

TEST(CliDump, FilesAreFoundFromTheFolderTheUserStandsIn) {
    TestFolder folder;
    folder.Write("run.zrk", SampleLog(2, 5));
    std::filesystem::create_directory(folder.path / "home");
    CliCapture capture;
    std::filesystem::current_path(folder.path);
    const CliRun run = capture.Finish(RunCommandLine(std::vector<std::string>{"--home", "home", "dump", "out", "run.zrk"}));
    EXPECT_EQ(run.status, exitDone) << run.err;
    EXPECT_NE(folder.Read("out/slot1.txt").find("slotInUse 1\nfileKind 1\nformatVersion 2\n"), std::string::npos);
}

TEST(CliDump, AFileThatIsNoLogFailsWithTheBoxAndLeavesTheOtherSlots) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 5));
    const std::string junk = folder.Write("junk.zrk", "too short");
    const CliRun run = RunCli({"--home", folder.Path(), "dump", folder.Path("out"), log, junk});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_EQ(run.err, "box File Error | Load file error " + junk + "\n");
    EXPECT_NE(folder.Read("out/samples1.csv"), "");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "out" / "slot2.txt"));
}

TEST(CliDump, AFolderThatCannotBeMadeFails) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 5));
    const CliRun run = RunCli({"--home", folder.Path(), "dump", log, log});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_NE(run.err.find("cannot make the folder"), std::string::npos);
}

TEST(CliDump, SettingsActOnTheLoad) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 20));
    RunCli({"--home", folder.Path(), "--set", "ModeSetting.VFWCopyVRW=1", "dump", folder.Path("out"), log});
    const std::vector<std::string> lines = Lines(folder.Read("out/samples1.csv"));
    ASSERT_GT(lines.size(), 2000u);
    std::istringstream fields(lines[2000]);
    std::string field[5];
    for (std::string& text : field) std::getline(fields, text, ',');
    EXPECT_EQ(field[3], field[4]);  // VFW and VRW
}

TEST(CliDump, HeldKeysActOnTheLoad) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 20));
    RunCli({"--home", folder.Path(), "dump", folder.Path("plain"), log});
    RunCli({"--home", folder.Path(), "--hold", "shift", "dump", folder.Path("held"), log});
    EXPECT_NE(folder.Read("plain/samples1.csv"), folder.Read("held/samples1.csv"));  // VFSus carries the gear ratio
}

TEST(CliDump, WithoutSaveSettingsNothingIsWrittenIntoTheProgramsFolder) {
    TestFolder folder;
    const std::string log = folder.Write("run.zrk", SampleLog(2, 5)), home = folder.Path("home");
    std::filesystem::create_directory(folder.path / "home");
    RunCli({"--home", home, "--set", "ModeSetting.colortype=1", "dump", folder.Path("out"), log});
    EXPECT_TRUE(std::filesystem::is_empty(folder.path / "home"));
    RunCli({"--home", home, "--save-settings", "--set", "ModeSetting.colortype=1", "dump", folder.Path("out"), log});
    EXPECT_NE(folder.Read("home/ZRKA.ini").find("colortype=1"), std::string::npos);
}

}  // namespace
