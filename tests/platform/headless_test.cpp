// The platform without windows: what a script prepares is what the services give.
#include <gtest/gtest.h>

#include "platform/boxes.h"
#include "platform/clock.h"
#include "platform/dialogs.h"
#include "platform/file_dialogs.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "platform/system_files.h"
#include "tests/test_folder.h"

namespace {

struct Headless : testing::Test {
    void SetUp() override { DefaultScript(); }
    void TearDown() override { DefaultScript(); }
};

TEST_F(Headless, BoxesAreRecordedInOrder) {
    ShowBox("Load file error a.zrk", "File Error");
    EXPECT_EQ(ConfirmBox("Really ?", "Confirmation"), 0);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].kind, "box");
    EXPECT_EQ(shown[0].title, "File Error");
    EXPECT_EQ(shown[0].text, "Load file error a.zrk");
    EXPECT_EQ(shown[1].kind, "confirm");
}

TEST_F(Headless, ConfirmationsTakeThePreparedAnswersInOrderAndThenCancel) {
    QueueAnswer(Answer::ok);
    QueueAnswer(Answer::cancel);
    QueueAnswer(Answer::ok);
    EXPECT_EQ(ConfirmBox("", ""), 1);
    EXPECT_EQ(ConfirmBox("", ""), 0);
    EXPECT_EQ(ConfirmBox("", ""), 1);
    EXPECT_EQ(ConfirmBox("", ""), 0);
}

int HandlerSeesItsArgument(int id, int argument) {
    EXPECT_EQ(DialogArgument(), argument);
    if (argument == 7) {  // opens another one, whose argument goes with it
        EXPECT_EQ(OpenDialog(id + 1, 8), id + 1);
        EXPECT_EQ(DialogArgument(), 7);
    }
    return id;
}

TEST_F(Headless, DialogsAreRecordedAndAnsweredByTheHandler) {
    EXPECT_EQ(OpenDialog(1019), 0);
    SetDialogHandler(HandlerSeesItsArgument);
    EXPECT_EQ(OpenDialog(1022, 7), 1022);
    ASSERT_EQ(shown.size(), 3u);
    EXPECT_EQ(shown[0].kind, "dialog");
    EXPECT_EQ(shown[0].title, "1019");
    EXPECT_EQ(shown[2].title, "1023");
}

struct HeadlessFileDialogs : Headless {
    TestFolder folder;
    std::string startFolder = CurrentFolder();
    const FileFilter filters[2] = {{"*(*.*)", "*.*"}, {"zrk(*.zrk)", "*.zrk"}};
    char path[pathSize] = "";
    FileDialog Dialog() const { return {filters, 2, nullptr, "", nullptr, false}; }
    void TearDown() override {
        EnterFolder(startFolder.c_str());
        Headless::TearDown();
    }
};

TEST_F(HeadlessFileDialogs, WithoutAnAnswerTheyAreCancelled) {
    EXPECT_EQ(AskOpenFile(Dialog(), path), 0);
    EXPECT_EQ(AskSaveFile(Dialog(), path), 0);
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].kind, "open");
    EXPECT_EQ(shown[0].text, "*(*.*)|*.*|zrk(*.zrk)|*.zrk");
    EXPECT_EQ(shown[1].kind, "save");
    EXPECT_EQ(CurrentFolder(), startFolder);
}

TEST_F(HeadlessFileDialogs, OpeningGivesTheFullPathAndEntersItsFolder) {
    folder.Write("a.zrk", "");
    EnterFolder(folder.Path().c_str());
    const std::string expected = AbsolutePath("a.zrk");
    QueueAnswer(Answer::path, "a.zrk");
    EXPECT_EQ(AskOpenFile(Dialog(), path), 1);
    EXPECT_EQ(path, expected);
    EXPECT_TRUE(std::filesystem::equivalent(CurrentFolder(), folder.path));
}

TEST_F(HeadlessFileDialogs, OpeningAMissingFileIsACancel) {
    QueueAnswer(Answer::path, folder.Path("missing.zrk"));
    EXPECT_EQ(AskOpenFile(Dialog(), path), 0);
    EXPECT_EQ(CurrentFolder(), startFolder);
}

TEST_F(HeadlessFileDialogs, SavingAddsTheDefaultExtensionToANameWithoutOne) {
    FileDialog dialog = Dialog();
    dialog.defaultExtension = "cfg";
    QueueAnswer(Answer::path, folder.Path("layout"));
    EXPECT_EQ(AskSaveFile(dialog, path), 1);
    EXPECT_EQ(path, AbsolutePath(folder.Path("layout.cfg").c_str()));
    QueueAnswer(Answer::path, folder.Path("layout.txt"));
    EXPECT_EQ(AskSaveFile(dialog, path), 1);
    EXPECT_EQ(path, AbsolutePath(folder.Path("layout.txt").c_str()));
}

TEST_F(HeadlessFileDialogs, OkAloneTakesTheOfferedName) {
    const std::string start = folder.Path();
    FileDialog dialog  = Dialog();
    dialog.defaultName = "SETUP.ZRV";
    dialog.startFolder = start.c_str();
    QueueAnswer(Answer::ok);
    EXPECT_EQ(AskSaveFile(dialog, path), 1);
    EXPECT_TRUE(std::string(path).ends_with("SETUP.ZRV"));
    dialog.defaultName = nullptr;
    QueueAnswer(Answer::ok);
    EXPECT_EQ(AskSaveFile(dialog, path), 0);
}

TEST_F(HeadlessFileDialogs, APathThatDoesNotFitIsACancel) {
    QueueAnswer(Answer::path, folder.Path(std::string(pathSize, 'x')));
    EXPECT_EQ(AskSaveFile(Dialog(), path), 0);
}

