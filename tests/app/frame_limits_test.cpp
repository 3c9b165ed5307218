// Frames at the ends of every range, and beyond: nothing of this can come from the user, or only for a moment, and the program
// goes on drawing.
#include <cfloat>
#include <climits>
#include <cmath>
#include <limits>

#include "draw/draw_state.h"
#include "tests/app/full_frame.h"

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity(), noNumber = std::numeric_limits<double>::quiet_NaN();

struct FrameLimits : FullFrame {
    // A frame in each mode and scheme, after which the layer rests.
    static void ExpectFrames() {
        for (const int mode : {0, 1, 2})
            for (const int scheme : {0, 1}) {
                graphPositionOn = mode == 1;
                afMapOn = mode == 2;
                colortype = scheme;
                const int before = frameNumber;
                DrawFrame();
                EXPECT_EQ(frameNumber, before + 1);
                EXPECT_EQ(drawState.target.handle, backBuffer);
                EXPECT_EQ(drawState.blendMode, blendNone);
                EXPECT_EQ(drawState.blendParameter, 255);
                EXPECT_EQ(drawState.brightness, 0xFFFFFFu);
            }
        graphPositionOn = afMapOn = colortype = 0;
    }
    static void ExpectPasses(int passes) {
        const int before = frameNumber;
        for (int pass = 0; pass < passes; pass++) {
            activityCount = 150;
            LoopPass();
        }
        EXPECT_EQ(frameNumber, before + passes);
    }
};

TEST_F(FrameLimits, ClientSizesDownToOnePixelDraw) {
    constexpr int sizes[][2] = {{1, 1}, {1, 450}, {800, 1}, {2, 2}, {3, 5}, {8, 8}, {16, 16}, {17, 31}, {48, 48}, {64, 40}, {100, 20}};
    for (const auto& size : sizes)
        for (const int held : {0, 1}) {
            SCOPED_TRACE(std::to_string(size[0]) + " x " + std::to_string(size[1]));
            ScriptClientSize(size[0], size[1]);
            ScriptHold(held, held);
            for (const int buttons : {0, 1, 2, 4}) {
                ScriptMouse(size[0] / 2, size[1] / 2);
                ScriptButtons(static_cast<uint32_t>(buttons));
                ExpectPasses(2);
            }
            ScriptButtons(0);
            EXPECT_EQ(clientWidth, size[0]);
            EXPECT_EQ(clientHeight, size[1]);
            EXPECT_GE(mouseX, 0);
            EXPECT_LT(mouseX, clientWidth);
            ExpectFrames();
        }
}

TEST_F(FrameLimits, EverythingDrawnIntoASurfaceOfOnePixelIsClipped) {
    ShutDownDrawing();
    OpenWindow(1, 1);
    CourseLayout_on = 1;
    ExpectFrames();
    EXPECT_EQ(clientWidth, 1);
}

TEST_F(FrameLimits, ACursorBeyondTheEndOfAShorterFileDraws) {
    FillSlot(1, 2);
    FillSlot(2, 1);
    for (const int cursor : {INT_MIN, -1000000, -1, 0, 100, 1000000, INT_MAX - 100, INT_MAX})
        for (int slot = 0; slot < fileSlots; slot++) {
            SCOPED_TRACE(cursor);
            cursorPos[slot] = cursor;
            ExpectFrames();
        }
}

TEST_F(FrameLimits, EveryTimeScaleDraws) {
    for (const double scale : {0.0, -0.0, DBL_TRUE_MIN, 1e-300, 1e-9, 0.01, 0.05, 1e3, 1e6, 1e9, 1e300, DBL_MAX, infinity, -5.0, -infinity, noNumber})
        for (const int shift : {0, 1}) {
            SCOPED_TRACE(scale);
            timeScale = scale;
            shiftDown = shift;
            ExpectFrames();
        }
}

TEST_F(FrameLimits, EveryTimeFactorDraws) {
    for (const double factor : {0.0, 1e-300, 0.001, 1000.0, 1e300, infinity, -1.0, noNumber}) {
        SCOPED_TRACE(factor);
        for (double& of : timeFactor) of = factor;
        ExpectFrames();
    }
}

TEST_F(FrameLimits, AMagnificationOfZeroOrNoNumberDraws) {
    for (const double zoom : {0.0, -0.0, noNumber, DBL_TRUE_MIN, 1e-300, 1e-6, 1e6, 1e300, infinity, -1.0, -infinity})
        for (const int debug : {0, 1}) {
            SCOPED_TRACE(zoom);
            viewZoom = zoom;
            Debug = debug;
            ExpectFrames();
        }
}

TEST_F(FrameLimits, AChannelZoomOfZeroOrNoNumberDraws) {
    for (const double zoom : {0.0, -0.0, noNumber, DBL_TRUE_MIN, 0.001, 1e300, infinity, -50.0}) {
        SCOPED_TRACE(zoom);
        for (double& of : channelZoom) of = zoom;
        RebuildResources();
        ExpectFrames();
    }
}

TEST_F(FrameLimits, PositionsAndScrollsAtTheEndsOfTheirRangeDraw) {
    for (const int place : {INT_MIN, -100000, 100000, INT_MAX}) {
        SCOPED_TRACE(place);
        for (int& of : channelPosition) of = place;
        scrollY = place;
        BaseLinePos = std::clamp(place, -32767, 32767);
        courseCenterX = courseCenterY = BaseLinePos;
        CslValWidth = BaseLinePos;
        RebuildResources();
        ExpectFrames();
    }
}

TEST_F(FrameLimits, PanelsOfEverySizeDraw) {
    for (const float zoom : {0.0f, -1.0f, 0.001f, 2.0f, 100.0f, 1e9f, std::numeric_limits<float>::infinity(), std::numeric_limits<float>::quiet_NaN()}) {
        SCOPED_TRACE(zoom);
        courseZoom = zoom;
        courseHover = 1;
        ExpectFrames();
    }
}

TEST_F(FrameLimits, AFileWithoutLapsOrSamplesDraws) {
    for (int slot = 0; slot < fileSlots; slot++) ResetSlot(slot);
    ExpectFrames();
    FillSlot(0, 1);
    lapCount[0] = 1;
    slotInUse[1] = slotInUse[2] = 1;
    ExpectFrames();
}

TEST_F(FrameLimits, ReadOutsOfTheLargestNumbersDraw) {
    for (const int value : {INT_MIN, INT_MAX}) {
        SCOPED_TRACE(value);
        for (int slot = 0; slot < fileSlots; slot++) {
            for (SampleArray<int32_t>* of : {TH, LAF1, LAF2, AUX1, AUX2}) std::fill(of[slot].begin(), of[slot].end(), value);
            for (SampleArray<int16_t>* of : {FSUS, RSUS, VFSus, VRSus}) std::fill(of[slot].begin(), of[slot].end(), static_cast<int16_t>(value >> 16));
            for (SampleArray<uint16_t>* of : {Ne, VRW, VB}) std::fill(of[slot].begin(), of[slot].end(), uint16_t{65535});
            std::fill(VFW[slot].begin(), VFW[slot].end(), uint16_t{51});
            std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), UINT32_MAX);
            neFactor[slot] = 1e9f;
        }
        shiftDown = value > 0;
        for (int frame = 0; frame < 40; frame++) DrawFrame();  // until the tags have arrived
        ExpectFrames();
    }
}

}  // namespace
