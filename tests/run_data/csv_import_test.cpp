#include "run_data/csv_import.h"

#include "platform/clock.h"
#include "run_data/setup_values.h"
#include "settings/settings.h"
#include "tests/run_data/csv_fixture.h"

namespace {

// ---- the slot ----

struct CsvSlot : CsvTest {};

TEST_F(CsvSlot, ParametersAreThoseOfALogThatTellsNone) {
    std::strcpy(memoText[0], "memo");
    std::strcpy(firmwareText, "3ZrvetV9.01.10");
    formatVersion[0] = 4;
    frontTyreMm[0] = 1905;
    neDivider[0] = 7;
    lafDivider[0][0] = 1;
    jumpTarget[0] = 55;
    cursorPos[0] = currentLap[0] = lapViewOffset[0] = 9;
    fsusType[0] = rsusType[0] = 5;
    fsusZeroRaw[0] = rsusZeroRaw[0] = tpsClosedRaw[0] = 5;
    tpsOpenRaw[0] = 77;
    indicatorRpm[2] = 5;
    ImportText(0, EqualLines("Ne", 30, "100"));
    EXPECT_STREQ(memoText[0], "");
    EXPECT_STREQ(firmwareText, "");
    EXPECT_EQ(rearOnGearbox[0] + gearboxPulses[0] + fsusType[0] + rsusType[0], 0);
    EXPECT_EQ(fsusZeroRaw[0] + rsusZeroRaw[0] + tpsClosedRaw[0], 0);
    EXPECT_EQ(tpsSpan[0], 255);
    for (int one : {frontSprocket[0], rearSprocket[0], rearTyreMm[0], primaryMain[0], primaryCounter[0], gearMain[0][0], gearCounter[0][5]})
        EXPECT_EQ(one, 1);
    EXPECT_EQ(neutralRpm, 30000);
    for (int rpm : indicatorRpm) EXPECT_EQ(rpm, 0);
    for (int k = 0; k < analogInputs; k++)
        for (const AnalogCalibration& calibration : {analog[0][k], analogAsLogged[0][k]}) {
            EXPECT_EQ(calibration.type, k < 2 ? 0 : 2);
            EXPECT_EQ(calibration.slope, 1);
            EXPECT_EQ(calibration.offset, 0);
            for (int point = 0; point < curvePoints; point++) EXPECT_EQ(calibration.curveX[point] + calibration.curveY[point], 0);
        }
    EXPECT_EQ(cursorPos[0], 0);
    EXPECT_EQ(currentLap[0], 1);
    EXPECT_EQ(lapViewOffset[0], 0);
    // What stays.
    EXPECT_EQ(formatVersion[0], 4);
    EXPECT_EQ(frontTyreMm[0], 1905);
    EXPECT_EQ(neDivider[0], 7);
    EXPECT_EQ(tpsOpenRaw[0], 77);
    EXPECT_EQ(lafDivider[0][0], 1);
    EXPECT_EQ(jumpTarget[0], 55);
}

TEST_F(CsvSlot, OtherFilesThanTheFirstLeaveFirmwareTextAndRevValues) {
    std::strcpy(firmwareText, "3ZrvetV9.01.10");
    neutralRpm = 4321;
    ImportText(1, EqualLines("Ne", 30, "100"));
    EXPECT_STREQ(firmwareText, "3ZrvetV9.01.10");
    EXPECT_EQ(neutralRpm, 4321);
}

TEST_F(CsvSlot, ClosingWithoutOkLeavesTheSlotAsItWas) {
    ImportText(1, Column("Ne", {1, 2, 3}));
    csvUser.pressesOk = false;
    std::strcpy(memoText[1], "memo");
    ImportText(1, Column("Ne", {7, 8, 9, 10}));
    EXPECT_EQ(sampleCount[1], 5);
    EXPECT_EQ(Ne[1][1], 1);
    EXPECT_STREQ(memoText[1], "memo");
}

TEST_F(CsvSlot, SelectionDoesNotSurviveTheImport) {
    csvUser.choices = {{rowNe, 0}, {rowTime, 1}};
    csvUser.lapType = 1;
    ImportText(0, Column("Ne", {1, 2, 3}));
    csvUser.choices.clear();
    csvUser.lapType = -1;
    ImportText(0, Column("Ne", {1, 2, 3}));
    EXPECT_EQ(csvRow[rowTime], fixedTimeBases);
    EXPECT_EQ(csvRow[rowNe], 1);
    EXPECT_EQ(lapByNumber, 0);
}

TEST_F(CsvSlot, OkOutsideAnImportDoesNothing) {
    ImportText(0, Column("Ne", {1, 2, 3}));
    AcceptCsvImport({nullptr, nullptr});
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][1], 1);
}

