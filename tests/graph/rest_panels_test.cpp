// The summary of the run and the memo: every row, and how the panels come and go.
#include "graph/rest_panels.h"

#include <cstring>

#include "tests/graph/readouts_fixture.h"

namespace {

struct RestPanels : ReadOuts {
    // A frame of the memo after a rest, typing anew.
    static std::string FirstMemoFrame() {
        memoFade = 20;
        activityCount = 0;
        return Record(DrawMemoPanel);
    }
    static void TypeWhole(int frames) {
        FirstMemoFrame();
        for (int frame = 0; frame < frames; frame++) DrawMemoPanel();
    }
};

TEST_F(RestPanels, EveryRowOfTheSummaryStandsInItsFilesColumn) {
    MakeLog(1, 120000);
    const int columns[] = {108, 180};
    for (int slot : {0, 1}) {
        channelMax[slot][chNe] = 12345 + slot;
        channelMax[slot][chFSUS] = 12345 + slot;
        channelMax[slot][chRSUS] = 4567 + slot;
        channelMax[slot][chVFW] = 2345 + slot;
        channelMax[slot][chVRW] = 2567 + slot;
        lapCount[slot] = 7;
        MarksPerLap[slot] = 1 + slot;
        std::fill(std::begin(lapLength[slot]), std::end(lapLength[slot]), 0u);
        for (int lap = 0; lap <= 7; lap++) lapLength[slot][lap] = 7200 * 1000;
        lapLength[slot][8] = 7200 * 5000;  // behind the last one
    }
    timeFactor[1] = 0.5;
    const std::string lines = Record(DrawSummaryImage);
    EXPECT_EQ(lines.rfind("SetDrawTarget summaryPanel\n" + Blend(0, 255) + Box(0, 0, 256, 128, panelBackColor), 0), 0u);
    const struct { int row; const char *label, *file1, *file2; } rows[] = {
        {1, "Max Ne", "12345 rpm", "12346 rpm"},        {2, "Max FSUS", "123.45 mm", "123.46 mm"},
        {3, "Max RSUS", "45.67 mm", "45.68 mm"},        {4, "Max VFW", "234.5 km/h", "234.6 km/h"},
        {5, "Max VRW", "256.7 km/h", "256.8 km/h"},     {7, "Run Distance", "8.00 km", "16.00 km"},
        {8, "Total Lap", "  7 Lap", "  3 Lap"},         {9, "Logging Time", "  0'30\\x22", " 10'00\\x22"}};
    for (const auto& row : rows) {
        EXPECT_TRUE(Draws(lines, TextAt(16, fontSize * row.row, row.label, lapTextColor[0], "smallFont")));
        EXPECT_TRUE(Draws(lines, TextF(columns[0], fontSize * row.row, lapTextColor[0], "smallFont", row.file1)));
        EXPECT_TRUE(Draws(lines, TextF(columns[1], fontSize * row.row, lapTextColor[1], "smallFont", row.file2)));
    }
    EXPECT_NE(lines.find("SetDrawTarget -2\n", lines.size() - 20), std::string::npos) << "the back buffer again";
    MakeLog(2, 100);
    EXPECT_EQ(Count(Record(DrawSummaryImage), " rpm"), 2) << "File 3 has no column";
}

TEST_F(RestPanels, TheSummarySlidesInFromTheCorner) {
    summaryFade = 20;
    activityCount = 74;
    for (int fade = 19; fade >= 0; fade--) {
        const std::string wanted = Blend(1, (20 - fade) * 11) + "DrawImageRotated" + Numbers({double(1024 + fade - 144), 768 - 80, 128, 64}) +
                                   " summaryPanel 0" + Numbers({1 - fade * 0.005, 0}) + "\n" + Blend(0, 255);
        EXPECT_TRUE(Draws(Record(DrawSummaryPanel), wanted));
        EXPECT_EQ(summaryFade, fade);
    }
    DrawSummaryPanel();
    EXPECT_EQ(summaryFade, 0);
    activityCount = 75;
    DrawSummaryPanel();
    EXPECT_EQ(summaryFade, 1);
}

TEST_F(RestPanels, TheMemoSlidesInFromTheOtherCorner) {
    memoFade = 20;
    for (int fade = 19; fade >= 0; fade--) {
        activityCount = 69;
        const std::string wanted = Blend(1, (20 - fade) * 11) + "DrawImageRotated" +
                                   Numbers({double((34 - fade) * 4), double(768 + fade * 3 - 152), 128, 128}) + " memoPanel 0" +
                                   Numbers({1 - fade * 0.02, 0}) + "\n" + Blend(0, 255);
        EXPECT_TRUE(Draws(Record(DrawMemoPanel), wanted));
        EXPECT_EQ(memoFade, fade);
    }
    activityCount = 70;
    DrawMemoPanel();
    EXPECT_EQ(memoFade, 1);
}

TEST_F(RestPanels, TheMemosHeadsTellTyresAndSprocketsOfBothFiles) {
    MakeLog(1, 100);
    frontTyreMm[1] = 1885, rearTyreMm[1] = 980;
    frontSprocket[1] = 16, rearSprocket[1] = 40;
    const std::string lines = FirstMemoFrame();
    EXPECT_EQ(lines.rfind("SetDrawTarget memoPanel\n" + Blend(0, 255) + Box(0, 0, 192, 256, panelBackColor) +
                              TextF(8, 4, lapTextColor[0], "smallFont", "Tire Size F:1920mm R:2010mm") +
                              TextF(8, fontSize + 4, lapTextColor[0], "smallFont", "Final 15-43(2.867)") +
                              TextF(8, 128, lapTextColor[1], "smallFont", "TireSize F:1885mm R: 980mm") +
                              TextF(8, fontSize + 128, lapTextColor[1], "smallFont", "Final 16-40(2.500)"),
                          0),
              0u)
        << lines;
    frontSprocket[0] = 1;
    slotInUse[1] = 0;
    const std::string alone = FirstMemoFrame();
    EXPECT_FALSE(Has(alone, "Final"));
    EXPECT_FALSE(Has(alone, "TireSize"));
}

TEST_F(RestPanels, BothMemosAreTypedAtOnceEachInItsHalf) {
    MakeLog(1, 100);
    std::strcpy(memoText[0], "ab");
    std::strcpy(memoText[1], "xy");
    std::string lines = FirstMemoFrame();
    const int y = (fontSize + 1) * 2 + 4;
    EXPECT_TRUE(Draws(lines, TextAt(8, y, "a", lapTextColor[0], "smallFont") + TextAt(8, 128 + y, "x", lapTextColor[1], "smallFont")));
    lines = Record(DrawMemoPanel);
    EXPECT_TRUE(Draws(lines, TextAt(8 + TextWidth("a", 1, smallFont), y, "b", lapTextColor[0], "smallFont") +
                                 TextAt(8 + TextWidth("x", 1, smallFont), 128 + y, "y", lapTextColor[1], "smallFont")));
    EXPECT_TRUE(Draws(lines, "SetDrawTarget -2\n"));
}

TEST_F(RestPanels, ACarriageReturnBeginsARowWithALineFeedOrWithout) {
    std::strcpy(memoText[0], "a\rb\r\nc\nd");
    TypeWhole(20);
    EXPECT_EQ(memoCursor[0].index, 8);
    EXPECT_EQ(memoCursor[0].row, 4) << "a line feed alone is a character";
    EXPECT_EQ(memoCursor[0].column, 3);
}

TEST_F(RestPanels, ADoubleByteCharacterTakesTwoCellsAndMayEndBehindTheLast) {
    for (int i = 0; i < 14; i++) std::strcpy(memoText[0] + 2 * i, "\x82\xA0");
    std::strcpy(memoText[0] + 28, "\x82\xA0m");
    TypeWhole(15);
    EXPECT_EQ(memoCursor[0].row, 3);
    EXPECT_EQ(memoCursor[0].column, 1) << "15 characters of two cells, then the 29 are used up";
    std::strcpy(memoText[0], "\xB1m");  // a half-width kana: taken for the first of two bytes
    TypeWhole(3);
    EXPECT_EQ(memoCursor[0].column, 2);
}

TEST_F(RestPanels, ARowThatWrapsPastTheLastOneEndsTheMemo) {
    std::memset(memoText[0], 'm', 60);
    std::memset(memoText[0], '\r', 7);
    TypeWhole(80);
    EXPECT_EQ(memoCursor[0].index, 7 + 29);
    EXPECT_EQ(memoCursor[0].row, 10);
}

TEST_F(RestPanels, AHiddenMemoDrawsNothing) {
    memoFade = 20;
    activityCount = 150;
    EXPECT_EQ(Record(DrawMemoPanel), "");
    activityCount = 0;
    Memo_view = 0;
    EXPECT_EQ(Record(DrawMemoPanel), "");
}

TEST_F(RestPanels, TypingHoldsTheProgramAwakeUntilTheEnd) {
    std::strcpy(memoText[0], "ab");
    FirstMemoFrame();
    EXPECT_EQ(activityCount, 2);
    activityCount = 40;
    DrawMemoPanel();
    EXPECT_EQ(activityCount, 40);
    activityCount = 1;
    DrawMemoPanel();
    EXPECT_EQ(activityCount, 1);
}

TEST_F(RestPanels, TheMemoIsTypedAnewEachTimeItReappears) {
    std::strcpy(memoText[0], "abc");
    TypeWhole(10);
    EXPECT_EQ(memoCursor[0].index, 3);
    EXPECT_TRUE(Has(FirstMemoFrame(), "\"a\""));
    EXPECT_EQ(memoCursor[0].index, 1);
}

TEST_F(RestPanels, AStartAnewHasBothPanelsIn) {
    TypeWhole(3);
    summaryFade = memoFade = 7;
    memoCursor[1] = {5, 6, 7, 8};
    DefaultRestPanels();
    EXPECT_EQ(summaryFade, 0);
    EXPECT_EQ(memoFade, 0);
    for (const MemoCursor& cursor : memoCursor) {
        EXPECT_EQ(cursor.index, 0);
        EXPECT_EQ(cursor.row, 2);
        EXPECT_EQ(cursor.column, 0);
        EXPECT_EQ(cursor.x, 0);
    }
}

TEST_F(RestPanels, WithoutTheirImagesThePanelsDrawNothingIntoThem) {
    std::strcpy(memoText[0], "abc");
    const int summary = summaryPanel, memo = memoPanel;
    summaryPanel = memoPanel = noHandle;
    EXPECT_EQ(Record(DrawSummaryImage), "");
    EXPECT_FALSE(Has(FirstMemoFrame(), "DrawText"));
    summaryPanel = summary, memoPanel = memo;
}

}  // namespace
