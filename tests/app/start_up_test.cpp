// From the entry point to the first pass, the resources, and how the program ends, recovers and lives through a suspend.
#include "app/frame_loop.h"
#include "app/toolbar.h"
#include "draw/surface.h"
#include "platform/clock.h"
#include "platform/window.h"
#include "tests/program_fixture.h"

namespace {

struct StartUp : ProgramTest {};

// --- start -------------------------------------------------------------------------------------------------------------------

TEST_F(StartUp, WithoutALogTheLoopRunsAndDrawsGridAndOverlay) {
    ASSERT_EQ(StartProgram(nullptr), 0);
    EXPECT_EQ(sampleCount[0], 1);
    const std::string frame = RecordedText([] { LoopPass(); });
    EXPECT_NE(frame.find("DrawImageScaledXY 0 0 0 0 gridStrip 1024 "), std::string::npos);
    EXPECT_NE(frame.find("\"Keyboard shortcuts\""), std::string::npos);
    for (const char* panel : {" labelStrip ", " summaryPanel ", " memoPanel "})
        EXPECT_NE(frame.find(panel), std::string::npos) << panel;
    for (int pass = 0; pass < 20; pass++) LoopPass();
    EXPECT_EQ(frameNumber, 21);
    EXPECT_TRUE(shown.empty());
}

TEST_F(StartUp, StartsAtMagnification50AndEasesToOne) {
    ASSERT_EQ(StartProgram(nullptr), 0);
    EXPECT_EQ(viewZoom, 50.0);
    LoopPass();
    EXPECT_DOUBLE_EQ(viewZoom, 50 + (10000 - 500000) * 0.0000125);
    for (int pass = 0; pass < 100; pass++) LoopPass();
    EXPECT_LT(viewZoom, 1.001);
    EXPECT_EQ(scrollY, 0);
}

TEST_F(StartUp, LogOfTheCommandLineOpensIntoFile1) {
    SampleLogOptions options;
    options.laps = 2;
    const std::vector<uint8_t> log = MakeSampleLog(options);
    const std::string path = folder.Write("run.zrk", {reinterpret_cast<const char*>(log.data()), log.size()});
    ASSERT_EQ(StartProgram(path.c_str()), 0);
    EXPECT_TRUE(shown.empty());
    EXPECT_GT(sampleCount[0], 1000);
    EXPECT_GE(lapCount[0], 2);
    EXPECT_EQ(slotInUse[1], 0);
    EXPECT_NE(RecordedText([] { LoopPass(); }).find("run.zrk"), std::string::npos) << "its name stands in the frame";
}

TEST_F(StartUp, LogOfTheCommandLineThatCannotBeReadIsToldAndTheProgramRuns) {
    ASSERT_EQ(StartProgram("no/such/file.zrk"), 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Load file error no/such/file.zrk");
    EXPECT_TRUE(LoopRuns());
}

TEST_F(StartUp, AMissingCourseIsToldAndTheMapStaysOff) {
    std::filesystem::remove(folder.path / "sorrel.crs");
    ASSERT_EQ(StartProgram(nullptr), 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Not Found Course Layout File !");
    EXPECT_EQ(shown[0].title, "ZRKA");
    EXPECT_EQ(CourseLayout_on, 0);
    folder.Write("sorrel.crs", MakeCourse("sorrel"));
    RebuildResources();
    EXPECT_EQ(CourseLayout_on, 0) << "also when a later rebuild finds one";
}

TEST_F(StartUp, DeviceThatCannotStartEndsTheProgram) {
    ScriptNoWindow();
    EXPECT_EQ(RunProgram(nullptr), -1);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Graphic Device Error. 0x01 ");
    EXPECT_EQ(shown[0].title, "Error");
    EXPECT_EQ(quitFlag, 1);
}

TEST_F(StartUp, WindowPlaceOutsideTheScreensBecomesZeroOnThatAxis) {
    ScriptScreenSize(1600, 900);
    windowX = 1601;
    windowY = 900;
    ASSERT_EQ(InitWindowAndDevice(), 0);
    EXPECT_EQ(windowX, 0);
    EXPECT_EQ(windowY, 900);
    int x, y;
    GetWindowPos(&x, &y);
    EXPECT_EQ(x, 0);
    EXPECT_EQ(y, 900);
}

TEST_F(StartUp, SettingsGiveTheClientSize) {
    windowWidth = 800;
    windowHeight = 500;
    ASSERT_EQ(InitWindowAndDevice(), 0);
    EXPECT_EQ(clientWidth, 800);
    EXPECT_EQ(clientHeight, 500);
    EXPECT_EQ(halfWidth, 400);
    EXPECT_EQ(halfHeight, 250);
}

TEST_F(StartUp, ZoomedWindowComesUpMaximised) {
    zoomed = 1;
    ASSERT_EQ(InitWindowAndDevice(), 0);
    EXPECT_TRUE(MainWindowMaximised());
    zoomed = 0;
    ShutDownDrawing();
    ASSERT_EQ(InitWindowAndDevice(), 0);
    EXPECT_FALSE(MainWindowMaximised());
}

TEST_F(StartUp, SurfaceIsRoundedDownAtTheStartAndUpInTheRebuild) {
    ScriptScreenSize(1027, 600);
    const std::vector<std::string> lines = Recorded([] { InitWindowAndDevice(); });
    const std::vector<std::string> modes = Only(lines, "SetVideoMode");
    ASSERT_EQ(modes.size(), 2u);
    EXPECT_EQ(modes[0], "SetVideoMode 32 1024 600 60");
    EXPECT_EQ(modes[1], "SetVideoMode 32 1032 600 60");
    EXPECT_EQ(BackBufferSurface().width, 1032);
}

// --- resources -----------------------------------------------------------------------------------------------------------------

TEST_F(StartUp, RebuildMakesEveryImageOfItsSize) {
    OpenWindow(640, 400);
    struct Image { const char* name; const int* handle; int width, height; };
    const Image images[] = {{"courseImage", &courseImage, 512, 512}, {"summaryPanel", &summaryPanel, 256, 128},
                            {"memoPanel", &memoPanel, 192, 256},     {"coursePopup", &coursePopup, 120, 80},
                            {"gridStrip", &gridStrip, 8, 400},       {"labelStrip", &labelStrip, 32, 400},
                            {"susImageA", &susImageA, 256, 128},     {"susImageB", &susImageB, 256, 128}};
    for (const Image& image : images) {
        SCOPED_TRACE(image.name);
        const Surface surface = ImageSurface(*image.handle);
        EXPECT_EQ(surface.width, image.width);
        EXPECT_EQ(surface.height, image.height);
        const int handle = *image.handle;
        const std::vector<std::string> lines = Recorded([=] { DrawImageRotated(0, 0, 0, 0, handle, 0, 1, 0); });
        EXPECT_EQ(lines[0], std::string("DrawImageRotated 0 0 0 0 ") + image.name + " 0 1 0");
    }
}

TEST_F(StartUp, MissingPicturesAreNotReported) {
    Debug = 1;
    OpenWindow(640, 400);
    for (int image : {bodyImage, tireImage, meterImage, needleImage}) EXPECT_EQ(image, noHandle);
    EXPECT_TRUE(shown.empty());
}

TEST_F(StartUp, AnImageThatCannotBeMadeIsReportedWithDebugOnly) {
    for (int debug : {0, 1}) {
        SCOPED_TRACE(debug);
        shown.clear();
        Debug = debug;
        windowWidth = windowHeight = 100;
        ScriptScreenSize(100, 20000);  // more than an image can be high
        ASSERT_EQ(InitWindowAndDevice(), 0);
        EXPECT_EQ(gridStrip, noHandle);
        EXPECT_EQ(labelStrip, noHandle);
        EXPECT_NE(susImageB, noHandle) << "the rebuild goes on";
        ASSERT_EQ(shown.size(), debug ? 2u : 0u);
        if (debug) {
            EXPECT_EQ(shown[0].text, "Memory err gh00");
            EXPECT_EQ(shown[0].title, "ZRKA");
            EXPECT_EQ(shown[1].text, "Memory err gh01");
        }
        Recorded(DrawFrame);  // draws nothing with the missing strips
        ShutDownDrawing();
    }
}

TEST_F(StartUp, CourseImageGoesWithoutAlphaWhereThereIsNone) {
    OpenWindow(640, 400);
    EXPECT_EQ(courseImageNoAlpha, 0);
    AllowAlphaImages(false);
    RebuildResources();
    AllowAlphaImages(true);
    EXPECT_EQ(courseImageNoAlpha, 1);
    EXPECT_NE(courseImage, noHandle);
}

TEST_F(StartUp, FontSizesFollowTheDisplaySetting) {
    OpenWindow(640, 400);
    EXPECT_EQ(rowHeight, 15);
    EXPECT_EQ(fontSize, 11);
    EXPECT_EQ(lapColumnWidth, 105);
    EXPECT_EQ(lapListTop, 300);
    HD_Display = 1;
    BuildFonts();
    EXPECT_EQ(rowHeight, 17);
    EXPECT_EQ(fontSize, 15);
    EXPECT_EQ(lapColumnWidth, 110);
    EXPECT_EQ(lapListTop, 340);
    HD_Display = 2;
    BuildFonts();
    EXPECT_EQ(rowHeight, 15);
}

TEST_F(StartUp, RebuildAsksForRedrawingAndFreshFrames) {
    OpenWindow(640, 400);
    meterRedraw = activityCount = 0;
    RebuildResources();
    EXPECT_EQ(meterRedraw, 1);
    EXPECT_EQ(activityCount, 150);
}

TEST_F(StartUp, LostDeviceIsRestoredByTheRebuild) {
    OpenWindow(640, 400);
    activityCount = 1;
    LoseSurface();
    LoopPass();
    EXPECT_EQ(meterRedraw, 1);
    EXPECT_GE(activityCount, 149);
}

// --- end ---------------------------------------------------------------------------------------------------------------------------

TEST_F(StartUp, ClosingTheMainWindowEndsTheLoopRightAfterThePump) {
    OpenWindow(640, 400);
    ScriptClose();
    EXPECT_FALSE(LoopRuns());
    const int frames = frameNumber;
    LoopPass();
    EXPECT_EQ(frameNumber, frames);
    EXPECT_TRUE(MainWindowOpen()) << "until the settings are written";
}

TEST_F(StartUp, ClosingTheToolBarEndsTheProgramToo) {
    OpenWindow(640, 400);
    EXPECT_TRUE(LoopRuns());
    DestroyToolbarWindow();
    EXPECT_EQ(quitFlag, 2);
    EXPECT_FALSE(LoopRuns());
}

TEST_F(StartUp, ShutdownWritesTheSettingsAndReleasesEverything) {
    OpenWindow(640, 400);
    Memo_view = 0;
    ShutDownProgram();
    EXPECT_NE(folder.Read("ZRKA.ini").find("Memo_view=0"), std::string::npos);
    EXPECT_FALSE(MainWindowOpen());
    EXPECT_TRUE(Ne[0].empty());
}

// --- recovery, power, display --------------------------------------------------------------------------------------------------------

TEST_F(StartUp, AFailedPumpMakesTheDeviceAnewAndKeepsTheLogs) {
    OpenWindow(640, 400);
    FillSlot(0, 700);
    realTimePlayOn = 1;
    meterRedraw = activityCount = 0;
    ScriptPumpFailure();
    const int frames = frameNumber;
    LoopPass();
    EXPECT_EQ(frameNumber, frames) << "the pass ends there";
    EXPECT_EQ(sampleCount[0], 700);
    EXPECT_EQ(realTimePlayOn, 0);
    EXPECT_EQ(meterRedraw, 1);
    EXPECT_EQ(activityCount, 150);
    EXPECT_EQ(quitFlag, 0) << "the tool bar's end is overruled";
    EXPECT_NE(gridStrip, noHandle);
    EXPECT_TRUE(shown.empty());
    EXPECT_TRUE(LoopRuns());
}

TEST_F(StartUp, DebugReportsTheReset) {
    OpenWindow(640, 400);
    Debug = 1;
    ScriptPumpFailure();
    LoopPass();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Device Reset");
    EXPECT_EQ(shown[0].title, "ZRKA");
}

TEST_F(StartUp, ADeviceThatCannotRestartEndsTheLoopAndTheSettingsAreSaved) {
    OpenWindow(640, 400);
    ScriptPumpFailure();
    ScriptNoWindow();
    LoopPass();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Graphic Device Error1. ");
    EXPECT_EQ(shown[0].title, "Error");
    EXPECT_EQ(quitFlag, 1);
    EXPECT_FALSE(LoopRuns());
    ShutDownProgram();
    EXPECT_NE(folder.Read("ZRKA.ini").find("Memo_view=1"), std::string::npos);
}

TEST_F(StartUp, SuspendQueryThenSuspendThenResume) {
    OpenWindow(640, 400);
    PowerBroadcast(PowerEvent::suspendQuery);
    EXPECT_EQ(powerState, 1);
    const int64_t start = SteadyMs();
    LoopPass();
    EXPECT_EQ(SteadyMs() - start, 50);
    EXPECT_EQ(powerState, 2) << "in the next pass";
    PowerBroadcast(PowerEvent::suspend);
    EXPECT_EQ(powerState, 2);
    const int frames = frameNumber;
    LoopPass();
    EXPECT_EQ(SteadyMs() - start, 100);
    EXPECT_EQ(frameNumber, frames) << "no frame while suspended";
    PowerBroadcast(PowerEvent::resume);
    EXPECT_EQ(powerState, 3);
    meterRedraw = 0;
    LoopPass();
    EXPECT_EQ(powerState, 0);
    EXPECT_EQ(meterRedraw, 1) << "rebuilt";
    EXPECT_TRUE(shown.empty());
}

TEST_F(StartUp, ResumeWithoutASuspendDoesNothing) {
    OpenWindow(640, 400);
    PowerBroadcast(PowerEvent::resume);
    EXPECT_EQ(powerState, 0);
}

TEST_F(StartUp, ResumeAfterAQueryAloneRebuilds) {
    OpenWindow(640, 400);
    PowerBroadcast(PowerEvent::suspendQuery);
    PowerBroadcast(PowerEvent::resume);
    EXPECT_EQ(powerState, 3);
}

TEST_F(StartUp, SuspendKeepsTheWindowsPlaceAndState) {
    OpenWindow(640, 400);
    MoveMainWindow(33, 44);
    ScriptClientSize(500, 300);
    ShowMainWindow(2);
    PowerBroadcast(PowerEvent::suspendQuery);
    EXPECT_EQ(zoomed, 0) << "a query does not store it";
    EXPECT_EQ(windowX, 33);
    EXPECT_EQ(windowY, 44);
    EXPECT_EQ(windowWidth, 500);
    EXPECT_EQ(windowHeight, 300);
    EXPECT_FALSE(MainWindowMaximised()) << "shown normally";
    ShowMainWindow(2);
    PowerBroadcast(PowerEvent::suspend);
    EXPECT_EQ(zoomed, 1);
    EXPECT_EQ(powerState, 2);
}

TEST_F(StartUp, DisplayChangeRebuildsForTheNewScreen) {
    OpenWindow(640, 400);
    ScriptScreenSize(1280, 900);
    DisplayChanged();
    EXPECT_EQ(screenWidth, 1280);
    EXPECT_EQ(screenHeight, 900);
    EXPECT_EQ(ImageSurface(gridStrip).height, 900);
    EXPECT_EQ(BackBufferSurface().width, 1280);
}

}  // namespace
