// The words of the command line: what is taken, what is refused, and in which words.
#include "cli/arguments.h"

#include <gtest/gtest.h>

#include "tests/cli/cli_run.h"
#include "tests/test_folder.h"

namespace {

void ExpectRefused(const std::vector<std::string>& words, const std::string& reason) {
    const CliRun run = RunCli(words);
    EXPECT_EQ(run.status, exitUnusable);
    EXPECT_EQ(run.out, "");
    EXPECT_EQ(LineCount(run.err), 1) << run.err;
    EXPECT_NE(run.err.find(reason), std::string::npos) << run.err;
}

TEST(CliArguments, HelpNamesEveryCommandAndEveryOptionWithAnExample) {
    const CliRun run = RunCli({"--help"});
    EXPECT_EQ(run.status, exitDone);
    EXPECT_EQ(run.err, "");
    for (const char* word : {"dump OUTDIR", "render OUT.bmp", "play SCRIPT", "--home DIR", "--set SECTION.KEY=VALUE",
                             "--hold shift,ctrl", "--save-settings", "Example: zrka_cli --home"})
        EXPECT_NE(run.out.find(word), std::string::npos) << word;
}

TEST(CliArguments, EachCommandHasItsOwnHelp) {
    for (const char* command : {"dump", "render", "play"}) {
        const CliRun run = RunCli({command, "--help"});
        EXPECT_EQ(run.status, exitDone);
        EXPECT_NE(run.out.find(std::string("Usage: zrka_cli [OPTION]... ") + command), std::string::npos);
        EXPECT_NE(run.out.find("Example: zrka_cli " + std::string(command)), std::string::npos);
    }
    EXPECT_NE(RunCli({"render", "--help"}).out.find("--size WxH"), std::string::npos);
    EXPECT_NE(RunCli({"play", "--help"}).out.find("power suspend-query|suspend|resume"), std::string::npos);
}

TEST(CliArguments, NoCommandIsRefusedWithTheListOfCommands) { ExpectRefused({}, "the commands are dump, render, laps, export, distribution, play"); }

TEST(CliArguments, UnknownCommandIsRefusedWithTheListOfCommands) {
    ExpectRefused({"fly"}, "unknown command fly; the commands are dump, render, laps, export, distribution, play");
}

TEST(CliArguments, UnknownOptionsAreRefusedWithTheAcceptedOnes) {
    ExpectRefused({"--fast", "dump", "out", "a.zrk"}, "accepted are --home DIR, --set SECTION.KEY=VALUE");
    ExpectRefused({"render", "--big", "a.bmp", "a.zrk"}, "render takes --size WxH, --frames N, --keys KEYS");
    ExpectRefused({"dump", "--big", "out", "a.zrk"}, "unknown option --big");
}

TEST(CliArguments, OptionsWithoutTheirValueAreRefused) {
    ExpectRefused({"--home"}, "DIR is missing behind --home");
    ExpectRefused({"render", "a.bmp", "a.zrk", "--size"}, "WxH is missing behind --size");
}

TEST(CliArguments, WrongNumberOfOperandsIsRefused) {
    ExpectRefused({"dump"}, "dump takes OUTDIR FILE [FILE [FILE]]");
    ExpectRefused({"dump", "out"}, "dump takes OUTDIR FILE");
    ExpectRefused({"dump", "out", "1", "2", "3", "4"}, "dump takes OUTDIR FILE");
    ExpectRefused({"render", "out.bmp"}, "render takes OUT.bmp");
    ExpectRefused({"play"}, "play takes SCRIPT");
}

TEST(CliArguments, HomeMustBeAFolder) { ExpectRefused({"--home", "no such folder", "dump", "o", "f"}, "is not a folder"); }

TEST(CliArguments, HeldKeysAreShiftAndCtrl) {
    ExpectRefused({"--hold", "alt", "dump", "o", "f"}, "the keys are shift, ctrl or shift,ctrl");
    ExpectRefused({"--hold", "shift,", "dump", "o", "f"}, "the keys are");
    bool shift = false, ctrl = false;
    EXPECT_TRUE(ReadHeldKeys("ctrl,shift", shift, ctrl));
    EXPECT_TRUE(shift && ctrl);
}

TEST(CliArguments, SettingsNeedSectionKeyAndValue) {
    for (const char* setting : {"Debug=1", "SPLConfig.Debug", "SPLConfig.=1", ".Debug=1", "="})
        ExpectRefused({"--set", setting, "dump", "o", "f"}, "a setting is SECTION.KEY=VALUE");
}

TEST(CliArguments, AnUnknownSettingIsRefused) {
    TestFolder folder;
    ExpectRefused({"--home", folder.Path(), "--set", "SPLConfig.NoSuchKey=1", "dump", folder.Path("o"), "f"}, "no such setting");
}

TEST(CliArguments, ValuesWithPointsAndEqualSignsAreTakenWhole) {
    Invocation invocation;
    const Command none[] = {{"go", "", "", [] { return std::string(); }, "", {}, 0, 0, nullptr}};
    const std::vector<std::string> words = {"--set", "ModeSetting.CourseFile_name=a=b.crs", "go"};
    EXPECT_EQ(ParseArguments(words, none, invocation), -1);
    ASSERT_EQ(invocation.settings.size(), 1u);
    EXPECT_EQ(invocation.settings[0].section, "ModeSetting");
    EXPECT_EQ(invocation.settings[0].key, "CourseFile_name");
    EXPECT_EQ(invocation.settings[0].value, "a=b.crs");
}

TEST(CliArguments, NumbersAreWholeDecimalAndInRange) {
    int number = 0;
    EXPECT_TRUE(ReadNumber("-12", -20, 20, number));
    EXPECT_EQ(number, -12);
    for (const char* text : {"", "-", "1x", " 1", "1.0", "0x1", "21", "-21", "99999999999"})
        EXPECT_FALSE(ReadNumber(text, -20, 20, number)) << text;
}

TEST(CliArguments, RenderRefusesSizesAndFramesOutOfRange) {
    for (const char* size : {"100", "x", "0x5", "5x0", "axb", "100x100x100", "9000x10"})
        ExpectRefused({"render", "--size", size, "a.bmp", "a.zrk"}, "a size is WxH");
    for (const char* frames : {"0", "-1", "many"})
        ExpectRefused({"render", "--frames", frames, "a.bmp", "a.zrk"}, "frames are a number from 1");
}

}  // namespace
