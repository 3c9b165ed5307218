// The course's picture is drawn when something about it has changed, not in every frame.
#include "tests/app/full_frame.h"
#include "views/course_file.h"
#include "views/course_map.h"

namespace {

struct CourseRedraw : FullFrame {
    void SetUp() override {
        FullFrame::SetUp();
        for (auto& file : showChannel) std::fill(std::begin(file), std::end(file), 0);  // no traces to be recorded
        Passes(5);  // the colouring takes up the laps under the cursors
    }
    static void Passes(int count) {
        for (int pass = 0; pass < count; pass++) LoopPass();
    }
    // How often the picture is begun anew meanwhile.
    template <class Call>
    static size_t Redraws(Call call) {
        return Beginning(Recorded(call), "SetDrawTarget courseImage").size();
    }
};

TEST_F(CourseRedraw, FramesWithinALapDrawThePictureAsItIs) {
    const struct { const char* what; void (*act)(int pass); } acts[] = {
        {"rest", [](int) {}},
        {"mouse", [](int pass) { ScriptMouse(100 + pass * 5, 100 + pass * 3); }},
        {"cursors", [](int pass) { cursorPos[0] = cursorPos[1] = cursorPos[2] += pass; }},
        {"dimming", [](int pass) { fileDim[pass % 3] ^= 1; }},
        {"time scale", [](int pass) { timeScale = 1 + pass; }},
        {"magnification", [](int pass) { viewZoomGoal = 10000 + pass * 1000; }},
        {"held keys", [](int pass) { ScriptHold(pass & 1, pass & 2); }},
        {"keys of the view", [](int pass) { ScriptChar("BVMBVMBVM"[pass % 9]); }},
        {"size", [](int pass) { ScriptClientSize(700 + pass, 400 + pass); }},
        {"panel", [](int pass) { courseCenterX = pass * 10, courseZoom = 0.5f + pass * 0.01f; }},
    };
    for (const auto& act : acts) {
        SCOPED_TRACE(act.what);
        const int before = frameNumber;
        EXPECT_EQ(Redraws([&] {
                      for (int pass = 0; pass < 20; pass++) {
                          act.act(pass);
                          LoopPass();
                      }
                  }),
                  0u);
        EXPECT_EQ(frameNumber, before + 20);
    }
}

TEST_F(CourseRedraw, ANewLapIsColouredOnce) {
    const int lap = currentLap[0];
    EXPECT_EQ(Redraws([lap] {
                  cursorPos[0] = static_cast<int>(lapStart[0][lap]) * 100 + 1000;
                  Passes(20);
              }),
              1u);
    EXPECT_EQ(currentLap[0], lap + 1);
}

TEST_F(CourseRedraw, SelectorOffsetAndRebuildDrawItAnew) {
    EXPECT_EQ(Redraws([] { StepCourseColor(1); }), 1u);
    EXPECT_EQ(Redraws([] { StepCourseColor(0); }), 0u);
    EXPECT_EQ(Redraws([] { ApplyCourseOffset(); }), 1u);
    EXPECT_GE(Redraws(RebuildResources), 1u);
}

}  // namespace
