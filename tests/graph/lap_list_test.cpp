// File names, times, distances and the rows of the lap list.
#include "graph/lap_list.h"

#include <cstring>

#include "tests/graph/readouts_fixture.h"

namespace {

struct LapList : ReadOuts {
    static void Marks(int slot, std::initializer_list<uint32_t> starts) {
        lapCount[slot] = static_cast<int>(starts.size());
        std::copy(starts.begin(), starts.end(), lapStart[slot]);
        FillLapEnd(slot);
    }
};

TEST_F(LapList, ABackdropStandsBehindEachList) {
    MakeLog(1, 6000);
    Marks(0, {0, 1000, 2000});
    Marks(1, {0, 1000});
    lapViewOffset[0] = 1;
    const std::string boxes = Box(5, 300, 85, 300 + 2 * 15 + 2, whiteColor) + Box(110, 300, 190, 300 + 2 * 15 + 2, whiteColor);
    EXPECT_TRUE(Draws(Record(DrawLapList), Blend(3, 210) + boxes));
    MakeLog(2, 6000);
    lapViewOffset[0] = 0;
    EXPECT_TRUE(Draws(Record(DrawLapList), Box(215, 300, 295, 300 + 15 + 2, whiteColor)));
}

TEST_F(LapList, ALongBackdropEndsARowAboveTheWindow) {
    lapCount[0] = 28;  // 300 + 28 x 15 + 2 = 722, past 768 - 48
    for (int lap = 0; lap < 28; lap++) lapStart[0][lap] = lap * 100;
    FillLapEnd(0);
    EXPECT_TRUE(Draws(Record(DrawLapList), Box(5, 300, 85, 768 - 15, whiteColor)));
    lapCount[0] = 27;
    FillLapEnd(0);
    EXPECT_TRUE(Draws(Record(DrawLapList), Box(5, 300, 85, 300 + 27 * 15 + 2, whiteColor)));
}

TEST_F(LapList, UnderTheMouseTheListsLightUpAsTheRulerFades) {
    const std::string lit = Blend(2, 130 - 20 * 4) + Box(5, 300, 85, 317, lapHoverColor);
    rulerFade = 20;
    EXPECT_FALSE(Draws(Record(DrawLapList), lit));
    for (int hover : {1, 3, 4}) {
        lapHover = hover;
        EXPECT_TRUE(Draws(Record(DrawLapList), lit));
    }
    CursolValueMode = 2;
    EXPECT_FALSE(Draws(Record(DrawLapList), lit));
}

TEST_F(LapList, NameTimesAndDistancesStandAtTheirPlacesInTheFilesColour) {
    for (int slot : {1, 2}) MakeLog(slot, 60000);
    for (int slot = 0; slot < fileSlots; slot++) {
        std::snprintf(fileTitle[slot], sizeof fileTitle[slot], "Run %d", slot);
        fileBright[slot] = 100 + slot;
        cursorPos[slot] = 500000 + 100000 * slot;
        Marks(slot, {0, 3000});
        lapLength[slot][2] = 7200 * 1234;
        lapDistance[slot][cursorPos[slot] / 100] = 7200 * 567;
        currentLap[slot] = 2;
    }
    const std::string lines = Record(DrawLapList);
    const struct { int timeX, distanceX; const char *lap, *log; } rows[] = {
        {432, 382, "00'10.00", "00'25.00"}, {552, 612, "00'15.00", "00'30.00"}, {672, 732, "00'20.00", "00'35.00"}};
    for (int slot = 0; slot < fileSlots; slot++) {
        SCOPED_TRACE(slot);
        const std::string bright = std::to_string(100 + slot);
        EXPECT_TRUE(Draws(lines, "SetBrightness " + bright + " " + bright + " " + bright + "\n" +
                                     TextAt(10, 15 * slot + 16, "Run " + std::to_string(slot), fileTextColor[slot], "bigFont") +
                                     TextF(rows[slot].timeX, 20, fileTextColor[slot], "smallFont", rows[slot].lap) +
                                     TextF(rows[slot].timeX, 35, fileTextColor[slot], "smallFont", rows[slot].log) +
                                     TextF(rows[slot].distanceX, 20, fileTextColor[slot], "smallFont", "1234m") +
                                     TextF(rows[slot].distanceX, 35, fileTextColor[slot], "smallFont", "567m")));
    }
    EXPECT_TRUE(Draws(lines, "SetBrightness 255 255 255\n"));
}

TEST_F(LapList, MinutesAndHundredthsOfATime) {
    MakeLog(0, 30000);
    cursorPos[0] = 2469200;  // 123.46 s
    EXPECT_TRUE(Has(Record(DrawLapList), "\"02'03.46\""));
}

TEST_F(LapList, TheDistanceOfAGroupIsThatOfAllItsMarks) {
    Marks(0, {0, 1000, 2000, 3000, 4000});
    for (int entry = 0; entry <= 6; entry++) lapLength[0][entry] = 7200u * (1u << entry);
    const struct { int marks, lap, metres; } rows[] = {{1, 3, 8},      {1, 5, 32},          {2, 1, 2 + 4}, {2, 4, 8 + 16},
                                                       {3, 2, 2 + 4 + 8}, {3, 5, 16 + 32 + 64}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.marks * 10 + row.lap);
        MarksPerLap[0] = row.marks;
        currentLap[0] = row.lap;
        EXPECT_TRUE(Has(Record(DrawLapList), " \"" + std::to_string(row.metres) + "m\""));
    }
}

