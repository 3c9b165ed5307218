// The commands play and render: every instruction acts on the program, scripts are checked before they run.
#include "cli/play.h"

#include <gtest/gtest.h>

#include <sstream>

#include "run_data/channels.h"
#include "tests/cli/cli_run.h"
#include "tests/cli/sample_run.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

namespace {

struct CliPlay : testing::Test {
    TestFolder folder;  // with a course, so that the program has nothing to tell

    CliPlay() { folder.Write("sorrel.crs", MakeCourse("sorrel")); }

    std::string Log(int seconds = 20) {
        SampleLogOptions options;
        options.version = 2;
        options.laps = 0;
        options.seconds = seconds;
        return WriteSampleRun(folder, "run.zrk", options);
    }
    CliRun Play(const std::string& script, const std::vector<std::string>& files = {}) {
        std::vector<std::string> words = {"--home", folder.Path(), "play", folder.Write("script.txt", script)};
        words.insert(words.end(), files.begin(), files.end());
        return RunCli(words);
    }
    // Plays and expects success and these words on standard output.
    void ExpectPlay(const std::string& script, const std::string& out) {
        const CliRun run = Play(script);
        EXPECT_EQ(run.status, exitDone) << run.err;
        EXPECT_EQ(run.out, out);
    }
};

TEST_F(CliPlay, AnEmptyScriptAndCommentsDoNothing) { ExpectPlay("# nothing\n\n   \t\n#state x\n", ""); }

TEST_F(CliPlay, LineEndsAndTrailingCommentsAreTaken) {
    ExpectPlay("state lapCount # laps\r\nstate timeFactor", "lapCount 1 1 1\ntimeFactor 1 1 1\n");
}

TEST_F(CliPlay, SizeSetsTheClientAreaBeforeThePassesAndResizesLater) {
    ExpectPlay("size 640 480\npass 1\nstate clientWidth clientHeight\nsize 300 200\npass 1\nstate clientWidth clientHeight\n",
               "clientWidth 640\nclientHeight 480\nclientWidth 300\nclientHeight 200\n");
}

TEST_F(CliPlay, ASizeLargerThanTheUsualScreenFindsRoom) {
    ExpectPlay("size 3840 2160\npass 1\nstate clientWidth screenWidth screenHeight\n",
               "clientWidth 3840\nscreenWidth 3840\nscreenHeight 2160\n");
}

TEST_F(CliPlay, WithoutSizeTheSettingsClientAreaIsUsed) {
    ExpectPlay("pass 1\nstate clientWidth clientHeight x2\n", "clientWidth 1024\nclientHeight 768\nx2 1024\n");
}

TEST_F(CliPlay, MouseReachesTheInputStep) {
    ExpectPlay("mouse 120 90\npass 1\nstate mouseX mouseY\n", "mouseX 120\nmouseY 90\n");
}

// A load with Shift down writes the gear ratio into VFSus, which shows in its extreme.
TEST_F(CliPlay, HeldKeysActOnLoadsUntilTheyAreReleased) {
    const std::string log = Log();
    std::istringstream values(Play("hold shift\nload 1 " + log + "\nhold\nload 2 " + log + "\nstate channelMax\n").out);
    std::string name;
    int maxima[fileSlots * channelTotal] = {};
    values >> name;
    for (int& maximum : maxima) values >> maximum;
    EXPECT_GT(maxima[chVFSus], 10000);
    EXPECT_LT(maxima[channelTotal + chVFSus], 2000);
}

TEST_F(CliPlay, ButtonsReachTheInputStep) {
    ExpectPlay("mouse 500 300\nbuttons 4\npass 1\nstate mouseButtons\nbuttons 0\npass 1\nstate mouseButtons\n",
               "mouseButtons 4\nmouseButtons 0\n");
}

TEST_F(CliPlay, MouseAndHeldKeysReachTheInputStep) {
    ExpectPlay("mouse 120 90\nhold shift,ctrl\npass 1\nstate mouseX mouseY shiftDown ctrlDown\nhold\npass 1\nstate shiftDown ctrlDown\n",
               "mouseX 120\nmouseY 90\nshiftDown 1\nctrlDown 1\nshiftDown 0\nctrlDown 0\n");
}

TEST_F(CliPlay, WheelMagnifiesTheView) { ExpectPlay("wheel 1\npass 1\nstate viewZoomGoal\n", "viewZoomGoal 20000\n"); }

TEST_F(CliPlay, HorizontalWheelStepsALapOnEveryWholeNotch) {
    const CliRun run = Play("pass 100\nhwheel 60\npass 1\nstate jumpTarget\nhwheel 60\npass 1\nstate animationPending\n", {Log(200)});
    EXPECT_EQ(run.status, exitDone) << run.err;
    EXPECT_EQ(run.out, "jumpTarget -1 -1 -1\nanimationPending 1\n");
}

TEST_F(CliPlay, KeysAreTypedOnePerPass) {
    ExpectPlay("key b\nkey B\npass 1\nstate scrollBarOn\npass 1\nstate scrollBarOn\n", "scrollBarOn 0\nscrollBarOn 1\n");
}

TEST_F(CliPlay, NamedKeysAreTyped) {
    const CliRun run = Play("pass 100\nkey Right\npass 1\nstate animationPending\npass 100\nkey Left\nkey Up\nkey Down\nkey Tab\n"
                            "key Esc\nkey Space\npass 6\nstate fileMoveOn\n", {Log(20)});
    EXPECT_EQ(run.status, exitDone) << run.err;
    EXPECT_EQ(run.out, "animationPending 1\nfileMoveOn 1 0 1\n");
}

TEST_F(CliPlay, DialogsAreTold) { ExpectPlay("key F\npass 1\nboxes\n", "dialog 1019\n"); }

TEST_F(CliPlay, SaveSettingsWritesAtTheEndOnly) {
    Play("key b\npass 1\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "ZRKA.ini"));
    RunCli({"--home", folder.Path(), "--save-settings", "play", folder.Write("script.txt", "key q\npass 1\n")});
    EXPECT_NE(folder.Read("ZRKA.ini").find("BodyDisplay=0"), std::string::npos);
}

TEST_F(CliPlay, CommandsPressTheToolBarsButtons) {
    ExpectPlay("pass 1\ncommand 1111\nstate fileMoveOn\ncommand 1111 checked\nstate fileMoveOn\ncommand 1037\nboxes\n",
               "fileMoveOn 0 1 1\nfileMoveOn 1 1 1\ndialog 1019\n");
}

TEST_F(CliPlay, AForeignForegroundHoldsTheMouseStill) {
    ExpectPlay("mouse 100 100\npass 1\nforeground other\nmouse 300 300\npass 1\nstate mouseX\nforeground main\npass 1\nstate mouseX\n"
               "foreground toolbar\nmouse 200 200\npass 1\nstate mouseX\n",
               "mouseX 100\nmouseX 300\nmouseX 200\n");
}

TEST_F(CliPlay, PowerEventsWalkThroughTheStates) {
    ExpectPlay("pass 1\npower suspend-query\nstate powerState\npower suspend\nstate powerState\npass 3\nstate powerState frameNumber\n"
               "power resume\nstate powerState\npass 1\nstate powerState\n",
               "powerState 1\npowerState 2\npowerState 2\nframeNumber 1\npowerState 3\npowerState 0\n");
}

TEST_F(CliPlay, ADisplayChangeRebuildsAndWakes) {
    ExpectPlay("pass 400\nstate activityCount\ndisplay-change\nstate activityCount\n", "activityCount 0\nactivityCount 150\n");
}

TEST_F(CliPlay, CloseEndsTheLoop) {
    ExpectPlay("pass 2\nclose\npass 5\nstate frameNumber\n", "frameNumber 2\n");
}

TEST_F(CliPlay, AnswersGoToTheNextOpenDialog) {
    const std::string log = Log();
    ExpectPlay("answer cancel\nanswer " + log + "\nkey 1\nkey 2\npass 2\nstate slotInUse fileTitle\nboxes\nboxes\n",
               "slotInUse 1 1 0 0\nfileTitle \"\" \"run.zrk\" \"\"\n"
               "open | *(*.*)|*.*|zrk(*.zrk)|*.zrk|qtw(*.qtw)|*.qtw|csv(*.csv)|*.csv\n"
               "open | *(*.*)|*.*|zrk(*.zrk)|*.zrk|qtw(*.qtw)|*.qtw|csv(*.csv)|*.csv\n");
}

TEST_F(CliPlay, LoadFillsTheSlot) {
    ExpectPlay("load 3 " + Log() + "\nstate slotInUse formatVersion\n", "slotInUse 1 0 1 0\nformatVersion 0 0 2\n");
}

TEST_F(CliPlay, LoadsThatFailAreToldByBoxesAndOnStandardError) {
    const std::string junk = folder.Write("junk.zrk", "short");
    const CliRun run = Play("load 1 " + junk + "\nboxes\n");
    EXPECT_EQ(run.status, exitDone);
    EXPECT_EQ(run.out, "box File Error | Load file error " + junk + "\n");
    EXPECT_EQ(run.err, run.out);
}

TEST_F(CliPlay, AFileOfTheCommandLineThatFailsIsTheExitStatus) {
    const CliRun run = Play("pass 1\nstate frameNumber\n", {folder.Write("junk.zrk", "short")});
    EXPECT_EQ(run.status, exitFailed);
    EXPECT_EQ(run.out, "frameNumber 1\n");
}

TEST_F(CliPlay, TimeIsVirtual) {
    // 2000 idle passes rest 200 ms each: 400 s of the program's time.
    ExpectPlay("pass 2000\nstate activityCount\n", "activityCount 0\n");
}

TEST_F(CliPlay, AnIdleMinuteDrawsNoFrame) {
    const std::string minute = "state frameNumber\nops " + folder.Path("ops.txt") + "\npass 300\nops off\nstate frameNumber\n";
    const CliRun run = Play("pass 1000\n" + minute, {Log()});
    EXPECT_EQ(run.status, exitDone) << run.err;
    const std::string once = run.out.substr(0, run.out.size() / 2);
    EXPECT_GT(std::stoi(once.substr(std::string("frameNumber ").size())), 100) << "the frames before it came to rest";
    EXPECT_EQ(run.out, once + once);
    EXPECT_EQ(folder.Read("ops.txt"), "");
}

TEST_F(CliPlay, OperationsAreRecordedBetweenOpsAndOpsOff) {
    const CliRun run = Play("pass 1\nops " + folder.Path("ops.txt") + "\npass 2\nops off\npass 1\n");
    EXPECT_EQ(run.status, exitDone) << run.err;
    const std::string ops = folder.Read("ops.txt");
    EXPECT_EQ(ops.rfind("frame 1\nSetBlend 0 255\n", 0), 0u) << ops.substr(0, 200);
    EXPECT_NE(ops.find("\nframe 2\n"), std::string::npos);
    EXPECT_EQ(ops.find("frame 3"), std::string::npos);
    EXPECT_NE(ops.find("gridStrip"), std::string::npos);
}

TEST_F(CliPlay, ARecordingThatIsNotStoppedEndsWithTheScript) {
    Play("ops " + folder.Path("ops.txt") + "\npass 1\n");
    EXPECT_EQ(folder.Read("ops.txt").rfind("frame 1\n", 0), 0u);
}

TEST_F(CliPlay, ShotSavesTheClientAreaOfTheLastFrame) {
    const CliRun run = Play("size 64 50\npass 1\nshot " + folder.Path("a.bmp") + "\n");
    EXPECT_EQ(run.status, exitDone) << run.err;
    const std::string picture = folder.Read("a.bmp");
    EXPECT_EQ(picture.substr(0, 2), "BM");
    EXPECT_EQ(picture.size(), 54u + 64 * 3 * 50);
}

TEST_F(CliPlay, ShotBeforeAnyFrameFails) {
    EXPECT_EQ(Play("shot " + folder.Path("a.bmp") + "\n").status, exitFailed);
    EXPECT_FALSE(std::filesystem::exists(folder.path / "a.bmp"));
}

TEST_F(CliPlay, FilesThatCannotBeWrittenFail) {
    EXPECT_EQ(Play("pass 1\nshot " + folder.Path("no/a.bmp") + "\n").status, exitFailed);
    EXPECT_EQ(Play("ops " + folder.Path("no/ops.txt") + "\npass 1\n").status, exitFailed);
}

TEST_F(CliPlay, WrongInstructionsAreRefusedWithTheirLine) {
    const char* wrong[] = {"jump",          "size 5",       "size 5 6 7",    "size -1 5",    "size 9000 5",   "mouse 1",
                           "mouse a b",     "buttons",      "buttons 32",    "wheel",        "wheel 1.5",     "hwheel x",
                           "hold alt",      "key",          "key AB",        "key \x01",     "foreground",    "foreground top",
                           "power off",     "close now",    "display-change 1", "answer",    "load 4 a.zrk",  "load 1",
                           "load a.zrk",    "pass",         "pass -1",       "state",        "state x nothing", "ops",
                           "shot",          "boxes all",     "command",         "command 5",     "command 1111 on"};
    for (const char* line : wrong) {
        SCOPED_TRACE(line);
        const CliRun run = Play("state lapCount\n\n" + std::string(line) + "\n");
        EXPECT_EQ(run.status, exitUnusable);
        EXPECT_EQ(run.out, "") << "nothing runs when a line is wrong";
        EXPECT_NE(run.err.find("script.txt line 3: "), std::string::npos) << run.err;
        EXPECT_EQ(LineCount(run.err), 1);
    }
}

TEST_F(CliPlay, AScriptThatCannotBeReadIsRefused) {
    const CliRun run = RunCli({"play", folder.Path("missing.txt")});
    EXPECT_EQ(run.status, exitUnusable);
    EXPECT_NE(run.err.find("cannot read"), std::string::npos);
}

TEST_F(CliPlay, SettingsAreWrittenAtTheEndWhenAsked) {
    Play("pass 1\n");
    EXPECT_FALSE(std::filesystem::exists(folder.path / "ZRKA.ini"));
    RunCli({"--home", folder.Path(), "--save-settings", "play", folder.Write("script.txt", "size 320 240\npass 1\n")});
    EXPECT_NE(folder.Read("ZRKA.ini").find("x2=320"), std::string::npos);
}

TEST_F(CliPlay, RenderSavesAPictureOfTheGivenSize) {
    const CliRun run = RunCli({"--home", folder.Path(), "render", "--size", "200x100", "--frames", "3", "--keys", "b",
                               folder.Path("a.bmp"), Log()});
    EXPECT_EQ(run.status, exitDone) << run.err;
    EXPECT_EQ(folder.Read("a.bmp").size(), 54u + 200 * 3 * 100);
}

TEST_F(CliPlay, RenderShowsTheTraces) {
    const std::vector<std::string> words = {"--home", folder.Path(), "render", "--size", "400x300"};
    std::vector<std::string> log = words, empty = words;
    log.insert(log.end(), {folder.Path("log.bmp"), Log()});
    empty.insert(empty.end(), {folder.Path("empty.bmp"), folder.Write("junk.zrk", "short")});
    EXPECT_EQ(RunCli(log).status, exitDone);
    EXPECT_EQ(RunCli(empty).status, exitFailed);
    EXPECT_NE(folder.Read("log.bmp"), folder.Read("empty.bmp"));
}

}  // namespace
