// The real program: it starts, shows, survives what the system does to it, and ends in order.
#include "tests/windows/program.h"

namespace {

SampleLogOptions ShortLog(uint64_t seed = 1) {
    SampleLogOptions options;
    options.laps = 1;
    options.seed = seed;
    return options;
}

// The traces stand here free of the keyboard help, which fades with every frame, of the tool bar, and of the summary,
// which a rebuild draws anew with the zoom of that moment.
constexpr RECT traces = {640, 0, 1024, 600};

std::pair<int, int> ClientSize(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

TEST(ProgramStart, TitleStyleAndClientSizeAreAsTheSettingsSay) {
    Program program;
    program.home.Write("ZRKA.ini", "[Window]\r\nx=40\r\ny=30\r\nx2=800\r\ny2=500\r\n");
    ASSERT_TRUE(program.Start());
    EXPECT_EQ(WindowText(program.main), "ZRKA Ver 1.01.64_e");
    EXPECT_EQ(ClientSize(program.main), std::pair(800, 500));
    RECT frame = {};
    GetWindowRect(program.main, &frame);
    EXPECT_EQ(std::pair(frame.left, frame.top), std::pair(LONG{40}, LONG{30}));
    const LONG_PTR style = GetWindowLongPtrW(program.main, GWL_STYLE);
    for (LONG_PTR part : {WS_CAPTION, WS_SYSMENU, WS_MINIMIZEBOX, WS_MAXIMIZEBOX}) EXPECT_EQ(style & part, part);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramStart, WithoutSettingsAndPicturesItRunsAndReportsNothing) {
    Program program;
    ASSERT_EQ(program.home.EntryCount(), 2) << "the program and a course, nothing else";
    ASSERT_TRUE(program.Start());
    EXPECT_GT(ColorCount(program.RestingPicture()), 10);
    EXPECT_FALSE(program.Find("ZRKA"));
    EXPECT_FALSE(program.Find("Error"));
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "x2"), "1024");
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "y2"), "768");
}

TEST(ProgramStart, AMissingCourseIsToldAndTheProgramRunsOnWithoutTheMap) {
    Program program;
    std::filesystem::remove(program.home.path / "sorrel.crs");
    ASSERT_TRUE(program.Launch());
    ASSERT_TRUE(program.AnswerBox("ZRKA", "Not Found Course Layout File !"));
    ASSERT_TRUE(program.FindWindows());
    EXPECT_GT(ColorCount(program.RestingPicture()), 10);
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "ModeSetting", "CourseLayout_on"), "0");
}