TEST_F(LapList, RowsStandUnderEachOtherAndEndAboveTheBottom) {
    lapCount[0] = 100;
    for (int lap = 0; lap < 100; lap++) lapStart[0][lap] = lap * 60;
    FillLapEnd(0);
    const std::string lines = Record(DrawLapList);
    // y from 300 to below 737; more than 720 shows that rows follow.
    for (int row = 0; row <= 29; row++)
        EXPECT_TRUE(Draws(lines, row < 29 ? TextF(14, 302 + 15 * row, lapTextColor[0], "bigFont", "00'00.30")
                                          : TextAt(14, 302 + 15 * row, "   \\x81\\xA5   ", lapTextColor[0], "bigFont")));
    EXPECT_FALSE(Has(lines, "14 752 "));
}

TEST_F(LapList, WithSeveralMarksARowHasItsGroupsTimeOrDashes) {
    MakeLog(1, 6000);
    Marks(1, {0, 1000, 2000, 3000, 4000});
    const struct { int marks; const char* rows[5]; } cases[] = {
        {1, {"00'05.00", "00'05.00", "00'05.00", "00'05.00", "00'10.00"}},
        {2, {"00'10.00", "- - - -", "00'10.00", "- - - -", "00'10.00"}},
        {3, {"00'15.00", "- - - -", "- - - -", "00'15.00", "- - - -"}},
    };
    for (const auto& one : cases) {
        SCOPED_TRACE(one.marks);
        MarksPerLap[1] = one.marks;
        const std::string lines = Record(DrawLapList);
        for (int row = 0; row < 5; row++) {
            const std::string text = one.rows[row];
            const int y = 302 + 15 * row;
            EXPECT_TRUE(Draws(lines, text[0] == '-' ? TextAt(119, y, text, lapTextColor[1], "bigFont")
                                                    : TextF(119, y, lapTextColor[1], "bigFont", text)));
        }
    }
}

TEST_F(LapList, AScrolledListBeginsWithATriangle) {
    Marks(0, {0, 1000, 2000, 3000, 4000});
    lapViewOffset[0] = 2;
    cursorPos[0] = 450000;
    const std::string lines = Record(DrawLapList);
    EXPECT_TRUE(Draws(lines, TextAt(14, 302, "   \\x81\\xA3  ", lapTextColor[0], "bigFont") +
                                 TextF(14, 317, lapTextColor[0], "bigFont", "00'05.00") + TextF(14, 332, lapTextColor[0], "bigFont", "00'10.00")));
}

TEST_F(LapList, TheCurrentLapIsTheLastThatBeganAtOrBeforeTheCursor) {
    Marks(0, {0, 1000, 3000});
    timeFactor[0] = 0.5;
    const struct { int cursor, lap, centis; } rows[] = {{0, 1, 1000}, {99999, 1, 1000}, {100000, 2, 2000}, {300000, 3, 3000}, {599999, 3, 3000}};
    for (const auto& row : rows) {
        cursorPos[0] = row.cursor;
        DrawLapList();
        EXPECT_EQ(currentLap[0], row.lap) << row.cursor;
        EXPECT_EQ(LapTimeCentis[0], row.centis) << row.cursor;
    }
}

TEST_F(LapList, TheBarStandsOnTheCurrentLapsRow) {
    MakeLog(1, 6000);
    Marks(0, {0, 1000, 3000});
    cursorPos[0] = 100000;
    const auto bar = [](int slot, int row) {
        const int left = 105 * slot + 5, top = 300 + 15 * row;
        return Blend(2, 127) + Box(left, top + 1, left + 80, top + 17, lapBarColor[slot]);
    };
    std::string lines = Record(DrawLapList);
    EXPECT_TRUE(Draws(lines, bar(0, 1)));
    EXPECT_TRUE(Draws(lines, bar(1, 0)));
    CursolValueMode = 2;
    lines = Record(DrawLapList);
    EXPECT_FALSE(Draws(lines, bar(0, 1)));
}

TEST_F(LapList, TheBarStandsAboveTheListWhenItsLapIsScrolledAway) {
    Marks(0, {0, 1000, 2000});
    clientHeight = 200;  // no row fits, and none is walked
    lapViewOffset[0] = 1;
    EXPECT_TRUE(Draws(Record(DrawLapList), Box(5, 286, 85, 302, lapBarColor[0])));
}

TEST_F(LapList, AListScrolledPastTheCursorComesBackARowAFrame) {
    Marks(0, {0, 1000, 2000, 3000, 4000});
    lapViewOffset[0] = 4;
    cursorPos[0] = 0;
    for (int offset : {3, 2, 1, 0, 0}) {
        DrawLapList();
        EXPECT_EQ(lapViewOffset[0], offset);
    }
    EXPECT_EQ(currentLap[0], 1);
}

TEST_F(LapList, LargeTextHasItsOwnPlaces) {
    rowHeight = 17;
    lapColumnWidth = 110;
    lapListTop = 340;
    MakeLog(1, 6000);
    const std::string lines = Record(DrawLapList);
    EXPECT_TRUE(Draws(lines, Box(5, 340, 90, 340 + 17 + 2, whiteColor) + Box(115, 340, 200, 340 + 17 + 2, whiteColor)));
    EXPECT_TRUE(Draws(lines, TextF(124, 342, lapTextColor[1], "bigFont", "00'30.00")));
}

}  // namespace
