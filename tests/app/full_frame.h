// full_frame.h -- the program with everything on the screen that there is: three logs with laps, every channel, tags, panels,
// lap lists, scroll bar, course map, debug line.
#pragma once
#include <algorithm>
#include <string>
#include <vector>

#include "run_data/load_pipeline.h"
#include "tests/program_fixture.h"

struct FullFrame : ProgramTest {
    void SetUp() override {
        OpenWindow(800, 450);
        for (int slot = 0; slot < fileSlots; slot++) LoadRide(slot);
        for (auto& file : showChannel) std::fill(std::begin(file), std::end(file), 1);
        ExpertMode = 2;
        Debug = 1;
        CursolValueMode = 1;
        Memo_view = 1;
        CourseLayout_on = 1;
        ColorMap = 1;
        courseColorChannel = 1;
    }

    void LoadRide(int slot) {
        SampleLogOptions options;
        options.seed = static_cast<uint64_t>(slot) + 1;
        options.laps = 3;
        options.memo = std::string(180, 'm');
        const std::vector<uint8_t> bytes = MakeSampleLog(options);
        const std::string name = "ride" + std::to_string(slot) + ".zrk";
        const std::string path = folder.Write(name, {reinterpret_cast<const char*>(bytes.data()), bytes.size()});
        LoadFile(path.c_str(), slot);
        ASSERT_TRUE(slotInUse[slot]);
        ASSERT_GT(lapCount[slot], 2);
        cursorPos[slot] = sampleCount[slot] / 3 * 100;
    }
};