TEST(ProgramStart, AWindowOutsideTheScreensComesBackToTheirEdge) {
    Program program;
    program.home.Write("ZRKA.ini", "[Window]\r\nx=30000\r\ny=30000\r\n");
    ASSERT_TRUE(program.Start());
    RECT frame = {};
    GetWindowRect(program.main, &frame);
    EXPECT_EQ(std::pair(frame.left, frame.top), std::pair(LONG{0}, LONG{0}));
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramStart, ALogNamedOnTheCommandLineStandsOnTheScreen) {
    Program empty;
    ASSERT_TRUE(empty.Start());
    const Picture without = empty.RestingPicture();
    EXPECT_EQ(empty.Close(), 0);

    Program program;
    const std::string log = program.WriteLog("a run \xE3\x83\xAD\xE3\x82\xB0.zrk", ShortLog());  // blanks and Japanese
    ASSERT_TRUE(program.Start({log}));
    const Picture with = program.RestingPicture();
    EXPECT_FALSE(program.Find("File Error"));
    EXPECT_GT(with.DifferentPixels(without), 1000);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramStart, TheWindowShowsPixelForPixelWhatTheCommandLineRenders) {
    Program program;
    const std::string log = program.WriteLog("a.zrk", ShortLog()), bmp = program.home.Path("a.bmp");
    ASSERT_EQ(RunTool("zrka_cli.exe", {"--home", program.home.Path(), "render", "--size", "1024x768", bmp, log}), 0);
    SetCursorPos(0, 0);  // where the rendering has its mouse, too
    ASSERT_TRUE(program.Start({log}));
    SetWindowPos(program.toolbar, nullptr, 1500, 0, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
    EXPECT_EQ(program.RestingPicture().DifferentPixels(ReadBmp(bmp)), 0);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramStart, ALogThatCannotBeReadIsToldAndTheProgramGoesOn) {
    Program program;
    const std::string log = program.home.Write("short.zrk", "3 is not enough");
    const std::string missing = program.home.Path("missing.zrk");
    for (const std::string& path : {log, missing}) {
        SCOPED_TRACE(path);
        ASSERT_TRUE(program.Start({path}));
        EXPECT_TRUE(program.AnswerBox("File Error", "Load file error " + path));
        EXPECT_GT(ColorCount(program.RestingPicture()), 10);
        EXPECT_EQ(program.Close(), 0);
    }
}

TEST(ProgramWindow, ComesBackFromMinimisedWithItsPicture) {
    Program program;
    ASSERT_TRUE(program.Start({program.WriteLog("a.zrk", ShortLog())}));
    const Picture before = program.RestingPicture();
    ASSERT_TRUE(program.Show(SW_MINIMIZE));
    ASSERT_TRUE(program.Show(SW_RESTORE));
    EXPECT_EQ(program.RestingPicture().DifferentPixels(before, traces), 0);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramWindow, ClosedWhileMinimisedKeepsItsPlace) {
    Program program;
    program.home.Write("ZRKA.ini", "[Window]\r\nx=40\r\ny=30\r\nx2=800\r\ny2=500\r\n");
    ASSERT_TRUE(program.Start());
    ASSERT_TRUE(program.Show(SW_MINIMIZE));
    EXPECT_EQ(program.Close(), 0);
    const std::string ini = program.home.Path("ZRKA.ini");
    for (const auto& [key, value] : {std::pair("x", "40"), {"y", "30"}, {"x2", "800"}, {"y2", "500"}, {"zoomed", "0"}})
        EXPECT_EQ(IniValue(ini, "Window", key), value) << key;
}

TEST(ProgramWindow, MaximisedAtTheEndIsMaximisedAtTheNextStart) {
    Program program;
    ASSERT_TRUE(program.Start());
    ASSERT_TRUE(program.Show(SW_MAXIMIZE));
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "zoomed"), "1");
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "x2"), "1024");
    ASSERT_TRUE(program.Start());
    EXPECT_TRUE(WaitFor([&] { return IsZoomed(program.main); }));
    RECT bar = {};
    GetWindowRect(program.toolbar, &bar);
    const LONG onTheMonitor = GetSystemMetrics(SM_CYSCREEN) - (bar.bottom - bar.top);
    EXPECT_EQ(bar.left, 256) << "of the monitor, not of the window's normal place";
    EXPECT_EQ(bar.top, std::min<LONG>(GetSystemMetrics(SM_CYSCREEN) - 288, onTheMonitor));
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramWindow, AKeyWakesTheRestingProgram) {
    Program program;
    ASSERT_TRUE(program.Start());
    const Picture resting = program.RestingPicture();
    program.Type('b');  // the scroll bar goes
    EXPECT_TRUE(WaitFor([&] { return GrabClient(program.main) != resting; }));
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramWindow, AWindowMadeLargerIsFilled) {
    Program program;
    program.home.Write("ZRKA.ini", "[Window]\r\nx2=400\r\ny2=300\r\n");
    ASSERT_TRUE(program.Start());
    program.RestingPicture();
    SetWindowPos(program.main, nullptr, 0, 0, 900, 700, SWP_NOMOVE | SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
    ASSERT_TRUE(WaitFor([&] { return ClientSize(program.main).first > 800; }));
    program.Type('-');  // a key brings new frames
    const Picture picture = program.RestingPicture();
    int coloured = 0;  // the grid covers the new part as well
    for (int y = 0; y < picture.height; ++y) coloured += picture.At(picture.width - 1, y) != 0;
    EXPECT_GT(coloured, picture.height / 4);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramSystem, ASuspendedMachineBringsTheWindowToItsNormalPlaceAndAResumeGoesOn) {
    Program program;
    ASSERT_TRUE(program.Start({program.WriteLog("a.zrk", ShortLog())}));
    const Picture before = program.RestingPicture();
    ASSERT_TRUE(program.Show(SW_MAXIMIZE));
    PostMessageW(program.toolbar, WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
    ASSERT_TRUE(WaitFor([&] { return !IsZoomed(program.main); }));
    PostMessageW(program.toolbar, WM_POWERBROADCAST, PBT_APMRESUMEAUTOMATIC, 0);
    // Maximised was stored on the way down, so the rebuild takes it up again.
    EXPECT_TRUE(WaitFor([&] { return IsZoomed(program.main); }));
    ASSERT_TRUE(program.Show(SW_RESTORE));
    EXPECT_EQ(program.RestingPicture().DifferentPixels(before, traces), 0);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramSystem, ASuspendQueryThatIsTakenBackGoesOn) {
    Program program;
    ASSERT_TRUE(program.Start());
    const Picture before = program.RestingPicture();
    PostMessageW(program.toolbar, WM_POWERBROADCAST, PBT_APMQUERYSUSPEND, 0);
    PostMessageW(program.toolbar, WM_POWERBROADCAST, PBT_APMRESUMESUSPEND, 0);
    EXPECT_EQ(program.RestingPicture().DifferentPixels(before, traces), 0);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramSystem, AProgramClosedWhileSuspendedEndsInOrder) {
    Program program;
    ASSERT_TRUE(program.Start());
    PostMessageW(program.toolbar, WM_POWERBROADCAST, PBT_APMSUSPEND, 0);
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "x2"), "1024");
}

