#include "draw/draw_layer.h"

#include "platform/clock.h"
#include "platform/headless/script_state.h"
#include "tests/draw/drawing.h"

namespace {

// --- surface -----------------------------------------------------------------------------------------------------------------

struct Layer : testing::Test {
    void SetUp() override {
        DefaultScript();
        DefaultDrawLayer();
    }
    void TearDown() override { ShutDownDrawing(); }
};

TEST_F(Layer, VideoModeOfOtherBitsOrNoSizeFails) {
    for (const int bits : {1, 15, 24, 64, -1, -32}) EXPECT_EQ(SetVideoMode(bits, 640, 480, 60), -1) << bits;
    for (const int bits : {0, 8, 16, 32}) EXPECT_EQ(SetVideoMode(bits, 640, 480, 60), 0) << bits;
    for (const int side : {0, -1, -640}) {
        EXPECT_EQ(SetVideoMode(32, side, 480, 60), -1);
        EXPECT_EQ(SetVideoMode(32, 640, side, 60), -1);
    }
}

TEST_F(Layer, RefusedVideoModeLeavesTheOneBefore) {
    SetVideoMode(32, 320, 200, 60);
    SetVideoMode(24, 99, 99, 60);
    InitDrawing();
    EXPECT_EQ(BackBufferSurface().width, 320);
    EXPECT_EQ(BackBufferSurface().height, 200);
}

TEST_F(Layer, SurfaceIsMadeByInitDrawing) {
    SetVideoMode(32, 320, 200, 60);
    EXPECT_EQ(BackBufferSurface().pixels, nullptr);
    EXPECT_EQ(FlipScreen(), -1);
    ASSERT_EQ(InitDrawing(), 0);
    EXPECT_NE(BackBufferSurface().pixels, nullptr);
    EXPECT_EQ(BackBufferSurface().pitch % 32, 16);  // an odd multiple of 64 bytes
    EXPECT_EQ(FlipScreen(), 0);
    ShutDownDrawing();
    EXPECT_EQ(BackBufferSurface().pixels, nullptr);
}

TEST_F(Layer, LargerSurfaceIsMadeAtOnceOnAWindow) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    EXPECT_EQ(SetVideoMode(32, 3840, 2160, 60), 0);
    EXPECT_EQ(BackBufferSurface().width, 3840);
    FillRect(3839, 2159, 3840, 2160, Rgb(1, 2, 3));
    EXPECT_EQ(PixelAt(3839, 2159), 0x010203u);
}

TEST_F(Layer, SurfaceOfTheSameSizeKeepsItsPicture) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    FillRect(0, 0, 1, 1, Rgb(1, 2, 3));
    EXPECT_EQ(SetVideoMode(32, 320, 200, 60), 0);
    EXPECT_EQ(PixelAt(0, 0), 0x010203u);
}

TEST_F(Layer, ChangeVideoModeKeepsWhatIsMinusOne) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    EXPECT_EQ(ChangeVideoMode(400, -1, -1, 0, -1), 0);
    EXPECT_EQ(BackBufferSurface().width, 400);
    EXPECT_EQ(BackBufferSurface().height, 200);
    EXPECT_EQ(ChangeVideoMode(-1, 300, 24, 0, -1), -1);
    EXPECT_EQ(ChangeVideoMode(-1, 0, -1, 0, -1), -1);
    EXPECT_EQ(BackBufferSurface().height, 200);
}

TEST_F(Layer, SurfaceThatCannotBeMadeFallsBackTo640By480) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    EXPECT_EQ(SetVideoMode(32, 2000000000, 2000000000, 60), -2);
    EXPECT_EQ(BackBufferSurface().width, 640);
    EXPECT_EQ(BackBufferSurface().height, 480);
    FillRect(639, 479, 640, 480, Rgb(1, 2, 3));
    EXPECT_EQ(PixelAt(639, 479), 0x010203u);
}

TEST_F(Layer, ImageTargetSurvivesANewSurface) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    const int image = CreateDrawableImage(4, 4, 0);
    SetDrawTarget(image);
    SetVideoMode(32, 400, 200, 60);
    FillRect(0, 0, 1, 1, Rgb(1, 2, 3));
    EXPECT_EQ(PixelOf(ImageSurface(image), 0, 0), 0x010203u);
    SetDrawTarget(backBuffer);
    FillRect(399, 0, 400, 1, Rgb(3, 2, 1));
    EXPECT_EQ(PixelAt(399, 0), 0x030201u);
}

