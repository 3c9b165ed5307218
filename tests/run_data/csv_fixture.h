// csv_fixture.h -- small CSV logs, imported through their dialog as a user would who changes some of its rows.
#pragma once
#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>
#include <map>
#include <string>
#include <vector>

#include "app/frame_loop.h"
#include "platform/headless/script.h"
#include "run_data/csv_columns.h"
#include "run_data/csv_log.h"
#include "run_data/run_store.h"

// What stands in for the user: the rows chosen and the box ticked before OK, and what the dialog showed meanwhile.
struct CsvUser {
    bool pressesOk = true;
    std::map<int, int> choices;  // row, item
    int lapType = -1;            // 1 lap numbers, 0 distances, -1 as it is
    std::string notes;
    std::vector<int> progress;
};
inline CsvUser csvUser;

inline int AnswerCsvDialog(int, int) {
    OpenCsvRows();
    for (const auto& [row, item] : csvUser.choices) ChooseCsvItem(row, item);
    if (csvUser.lapType >= 0) lapByNumber = csvUser.lapType;
    if (csvUser.pressesOk)
        AcceptCsvImport({[](int position) { csvUser.progress.push_back(position); }, [](const char* text) { csvUser.notes += text; }});
    return 0;
}

// Labels: "Time", "Ne" and so on, and "LAP" for numbers, "Distance" for distances.
struct CsvTest : testing::Test {
    CsvTest() {
        DefaultScript();
        LoadDefaults();
        static constexpr const char* titles[csvLabelSections] = {"Time", "Ne",   "TH", "VFW",  "VRW",  "FrSUS", "RrSUS",
                                                                 "LAF1", "LAF2", "VB", "AUX1", "AUX2", "LAP"};
        for (int row = 0; row < csvLabelSections; row++) std::strcpy(csvLabel[row][0], titles[row]);
        std::strcpy(csvLabel[rowLap][1], "Distance");
        csvUser = {};
        SetDialogHandler(AnswerCsvDialog);
    }
    ~CsvTest() override {
        DefaultScript();
        LoadDefaults();
    }
};

inline void ImportText(int slot, const std::string& text) {
    std::vector<uint8_t> buffer(text.begin(), text.end());
    buffer.resize(text.size() + 1024, 0);
    buffer.shrink_to_fit();
    OpenCsvImport(slot, buffer.data(), static_cast<int>(text.size()));
}

// A line of titles and one line for each time, at a step of 5 ms from 0 on.
template <class Fields>
std::string TimedLines(const std::string& titles, int lines, Fields fields, int stepMs = 5) {
    std::string text = "Time," + titles + "\n";
    for (int i = 0; i < lines; i++) {
        char time[32];
        std::snprintf(time, sizeof time, "%d.%03d,", i * stepMs / 1000, i * stepMs % 1000);
        text += time + fields(i) + "\n";
    }
    return text;
}

// `lines` lines with the same fields.
inline std::string EqualLines(const std::string& titles, int lines, const char* fields, int stepMs = 5) {
    return TimedLines(titles, lines, [fields](int) { return std::string(fields); }, stepMs);
}
// Numbers in one column.
inline std::string Column(const std::string& title, const std::vector<int>& values) {
    return TimedLines(title, static_cast<int>(values.size()), [&](int i) { return std::to_string(values[i]); });
}
// Lines with these times in ms.
inline std::string LinesAt(const std::vector<int>& times) {
    std::string text = "Time,Ne\n";
    for (int time : times) text += std::to_string(time / 1000.0) + ",1000\n";
    return text;
}

constexpr const char* baseTimeProblem = "There was a problem with BaseTime data.\r\nManually setting the BaseTime.";
constexpr const char* baseTimeIncompatible = "The BaseTime that is not compatible.";

// The one box that was shown.
inline void ExpectBox(const char* text) {
    std::vector<Shown> boxes;
    for (const Shown& entry : shown)
        if (entry.kind == "box") boxes.push_back(entry);
    ASSERT_EQ(boxes.size(), 1u);
    EXPECT_EQ(boxes[0].text, text);
    EXPECT_EQ(boxes[0].title, "File Error!!");
}

inline void ExpectReset(int slot) {
    EXPECT_EQ(sampleCount[slot], 1);
    EXPECT_EQ(lapCount[slot], 1);
    EXPECT_EQ(Ne[slot].size(), 16u);
    EXPECT_EQ(slotInUse[slot], slot == 0);
}