TEST_F(CsvSlot, LoadNeverTouchesTheOtherSlots) {
    ImportText(0, Column("Ne", {1, 2, 3}));
    ImportText(2, Column("Ne", {4, 5, 6, 7}));
    const auto expectOthers = [] {
        EXPECT_EQ(sampleCount[0], 5);
        EXPECT_EQ(sampleCount[2], 6);
        EXPECT_EQ(Ne[0][3], 3);
        EXPECT_EQ(Ne[2][4], 7);
        EXPECT_EQ(lapStart[0][1], 5u);
        EXPECT_EQ(lapStart[2][1], 6u);
        EXPECT_EQ(slotInUse[0] + slotInUse[2], 2);
    };
    ImportText(1, Column("Ne", std::vector<int>(3000, 9)));
    EXPECT_EQ(sampleCount[1], 3002);
    expectOthers();
    ImportText(1, "");
    ExpectReset(1);
    expectOthers();
    ImportText(1, LinesAt({0, 0, 0}));
    expectOthers();
}

TEST_F(CsvSlot, SmoothingComesBeforeTheSuspensionSpeed) {  // so that VFSus is never smoothed
    SmoothingSTD = 2;
    SusVSampleNum = 0;
    std::vector<int> strokes(60, 0);
    strokes[30] = 100;
    ImportText(0, Column("FrSUS", strokes));
    EXPECT_EQ(VFSus[0][30], 20000);
    EXPECT_EQ(VFSus[0][31], -20000);
    EXPECT_EQ(VFSus[0][29], 0);
}

TEST_F(CsvSlot, StatisticsFollowTheData) {
    std::vector<int> speeds(2100, 50);
    speeds[1000] = 90;
    ImportText(0, Column("VFW", speeds));
    EXPECT_EQ(channelMax[0][chVFW], 900);
    EXPECT_EQ(channelMin[0][chVFW], 500);
    EXPECT_EQ(showChannel[0][chVFW], 1);
    EXPECT_EQ(showChannel[0][chNe], 0);
}

TEST_F(CsvSlot, ImportWaitsHalfASecondSoThatTheNotesCanBeRead) {
    const int64_t before = SteadyMs();
    ImportText(0, EqualLines("Ne", 30, "100"));
    EXPECT_EQ(SteadyMs() - before, 500);
}

TEST_F(CsvSlot, ProgressGoesThroughThreeHundreds) {
    // Lines of 16 bytes from the second on, so that every 512th ends on a multiple of 8192.
    std::string text = "Time,Ne,VFW,abc\n";
    for (int i = 0; i < 20000; i++) {
        char line[32];
        std::snprintf(line, sizeof line, "%07.3f,1000,10\n", i * 0.005);
        text += line;
    }
    ASSERT_EQ(text.size(), 20001u * 16);
    ImportText(0, text);
    const int lines = 20001;
    std::vector<int> wanted = {0};
    for (int64_t at = 8192; at <= static_cast<int64_t>(text.size()); at += 8192) wanted.push_back(static_cast<int>(100 * at / static_cast<int64_t>(text.size())));
    for (int base : {100, 200})
        for (int i = 8192; i <= lines; i += 8192) wanted.push_back(base + 100 * i / lines);
    wanted.push_back(300);
    EXPECT_EQ(csvUser.progress, wanted);
}

// ---- failures and odd texts ----

struct CsvFailure : CsvTest {};

TEST_F(CsvFailure, UnreadableFirstLineResetsTheSlotWithoutADialog) {
    for (const std::string& text : {std::string(), std::string("\0Time,Ne\n", 9), std::string(2045, 'x') + "\n1\n"}) {
        ImportText(1, Column("Ne", {1, 2, 3}));
        shown.clear();
        ImportText(1, text);
        ASSERT_EQ(shown.size(), 1u);
        ExpectBox("File Error.");
        ExpectReset(1);
        EXPECT_EQ(csvTitles, 0);
        EXPECT_STREQ(csvTitle[0], "");
    }
}