TEST_F(Layer, DefaultsAreTheRestingState) {
    SetVideoMode(32, 64, 48, 60);
    InitDrawing();
    SetBlend(blendAdd, 3);
    SetBrightness(1, 2, 3);
    SetDrawTarget(CreateDrawableImage(4, 4, 0));
    DefaultDrawLayer();
    SetVideoMode(32, 64, 48, 60);
    InitDrawing();
    FillRect(0, 0, 1, 1, Rgb(100, 100, 100));
    EXPECT_EQ(PixelAt(0, 0), Rgb(100, 100, 100));
}

// --- window ------------------------------------------------------------------------------------------------------------------

TEST_F(Layer, WindowOpensAtItsPlaceAndSize) {
    SetWindowPosition(30, 40);
    ApplyClientSize(500, 300);
    InitDrawing();
    int x = 0, y = 0, width = 0, height = 0;
    GetWindowPos(&x, &y);
    GetClientSize(&width, &height);
    EXPECT_EQ(x, 30);
    EXPECT_EQ(y, 40);
    EXPECT_EQ(width, 500);
    EXPECT_EQ(height, 300);
}

TEST_F(Layer, ClientSizeLeavesTheSurface) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    ApplyClientSize(100, 50);
    int width = 0, height = 0;
    GetClientSize(&width, &height);
    EXPECT_EQ(width, 100);
    EXPECT_EQ(height, 50);
    EXPECT_EQ(BackBufferSurface().width, 320);
}

TEST_F(Layer, StyleIsAppliedWithPositionAndSize) {
    InitDrawing();
    SetWindowPosition(7, 8);
    ApplyWindowStyle();
    int x = 0, y = 0;
    GetWindowPos(&x, &y);
    EXPECT_EQ(x, 7);
    EXPECT_EQ(y, 8);
}

TEST_F(Layer, ClosedWindowEndsTheMessages) {
    InitDrawing();
    EXPECT_EQ(ProcessMessages(), 0);
    EXPECT_FALSE(WindowCloseRequested());
    ScriptClose();
    EXPECT_EQ(ProcessMessages(), -1);
    EXPECT_TRUE(WindowCloseRequested());
}

TEST_F(Layer, FailedPumpIsNoClose) {
    InitDrawing();
    ScriptPumpFailure();
    EXPECT_EQ(ProcessMessages(), -1);
    EXPECT_FALSE(WindowCloseRequested());
    EXPECT_EQ(ProcessMessages(), 0);
}

// --- lost surface ------------------------------------------------------------------------------------------------------------

int rebuilds;
void CountRebuild() { ++rebuilds; }

TEST_F(Layer, LostSurfaceIsRestoredOnceByTheNextMessages) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    rebuilds = 0;
    SetRestoreCallback(CountRebuild);
    EXPECT_EQ(ProcessMessages(), 0);
    EXPECT_EQ(rebuilds, 0);
    LoseSurface();
    EXPECT_EQ(ProcessMessages(), 0);
    EXPECT_EQ(rebuilds, 1);
    EXPECT_EQ(BackBufferSurface().width, 320);
    EXPECT_EQ(ProcessMessages(), 0);
    EXPECT_EQ(rebuilds, 1);
}

TEST_F(Layer, LostSurfaceWithoutACallbackIsMadeAnew) {
    SetVideoMode(32, 320, 200, 60);
    InitDrawing();
    FillRect(0, 0, 1, 1, Rgb(1, 2, 3));
    LoseSurface();
    EXPECT_EQ(ProcessMessages(), 0);
    EXPECT_EQ(PixelAt(0, 0), 0u);
    FillRect(0, 0, 1, 1, Rgb(1, 2, 3));
    EXPECT_EQ(PixelAt(0, 0), 0x010203u);
}

// --- time --------------------------------------------------------------------------------------------------------------------

TEST_F(Layer, WaitTakesItsFullTime) {
    InitDrawing();
    for (const int milliseconds : {1, 4, 5, 15, 20, 21, 200}) {
        const int64_t start = SteadyMs();
        WaitMs(milliseconds);
        EXPECT_EQ(SteadyMs() - start, milliseconds);
    }
    const int64_t start = SteadyMs();
    WaitMs(0);
    WaitMs(-5);
    EXPECT_EQ(SteadyMs(), start);
}

TEST_F(Layer, WaitTakesItsFullTimeOnTheRealClock) {
    InitDrawing();
    UseVirtualClock(false);
    for (const int milliseconds : {2, 15, 40}) {
        const int64_t start = SteadyMs();
        WaitMs(milliseconds);
        EXPECT_GE(SteadyMs() - start, milliseconds);
    }
    UseVirtualClock(true);
}

