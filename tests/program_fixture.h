// program_fixture.h -- the program with a window in memory, for tests of what it draws and of how it takes input.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "app/frame_loop.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/test_folder.h"
#include "tools/sample_log/sample_log.h"

// Defaults, a program folder with nothing but a course, nothing scripted. No window yet.
struct ProgramTest : testing::Test {
    TestFolder folder;
    std::filesystem::path before = std::filesystem::current_path();

    ProgramTest() {
        DefaultScript();
        folder.Write("sorrel.crs", MakeCourse("sorrel"));
        SetProgramFolder((folder.Path() + "/").c_str());
        LoadDefaults();
    }
    ~ProgramTest() override {
        RecordOperations(nullptr);
        ShutDownDrawing();
        DefaultScript();
        LoadDefaults();
        std::filesystem::current_path(before);
    }

    // A window of this size, at magnification 1, without overlay and course map, so that a frame shows the graphs alone.
    void OpenWindow(int width, int height) {
        windowWidth = width;
        windowHeight = height;
        ScriptScreenSize(width, height);
        ASSERT_EQ(InitWindowAndDevice(), 0);
        viewZoom = 1.0;
        shortcutOverlayOn = CourseLayout_on = 0;
    }
};

// A log of `samples` zeros, sample 0 included, without marks.
inline void FillSlot(int slot, int samples) {
    EnsureChannels(slot, samples + 1);
    ClearChannels(slot, samples + 1);
    slotInUse[slot] = 1;
    sampleCount[slot] = samples;
    lapCount[slot] = 1;
    lapStart[slot][0] = 0;
    FillLapEnd(slot);
}

// Lap marks at these samples.
inline void SetMarks(int slot, const std::vector<uint32_t>& marks) {
    lapCount[slot] = static_cast<int>(marks.size()) + 1;
    std::copy(marks.begin(), marks.end(), lapStart[slot] + 1);
    FillLapEnd(slot);
}

// Shows this one channel of a slot.
inline void ShowOnly(int slot, int channel) {
    std::fill(std::begin(showChannel[slot]), std::end(showChannel[slot]), 0);
    showChannel[slot][channel] = 1;
}

// The operations of one call, a line each.
template <class Call>
std::string RecordedText(Call call) {
    std::string text;
    RecordOperations(&text);
    call();
    RecordOperations(nullptr);
    return text;
}
template <class Call>
std::vector<std::string> Recorded(Call call) {
    std::istringstream lines(RecordedText(call));
    std::vector<std::string> all;
    for (std::string line; std::getline(lines, line);) all.push_back(line);
    return all;
}
// Those that begin so, and those of one operation.
inline std::vector<std::string> Beginning(const std::vector<std::string>& lines, const std::string& start) {
    std::vector<std::string> kept;
    for (const std::string& line : lines)
        if (line.rfind(start, 0) == 0) kept.push_back(line);
    return kept;
}
inline std::vector<std::string> Only(const std::vector<std::string>& lines, const std::string& operation) {
    return Beginning(lines, operation + " ");
}
inline bool Contains(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}