TEST_F(Headless, AWaitAdvancesTheVirtualClockAtOnce) {
    EXPECT_EQ(SteadyMs(), 0);
    SleepMs(200);
    AdvanceClock(50);
    SleepMs(-5);
    EXPECT_EQ(SteadyMs(), 250);
}

TEST_F(Headless, VirtualLocalTimeRunsOnFromWhereItWasSet) {
    SleepMs(5000);
    SetVirtualTime(2024, 2, 28, 23, 59);
    const LocalTime set = NowLocal();
    EXPECT_EQ(set.minute, 59);
    EXPECT_EQ(set.second, 0);
    SleepMs(61000);
    const LocalTime later = NowLocal();
    EXPECT_EQ(later.year, 2024);
    EXPECT_EQ(later.month, 2);
    EXPECT_EQ(later.day, 29);
    EXPECT_EQ(later.hour, 0);
    EXPECT_EQ(later.minute, 0);
    EXPECT_EQ(later.second, 1);
}

TEST_F(Headless, TheRealClockMovesBySleeping) {
    UseVirtualClock(false);
    const int64_t before = SteadyMs();
    SleepMs(3);
    EXPECT_GE(SteadyMs() - before, 3);
    EXPECT_GE(NowLocal().year, 2024);
}

TEST_F(Headless, WindowPixelsStandInRowsOfAnOddMultipleOf64Bytes) {
    ASSERT_EQ(OpenMainWindow({"t", 1000, 10, 20, 640, 480, false}), 0);
    for (int width : {1, 16, 17, 32, 1920, 1928, 3840}) {
        int pitch = 0;
        const uint32_t* pixels = AllocateWindowPixels(width, 3, &pitch);
        ASSERT_NE(pixels, nullptr);
        EXPECT_GE(pitch, width);
        EXPECT_LT(pitch, width + 48);
        EXPECT_EQ(pitch % 32, 16) << width;
        EXPECT_EQ(reinterpret_cast<uintptr_t>(pixels) % 64, 0u);
        EXPECT_EQ(pixels[size_t(pitch) * 3 - 1], 0u);
    }
    CloseMainWindow();
}

TEST_F(Headless, TheWindowIsAsTheProgramOpensItUnlessTheScriptSaysItsSize) {
    int x, y, width, height;
    OpenMainWindow({"t", 1000, 10, 20, 640, 480, false});
    WindowClientSize(&width, &height);
    WindowPosition(&x, &y);
    EXPECT_EQ(std::pair(width, height), std::pair(640, 480));
    EXPECT_EQ(std::pair(x, y), std::pair(10, 20));
    ScriptClientSize(300, 200);
    OpenMainWindow({"t", 1000, 10, 20, 640, 480, false});
    WindowClientSize(&width, &height);
    EXPECT_EQ(std::pair(width, height), std::pair(300, 200));
}

TEST_F(Headless, AMinimisedWindowHasNoClientAreaAndComesBackAsItWas) {
    int width, height;
    OpenMainWindow({"t", 1000, 0, 0, 640, 480, false});
    ShowMainWindow(2);
    EXPECT_TRUE(MainWindowMaximised());
    ShowMainWindow(1);
    WindowClientSize(&width, &height);
    EXPECT_EQ(std::pair(width, height), std::pair(0, 0));
    EXPECT_FALSE(MainWindowMaximised());
    ShowMainWindow(3);
    EXPECT_TRUE(MainWindowMaximised());
    ShowMainWindow(3);
    EXPECT_FALSE(MainWindowMaximised());
    WindowClientSize(&width, &height);
    EXPECT_EQ(std::pair(width, height), std::pair(640, 480));
}

TEST_F(Headless, ACloseFailsThePumpUntilTheWindowGoes) {
    OpenMainWindow({"t", 1000, 0, 0, 640, 480, false});
    EXPECT_EQ(PumpMessages(), 0);
    ScriptClose();
    EXPECT_EQ(PumpMessages(), -1);
    EXPECT_TRUE(CloseRequested());
    CloseMainWindow();
    EXPECT_FALSE(CloseRequested());
    EXPECT_FALSE(MainWindowOpen());
}

TEST_F(Headless, APumpFailureIsNoCloseAndComesOnce) {
    ScriptPumpFailure();
    EXPECT_EQ(PumpMessages(), -1);
    EXPECT_FALSE(CloseRequested());
    EXPECT_EQ(PumpMessages(), 0);
}

TEST_F(Headless, WheelsAndCharactersAreTakenOnce) {
    ScriptWheel(2);
    ScriptWheel(-1);
    ScriptHWheel(-30);
    EXPECT_EQ(TakeWheelDelta(), 120);
    EXPECT_EQ(TakeWheelDelta(), 0);
    EXPECT_EQ(TakeHWheelDelta(), -30);
    EXPECT_EQ(TakeHWheelDelta(), 0);
    ScriptChar('A');
    ScriptChar(28);
    EXPECT_EQ(TakeTypedChar(), 'A');
    EXPECT_EQ(TakeTypedChar(), 28);
    EXPECT_EQ(TakeTypedChar(), 0);
    ScriptChar('B');
    ClearTypedChars();
    EXPECT_EQ(TakeTypedChar(), 0);
}

TEST_F(Headless, HeldKeysAndForegroundAreTheScripts) {
    ScriptHold(true, false);
    EXPECT_TRUE(IsKeyHeld(HeldKey::shift));
    EXPECT_FALSE(IsKeyHeld(HeldKey::ctrl));
    ScriptForeground(Foreground::toolbar);
    EXPECT_EQ(ForegroundWindow(), Foreground::toolbar);
    BringMainWindowToFront();
    EXPECT_EQ(ForegroundWindow(), Foreground::mainWindow);
}

}  // namespace