TEST_F(Layer, ClosedWindowDoesNotShortenAWait) {
    InitDrawing();
    ScriptClose();
    const int64_t start = SteadyMs();
    WaitMs(50);
    EXPECT_EQ(SteadyMs() - start, 50);
    EXPECT_EQ(ProcessMessages(), -1);
}

TEST_F(Layer, PumpThatFailsDuringAWaitIsReportedByTheNextMessages) {
    InitDrawing();
    ScriptPumpFailure();
    WaitMs(50);
    EXPECT_EQ(ProcessMessages(), -1);
    EXPECT_EQ(ProcessMessages(), 0);
}

TEST_F(Layer, ShortWaitServesNoMessages) {
    InitDrawing();
    ScriptPumpFailure();
    WaitMs(4);
    EXPECT_EQ(ProcessMessages(), -1);  // its own failure, not one that was kept
    EXPECT_EQ(ProcessMessages(), 0);
}

TEST_F(Layer, MillisecondsKeep31Bits) {
    const int start = NowMs();
    AdvanceClock(1234);
    EXPECT_EQ(NowMs(), start + 1234);
    AdvanceClock(2147483647 - NowMs());
    EXPECT_EQ(NowMs(), 2147483647);
    AdvanceClock(1);
    EXPECT_EQ(NowMs(), 0);
}

// --- input -------------------------------------------------------------------------------------------------------------------

TEST_F(Layer, WheelDeliversWholeNotchesOnce) {
    InitDrawing();
    ScriptWheel(3);
    EXPECT_EQ(GetWheelNotches(), 3);
    EXPECT_EQ(GetWheelNotches(), 0);
    ScriptWheel(-2);
    EXPECT_EQ(GetWheelNotches(), -2);
}

TEST_F(Layer, WheelKeepsTheRemainderOfANotch) {
    InitDrawing();
    const auto turn = [](int delta) {
        script.wheelDelta += delta;
        return GetWheelNotches();
    };
    EXPECT_EQ(turn(70), 0);
    EXPECT_EQ(turn(70), 1);    // 20 are left
    EXPECT_EQ(turn(-60), 0);   // 40 below
    EXPECT_EQ(turn(-80), -1);
    EXPECT_EQ(turn(119), 0);
    EXPECT_EQ(turn(1), 1);
}

TEST_F(Layer, HorizontalWheelDeliversItsDeltaOnce) {
    InitDrawing();
    ScriptHWheel(-30);
    ScriptHWheel(-100);
    EXPECT_EQ(GetHWheelDelta(), -130);
    EXPECT_EQ(GetHWheelDelta(), 0);
}

TEST_F(Layer, MouseMayBeOutsideTheClient) {
    InitDrawing();
    ScriptMouse(-20, 5000);
    ScriptButtons(1 | 4);
    int x = 0, y = 0;
    GetMousePos(&x, &y);
    EXPECT_EQ(x, -20);
    EXPECT_EQ(y, 5000);
    EXPECT_EQ(GetMouseButtons(), 5u);
}

TEST_F(Layer, CharactersComeInOrderAndCanBeDrained) {
    InitDrawing();
    EXPECT_EQ(TakeChar(), 0);
    ScriptChar('q');
    ScriptChar(28);
    EXPECT_EQ(TakeChar(), 'q');
    EXPECT_EQ(TakeChar(), 28);
    EXPECT_EQ(TakeChar(), 0);
    ScriptChar('a');
    ScriptChar('b');
    DrainCharQueue();
    EXPECT_EQ(TakeChar(), 0);
}

TEST_F(Layer, KeysAreLive) {
    InitDrawing();
    ScriptHold(true, false);
    EXPECT_TRUE(IsKeyDown(Key::shift));
    EXPECT_FALSE(IsKeyDown(Key::ctrl));
    ScriptHold(false, true);
    EXPECT_FALSE(IsKeyDown(Key::shift));
    EXPECT_TRUE(IsKeyDown(Key::ctrl));
}

TEST_F(Layer, InputIsReadInTheBackgroundUnlessSwitchedOff) {
    InitDrawing();
    ScriptForeground(Foreground::other);
    ScriptButtons(1);
    ScriptHold(true, false);
    SetRunInBackground(true);
    EXPECT_EQ(GetMouseButtons(), 1u);
    EXPECT_TRUE(IsKeyDown(Key::shift));
    SetRunInBackground(false);
    EXPECT_EQ(GetMouseButtons(), 0u);
    EXPECT_FALSE(IsKeyDown(Key::shift));
    ScriptForeground(Foreground::toolbar);
    EXPECT_EQ(GetMouseButtons(), 1u);
}

}  // namespace