TEST(ProgramSystem, AChangedDisplayPullsTheToolBarOntoTheMonitor) {
    Program program;
    ASSERT_TRUE(program.Start({program.WriteLog("a.zrk", ShortLog())}));
    const Picture before = program.RestingPicture();
    SetWindowPos(program.toolbar, nullptr, -3000, 5000, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_ASYNCWINDOWPOS);
    RECT rect = {};
    ASSERT_TRUE(WaitFor([&] { return GetWindowRect(program.toolbar, &rect) && rect.left == -3000; }));
    PostMessageW(program.toolbar, WM_DISPLAYCHANGE, 32, MAKELPARAM(1920, 1200));
    EXPECT_TRUE(WaitFor([&] {
        return GetWindowRect(program.toolbar, &rect) && rect.left == 0 && rect.bottom == GetSystemMetrics(SM_CYSCREEN);
    }));
    EXPECT_EQ(program.RestingPicture().DifferentPixels(before, traces), 0);
    EXPECT_EQ(program.Close(), 0);
}

TEST(ProgramSystem, AFailedMessagePumpMakesTheWindowsAnewAndKeepsTheLog) {
    Program program;
    ASSERT_TRUE(program.Start({program.WriteLog("a.zrk", ShortLog())}));
    const Picture before = program.RestingPicture();
    const HWND lost = program.main;
    PostThreadMessageW(program.process.dwThreadId, WM_QUIT, 0, 0);
    ASSERT_TRUE(WaitFor([&] { return !IsWindow(lost); }));
    ASSERT_TRUE(program.FindWindows());
    EXPECT_EQ(program.RestingPicture().DifferentPixels(before, traces), 0);
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "x2"), "1024");
}

TEST(ProgramEnd, ClosingTheToolBarEndsItAsClosingTheWindowDoes) {
    Program program;
    ASSERT_TRUE(program.Start());
    PostMessageW(program.toolbar, WM_CLOSE, 0, 0);
    EXPECT_EQ(program.ExitCode(), 0);
    EXPECT_EQ(IniValue(program.home.Path("ZRKA.ini"), "Window", "x2"), "1024");
}

TEST(ProgramEnd, SettingsThatCannotBeWrittenAreNotReported) {
    Program program;
    std::filesystem::create_directory(program.home.path / "ZRKA.ini");
    ASSERT_TRUE(program.Start());
    EXPECT_EQ(program.Close(), 0);
    EXPECT_TRUE(std::filesystem::is_directory(program.home.path / "ZRKA.ini"));
    EXPECT_FALSE(std::filesystem::exists(program.home.path / "ZRKA.ini.new0")) << "nothing is left beside";
}

// A folder without the right to write is no hindrance to every account, so its refusal is brought about by names that are taken.
TEST(ProgramEnd, AFolderThatTakesNoNewFileKeepsItsSettingsAndNothingIsReported) {
    Program program;
    program.home.Write("ZRKA.ini", "[Window]\r\nx2=640\r\n");
    for (const char* file : {"ZRKA.ini.new", "Sector.ini.new"})
        for (int number = 0; number < 100; number++)
            std::filesystem::create_directory(program.home.path / (file + std::to_string(number)));
    const int entries = program.home.EntryCount();
    ASSERT_TRUE(program.Start());
    EXPECT_EQ(ClientSize(program.main).first, 640);
    EXPECT_EQ(program.Close(), 0);
    EXPECT_EQ(program.home.Read("ZRKA.ini"), "[Window]\r\nx2=640\r\n");
    EXPECT_EQ(program.home.EntryCount(), entries) << "nothing is left beside";
}

TEST(ProgramEnd, SettingsThatAnotherProgramHoldsStayAsTheyAre) {
    Program program;
    const std::string ini = program.home.Write("ZRKA.ini", "[Window]\r\nx2=640\r\n");
    ASSERT_TRUE(program.Start());
    const HANDLE held = CreateFileA(ini.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(program.Close(), 0);
    CloseHandle(held);
    EXPECT_EQ(program.home.Read("ZRKA.ini"), "[Window]\r\nx2=640\r\n");
    EXPECT_FALSE(std::filesystem::exists(program.home.path / "ZRKA.ini.new0")) << "nothing is left beside";
}

}  // namespace
