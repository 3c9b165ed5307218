// Frame code allocates nothing: passes of the whole program, with everything on the screen that there is.
#include <cstdlib>
#include <memory>
#include <vector>

#include "analysis/lap_marks.h"
#include "app/input_step.h"
#include "cli/play.h"
#include "graph/rest_panels.h"
#include "tests/allocation_count.h"
#include "tests/app/full_frame.h"
#include "views/course_image.h"

namespace {

// --- the count itself --------------------------------------------------------------------------------------------------

// Where a block goes, so that none is optimised away.
void* volatile kept;

TEST(AllocationCount, HearsOfEveryWayToTakeABlock) {
    struct alignas(64) Aligned {
        char bytes[64];
    };
    EXPECT_EQ(AllocationsOf([] { kept = std::malloc(100); }), 1);
    EXPECT_EQ(AllocationsOf([] { kept = std::realloc(kept, 100000); }), 1);
    std::free(kept);
    EXPECT_EQ(AllocationsOf([] { kept = std::calloc(10, 10); }), 1);
    std::free(kept);
    EXPECT_EQ(AllocationsOf([] { kept = new int; }), 1);
    delete static_cast<int*>(kept);
    EXPECT_EQ(AllocationsOf([] { kept = new int[10]; }), 1);
    delete[] static_cast<int*>(kept);
    EXPECT_EQ(AllocationsOf([] { kept = new Aligned; }), 1);
    delete static_cast<Aligned*>(kept);
    EXPECT_EQ(AllocationsOf([] { kept = std::string(100, 'x').data(); }), 1);
    EXPECT_EQ(AllocationsOf([] { kept = nullptr; }), 0);
}

// --- frames ------------------------------------------------------------------------------------------------------------

constexpr int frames = 300;
// Before the counting: fades and glides that start with a fresh window are under way, and each image has been drawn once.
constexpr int warmUpFrames = 3;

struct FrameAllocation : FullFrame {
    void SetUp() override {
        FullFrame::SetUp();
        SeeEveryCharacter();
        for (int frame = 0; frame < warmUpFrames; frame++) PassWithMouseAt(400 + frame, 300);
    }

    // A font makes the mask of a character when it first draws it, and keeps it. Which digits a run of frames comes across
    // is a matter of its numbers, so all are drawn before the count.
    static void SeeEveryCharacter() {
        for (const int font : {bigFont, smallFont}) {
            for (char character = ' '; character <= '~'; character++) DrawTextF(0, 0, 0, font, "%c", character);
            DrawTextAt(0, 0, "\x81\xA3\x81\xA5", 0, font);  // the triangles of the lap list
        }
    }

    static void PassWithMouseAt(int x, int y) {
        ScriptMouse(x, y);
        LoopPass();
    }

    // Blocks taken by this many passes, each of which has drawn a frame. move(frame) is what the user does before it.
    template <class Move>
    static int TakenByFrames(Move move) {
        const int before = frameNumber;
        const int blocks = AllocationsOf([&] {
            for (int frame = 0; frame < frames; frame++) {
                move(frame);
                LoopPass();
            }
        });
        EXPECT_EQ(frameNumber - before, frames);
        return blocks;
    }
    static void SweepMouse(int frame) { ScriptMouse(100 + frame * 2, 100 + frame % 300); }
};

TEST_F(FrameAllocation, MovingMouseWithTagsRulerAndLapListsTakesNothing) { EXPECT_EQ(TakenByFrames(SweepMouse), 0); }

TEST_F(FrameAllocation, RestingViewThatTypesItsMemosTakesNothing) {
    EXPECT_EQ(TakenByFrames([](int frame) {
                  if (frame < 30) SweepMouse(frame);
              }),
              0);
    EXPECT_EQ(summaryFade, 0);
    EXPECT_EQ(memoFade, 0);
    for (const MemoCursor& memo : memoCursor) EXPECT_GT(memo.index, 100);
}

TEST_F(FrameAllocation, GlidingCursorWithTheCourseColouredLapByLapTakesNothing) {
    const int firstLap = currentLap[0];
    EXPECT_EQ(TakenByFrames([](int frame) {
                  if (frame % 50 == 0)
                      for (int slot = 0; slot < fileSlots; slot++) jumpTarget[slot] = sampleCount[slot] / 50 * (frame / 50 * 8 + 1);
                  SweepMouse(frame);
              }),
              0);
    EXPECT_NE(currentLap[0], firstLap);
    EXPECT_NE(courseCaption[0], 0);
}

TEST_F(FrameAllocation, DraggedCursorTakesNothing) {
    const int before = cursorPos[0];
    ScriptButtons(1);
    EXPECT_EQ(TakenByFrames([](int frame) { ScriptMouse(500 + frame % 3, 250); }), 0);
    EXPECT_GT(cursorPos[0], before);
}

TEST_F(FrameAllocation, ZoomGlideTakesNothing) {
    EXPECT_EQ(TakenByFrames([](int frame) {
                  viewZoomGoal = frame < 150 ? 80000 : 10000;
                  SweepMouse(frame);
              }),
              0);
    EXPECT_NEAR(viewZoom, 1.0, 0.01);
}

TEST_F(FrameAllocation, EveryTimeScaleTakesNothing) {
    EXPECT_EQ(TakenByFrames([](int frame) {
                  timeScale = 0.05 * (1 << frame % 14);
                  SweepMouse(frame);
              }),
              0);
}

TEST_F(FrameAllocation, LightSchemeWithHeldKeysAndExtremeMarksTakesNothing) {
    colortype = 1;
    RebuildResources();
    SeeEveryCharacter();
    for (int slot = 0; slot < fileSlots; slot++) CollectMarks(slot);
    DrawExtremeMarks(MarkEvent::tableChanged);
    LoopPass();
    ScriptHold(true, true);
    EXPECT_EQ(TakenByFrames(SweepMouse), 0);
}

TEST_F(FrameAllocation, MouseOnPanelsCourseAndScrollBarTakesNothing) {
    EXPECT_EQ(TakenByFrames([](int frame) {
                  static constexpr int places[][2] = {{50, 100}, {50, 400}, {760, 60}, {400, 445}, {160, 400}};
                  const auto& place = places[frame / 10 % 5];
                  ScriptMouse(place[0] + frame % 2, place[1]);
              }),
              0);
}

TEST_F(FrameAllocation, GraphPositionAndAfModesTakeNothing) {
    EXPECT_EQ(TakenByFrames([](int frame) {
                  graphPositionOn = frame % 20 < 10;
                  afMapOn = !graphPositionOn;
                  activityCount = 150;
                  SweepMouse(frame);
              }),
              0);
}

TEST_F(FrameAllocation, KeyboardOverlayTakesNothing) {
    shortcutOverlayOn = 1;
    shortcutFade = 512;
    EXPECT_EQ(TakenByFrames(SweepMouse), 0);
}

// The same through a script of `play`, from its steps to the pictures.
TEST_F(FrameAllocation, ScriptOfPlayTakesNothing) {
    std::string script;
    for (int frame = 0; frame < frames; frame++)
        script += "mouse " + std::to_string(100 + frame * 2) + " 300\npass 1\n";
    std::vector<Step> steps;
    ASSERT_EQ(ReadScript("script", script, steps), 0);
    const Invocation invocation;
    const int before = frameNumber;
    EXPECT_EQ(AllocationsOf([&] { RunScript(invocation, steps); }), 0);
    EXPECT_EQ(frameNumber - before, frames);
}

}  // namespace