TEST_F(CsvFailure, MoreThan5760000LinesAreCorrupted) {
    std::string text = "Ne\n";
    text.resize(3 + 5760000, '\n');
    csvUser.choices[rowTime] = 0;
    ImportText(1, text);
    ExpectBox("Data file is corrupted. 5760001");
    ExpectReset(1);
}

TEST_F(CsvFailure, Of5760000LinesAreRead) {
    std::string text = "Ne\n";
    text.resize(3 + 5759999, '\n');
    csvUser.choices[rowTime] = 0;
    ImportText(1, text);
    EXPECT_EQ(sampleCount[1], 5760001);
    EXPECT_EQ(shown.size(), 1u);
    ResetSlot(1);
}

TEST_F(CsvFailure, LineOf2045BytesEndsTheLogBeforeIt) {
    const std::string head = Column("Ne", {1, 2, 3});
    ImportText(0, head + "0.015,4," + std::string(2044 - 8, 'x') + "\n0.020,5\n");
    EXPECT_EQ(sampleCount[0], 7);
    EXPECT_EQ(Ne[0][4], 4);
    ImportText(0, head + "0.015,4," + std::string(2045 - 8, 'x') + "\n0.020,5\n");
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
    EXPECT_EQ(Ne[0][4], 3);  // the last row, not the long line
}

TEST_F(CsvFailure, TextWithoutALineEndAtItsEndIsReadWhole) {
    std::string text = Column("Ne", {1, 2, 3});
    text.pop_back();
    ImportText(0, text);
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
}

TEST_F(CsvFailure, QuotedFieldsAreReadWithoutTheirQuotes) {
    ImportText(0, "\"Time\",\"Ne\"\r\n\"0.005\",\"100\"\r\n\"0.010\",\"200\"\r\n");
    EXPECT_EQ(Ne[0][2], 200);
}

TEST_F(CsvFailure, ZeroBytesEndLinesAndTwoEndTheLog) {
    ImportText(0, std::string("Time,Ne\0000.005,1\0000.010,2\n0.015,3\n\0\0000.020,4\n", 42));
    EXPECT_EQ(sampleCount[0], 5);
    EXPECT_EQ(Ne[0][3], 3);
}

TEST_F(CsvFailure, MissingColumnsReadZero) {
    csvUser.choices[rowTime] = 0;
    ImportText(0, "Time,Ne,TH\n0.005,1,1\n0.010\n\n0.015,3\n");
    EXPECT_EQ(sampleCount[0], 6);
    EXPECT_EQ(Ne[0][2] + Ne[0][3], 0);
    EXPECT_EQ(Ne[0][4], 3);
    EXPECT_EQ(TH[0][4], 0);
}

TEST_F(CsvFailure, Of101ColumnsTheLastIsLeftOut) {
    std::string titles = "Time,", fields = "0.005,", second = "0.010,";
    for (int k = 1; k <= 98; k++) titles += "c,", fields += "5,", second += "6,";
    ImportText(0, titles + "Ne,TH\n" + fields + "100,200\n" + second + "300,400\n");
    EXPECT_EQ(csvTitles, 100);
    EXPECT_EQ(Ne[0][2], 300);
    EXPECT_EQ(TH[0][2], 0);
}

TEST_F(CsvFailure, ExponentsAndHexadecimalNumbersAreReadAndJunkIsZero) {
    ImportText(0, "Time,TH,VFW,LAF1\n5e-3,1.5e1,0x20,abc\n10e-3,1e1,-,+2\n");
    EXPECT_EQ(csvUser.notes, "Detected Timebase 5ms(200Hz)\r\n");
    EXPECT_EQ(TH[0][1], 150);
    EXPECT_EQ(VFW[0][1], 320);
    EXPECT_EQ(LAF1[0][1], 0);
    EXPECT_EQ(VFW[0][2], 0);
    EXPECT_EQ(LAF1[0][2], 200);
}

TEST_F(CsvFailure, DecimalCommasSplitTheirNumbers) {
    ImportText(0, "Time;Ne\n0,005;100\n0,010;200\n");
    ExpectBox(baseTimeIncompatible);  // one title that no label knows
    shown.clear();
    csvUser.choices = {{rowTime, 0}, {rowNe, 0}};
    ImportText(0, "Time;Ne\n0,005;100\n1,010;200\n");
    EXPECT_EQ(sampleCount[0], 4);
    EXPECT_EQ(Ne[0][2], 1);
}

}  // namespace
