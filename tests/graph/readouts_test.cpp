#include "tests/graph/readouts_fixture.h"

TEST_F(ReadOuts, PlainTextsOfEveryChannel) {
    const struct { int channel; const char *panel, *tag; } rows[] = {
        {chNe, "  1234rpm", "  1234rpm"},       {chTH, " 123%", " 123%"},
        {chVFW, " 123.4km/h", " 123.4km/h:F"},  {chVRW, " 123.4km/h", " 123.4km/h:R"},
        {chFSUS, "  12.3mm", "  12.3mm:F"},     {chRSUS, "  12.3mm", "  12.3mm:R"},
        {chLAF1, "  12.34A/F", "  12.34A/F"},   {chLAF2, "  12.34A/F", "  12.34A/F"},
        {chVB, "  12.34V", "  12.34V"},         {chAUX1, "  12.34V", "  12.34V"},
        {chAUX2, "  12.34V", "  12.34V"},       {chSlip, " +0.00%", " +0.00%"},
        {chVFSus, "   +0mm/s", "   +0mm/s:F"},  {chVRSus, "   +0mm/s", "   +0mm/s:R"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.channel);
        EXPECT_STREQ(Texts(row.channel, 1234).panel, row.panel);
        EXPECT_STREQ(Texts(row.channel, 1234).tag, row.tag);
    }
}

TEST_F(ReadOuts, DifferencesOfEveryChannelAreToTheSampleUnderTheCursorLine) {
    shiftDown = 1;
    const struct { int channel; const char* panel; } rows[] = {
        {chNe, "  +234rpm"},    {chTH, " +23%"},       {chVFW, " +23.4km/h"}, {chVRW, " +23.4km/h"},
        {chFSUS, "  +2.3mm"},   {chLAF1, "  +2.34A/F"}, {chVB, "  +2.34V"},    {chAUX1, "  +2.34V"},
        {chSlip, " +0.00P"},    {chVFSus, "   +0mm/s"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.channel);
        EXPECT_STREQ(Texts(row.channel, 1234, 1000).panel, row.panel);
    }
}

TEST_F(ReadOuts, ADifferenceOnTheCursorLineShowsZerosWithTheirSign) {
    shiftDown = 1;
    EXPECT_STREQ(Texts(chNe, 500, 500).panel, "    +0rpm");
    EXPECT_STREQ(Texts(chVFW, 500, 500).panel, "  +0.0km/h");
    EXPECT_STREQ(Texts(chLAF1, 500, 500).panel, "  +0.00A/F");
}

TEST_F(ReadOuts, AnalogInputsAreWrittenByTheirTypeAndDivider) {
    const struct { int type, divider; const char *plain, *difference; } rows[] = {
        {2, 1, "  12.34", "   2.34"}, {2, 10, "  123.4", "   23.4"}, {2, 100, "   1234", "    234"}, {3, 10, "  12.34", "   2.34"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.plain);
        analog[0][2].type = row.type;
        auxDivider[0][0] = row.divider;
        shiftDown = 0;
        EXPECT_STREQ(Texts(chAUX1, 1234).panel, row.plain);
        shiftDown = 1;
        EXPECT_STREQ(Texts(chAUX1, 1234, 1000).panel, row.difference) << "no plus sign, unlike the LAF inputs";
    }
    analog[0][0].type = 3;
    EXPECT_STREQ(Texts(chLAF1, 1234, 1000).panel, "  +2.34");
}

TEST_F(ReadOuts, AnAnalogRowWithoutATextOfItsOwnShowsTheChannelBefore) {
    analog[0][2].type = 2;
    auxDivider[0][0] = 7;
    analog[0][3].type = 0;
    EXPECT_STREQ(Texts(chAUX1, 1234).panel, "before");
    analog[0][0].type = 9;
    EXPECT_STREQ(Texts(chLAF1, 1234).tag, "before");
    nameFade = 32;
    const std::string lines = Record(DrawValueReadout);
    EXPECT_EQ(Count(lines, "\"" + std::string(Texts(chVB, MouseSample(0)).panel) + "\""), 4)
        << "VB and AUX1, in the panel and beside the mouse";
}

TEST_F(ReadOuts, StrokesAreVoltsWhereBitFourOfTheSensorTypeIsSet) {
    fsusType[0] = 16;
    EXPECT_STREQ(Texts(chFSUS, 1234).panel, "  12.3V");
    EXPECT_STREQ(Texts(chRSUS, 1234).tag, "  12.3mm:R");
}

TEST_F(ReadOuts, ThrottleTagsShowTenthsWithDebug) {
    Debug = 1;
    EXPECT_STREQ(Texts(chTH, 1234).tag, "123.4%");
    EXPECT_STREQ(Texts(chTH, 1234).panel, " 123%");
}

TEST_F(ReadOuts, SmoothedReadingsLeaveSamplesOutsideTheFileOutButKeepTheDivisor) {
    ctrlDown = 1;
    SusFilter_n = 7;
    for (int i = 0; i < 6000; i++) FSUS[0][i] = 1500;
    EXPECT_STREQ(Texts(chFSUS, 3000).panel, "  15.0mm");
    EXPECT_STREQ(Texts(chFSUS, 0).panel, "   8.0mm");
    EXPECT_STREQ(Texts(chFSUS, 5999).panel, "   8.0mm");
    EXPECT_STREQ(Texts(chVFW, 1234).panel, " 123.4km/h") << "wheel speeds only with Debug";
}

TEST_F(ReadOuts, TheDelayOfAnalogInputsFallsAwayNearTheEndOfTheFile) {
    lafDelay = 200;
    EXPECT_STREQ(Texts(chLAF1, 1000).panel, "  12.00A/F");
    EXPECT_STREQ(Texts(chLAF1, 5800).panel, "  58.00A/F");
    EXPECT_STREQ(Texts(chAUX1, 1000).panel, "  10.00V") << "no A/F sensor";
    ExpertMode = 1;
    EXPECT_STREQ(Texts(chLAF1, 1000).panel, "  10.00A/F");
}

TEST_F(ReadOuts, AnInputWhoseBaseLiesOutsideTheFileShowsItsPlainValueAsADifference) {
    shiftDown = 1;
    EXPECT_STREQ(Texts(chLAF1, 1234, 0).panel, " +12.34A/F");
    EXPECT_STREQ(Texts(chVB, 1234, 0).panel, " +12.34V");
}

TEST_F(ReadOuts, ThePanelFadesToNamesUnderTheMouse) {
    nameFade = 32;
    EXPECT_FALSE(Has(Record(DrawValueReadout), "\"SUS Fr\""));
    panelHover = 1;
    for (int frame = 0; frame < 32; frame++) DrawValueReadout();
    EXPECT_EQ(nameFade, 0);
    const std::string lines = Record(DrawValueReadout);
    EXPECT_TRUE(Has(lines, "\"SUS Fr\""));
    EXPECT_TRUE(Has(lines, "\"LAF1 0.00\"")) << "the long form with the delay";
    EXPECT_TRUE(Has(lines, "\"AUX 1\"")) << "no A/F sensor: the short form";
    EXPECT_TRUE(Has(lines, "SetBlend 1 256"));
}

TEST_F(ReadOuts, PanelAndTagsAreHiddenByTheirBits) {
    nameFade = 32;
    CursolValueMode = 2;
    EXPECT_FALSE(Has(Record(DrawValueReadout), "DrawTextAt"));
    CursolValueMode = 1;
    EXPECT_TRUE(Has(Record(DrawValueReadout), ":F\""));
    CursolValueMode = 0;
    EXPECT_FALSE(Has(Record(DrawValueReadout), ":F\""));
}

TEST_F(ReadOuts, TagsOnTopOfEachOtherPushDownAndApartOnesStay) {
    nameFade = 32;
    CursolValueMode = 3;
    mouseX = BaseLineX();  // sample 0: every value is 0, at its channel's position
    for (int channel = 0; channel < channelTotal; channel++) {
        channelPosition[channel] = 100 * (channel + 1);
        channelZoom[channel] = 1e9;
    }
    channelPosition[chTH] = channelPosition[chNe] + 10;
    channelPosition[chVFW] = channelPosition[chNe] + fontSize + 15;
    channelPosition[chVRW] = channelPosition[chNe] + 2 * fontSize + 16;
    const std::string lines = Record(DrawValueReadout);
    const auto box = [&](int y) { return Has(lines, "FillRect " + std::to_string(mouseX - 127) + " " + std::to_string(y) + " "); };
    EXPECT_TRUE(box(100));
    EXPECT_TRUE(box(100 + fontSize)) << "TH under Ne";
    EXPECT_TRUE(box(100 + 2 * fontSize)) << "VFW under TH";
    EXPECT_TRUE(box(100 + 2 * fontSize + 16)) << "VRW is 16 below VFW's new place and stays";
    EXPECT_TRUE(box(500)) << "FSUS is apart";
}

TEST_F(ReadOuts, TagsGlideATenthOfTheWayAndOnlyARisingOneKeepsTheFramesComing) {
    animationPending = 0;
    DrawValueReadout();
    EXPECT_EQ(animationPending, 1);
    const int sample = MouseSample(0);
    EXPECT_EQ(tagValue[chNe][0], sample * 10 / 10);
    for (int frame = 0; frame < 200; frame++) DrawValueReadout();
    animationPending = 0;
    mouseX = BaseLineX();
    DrawValueReadout();
    EXPECT_EQ(animationPending, 0) << "falling";
}

TEST_F(ReadOuts, RealTimePlayReadsAtTheCursorLine) {
    realTimePlayOn = 1;
    cursorPos[0] = 100000;
    DrawValueReadout();
    EXPECT_EQ(mouseX, BaseLineX());
    EXPECT_EQ(MouseSample(0), 1000);
}

TEST_F(ReadOuts, TheDelayTextStaysForItsFrames) {
    lafDelayShow = 2;
    lafDelay = 40;
    EXPECT_TRUE(Has(Record(DrawValueReadout), "LAF Delay 0.20 sec"));
    EXPECT_TRUE(Has(Record(DrawValueReadout), "LAF Delay"));
    EXPECT_FALSE(Has(Record(DrawValueReadout), "LAF Delay"));
}

TEST_F(ReadOuts, TheRulersTimeIsPositiveAndItsDistancesNegativeLeftOfTheCursorLine) {
    for (int i = 1; i < 6016; i++) distFront[0][i] = distFront[0][i - 1] + 7200;
    cursorPos[0] = 300000;
    mouseX = BaseLineX() - 100;
    const std::string lines = Record(DrawRuler);
    EXPECT_TRUE(Has(lines, "\"2.50sec\"")) << lines;
    EXPECT_TRUE(Has(lines, "\"( -500m:F    0m:R)\""));
}

TEST_F(ReadOuts, TheRulerChangesToMinutesFromSixtySeconds) {
    timeScale = 125.0;
    mouseX = BaseLineX() + 95;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"59.38sec\""));
    mouseX = BaseLineX() + 100;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"1m02s\""));
    timeScale = 5.0;
    Debug = 1;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"2.500sec\""));
}

TEST_F(ReadOuts, ArrowHeadsNeedTwentyOnePixels) {
    mouseX = BaseLineX() + 20;
    EXPECT_EQ(Count(Record(DrawRuler), "DrawLineI"), 0);
    mouseX = BaseLineX() - 21;
    EXPECT_EQ(Count(Record(DrawRuler), "DrawLineI"), 2);
}

TEST_F(ReadOuts, DuringPlayOnlyTheShadedRangeOfTheRulerIsDrawn) {
    realTimePlayOn = 1;
    shiftDown = 1;
    const std::string lines = Record(DrawRuler);
    EXPECT_EQ(Count(lines, "FillRect"), 1);
    EXPECT_EQ(Count(lines, "DrawLine"), 0);
}

TEST_F(ReadOuts, ALogOfOneLapHasOneRowWithTheLengthOfTheLog) {
    const std::string lines = Record(DrawLapList);
    EXPECT_TRUE(Has(lines, "\"00'30.00\""));
    EXPECT_EQ(currentLap[0], 1);
    EXPECT_EQ(LapTimeCentis[0], 3000);
}

TEST_F(ReadOuts, TheListScrollsOneRowAFrameTowardsTheCurrentLapAndShowsTriangles) {
    lapCount[0] = 100;
    for (int lap = 0; lap < 100; lap++) lapStart[0][lap] = lap * 60;
    FillLapEnd(0);
    cursorPos[0] = 5950 * 100;
    const std::string first = Record(DrawLapList);
    EXPECT_TRUE(Has(first, "\\x81\\xA5")) << "more below";
    EXPECT_FALSE(Has(first, "\\x81\\xA3"));
    EXPECT_EQ(lapViewOffset[0], 1);
    for (int frame = 0; frame < 100; frame++) DrawLapList();
    EXPECT_EQ(currentLap[0], 100);
    EXPECT_TRUE(Has(Record(DrawLapList), "\\x81\\xA3")) << "more above";
    cursorPos[0] = 0;
    for (int frame = 0; frame < 100; frame++) DrawLapList();
    EXPECT_EQ(currentLap[0], 1);
    EXPECT_EQ(lapViewOffset[0], 0);
}

TEST_F(ReadOuts, InALowWindowTheListComesToRestAtTheCurrentLap) {
    clientHeight = 380;
    lapCount[0] = 100;
    for (int lap = 0; lap < 100; lap++) lapStart[0][lap] = lap * 60;
    FillLapEnd(0);
    cursorPos[0] = 4990 * 100;
    for (int frame = 0; frame < 150; frame++) DrawLapList();
    EXPECT_EQ(currentLap[0], 84);
    for (int frame = 0; frame < 3; frame++) {
        DrawLapList();
        EXPECT_EQ(lapViewOffset[0], 82) << "the second rule takes back what the first one did";
    }
}

TEST_F(ReadOuts, WithTwoMarksPerLapEverySecondRowHasDashes) {
    MarksPerLap[0] = 2;
    lapCount[0] = 4;
    for (int lap = 0; lap < 4; lap++) lapStart[0][lap] = lap * 1000;
    FillLapEnd(0);
    const std::string lines = Record(DrawLapList);
    EXPECT_EQ(Count(lines, "\"- - - -\""), 2);
    EXPECT_TRUE(Has(lines, "\"00'10.00\""));
}

TEST_F(ReadOuts, ZeroMarksPerLapBecomeOneBeforeTheListIsWalked) {
    MarksPerLap[0] = 0;
    DrawLapList();
    EXPECT_EQ(MarksPerLap[0], 1);
}

TEST_F(ReadOuts, TimesAndListAreHiddenByTheirBits) {
    CursolValueMode = 4;
    EXPECT_FALSE(Has(Record(DrawLapList), "smallFont"));
    CursolValueMode = 2;
    const std::string lines = Record(DrawLapList);
    EXPECT_FALSE(Has(lines, "FillRect"));
    EXPECT_TRUE(Has(lines, "\"00'00.00\"")) << "the times at the top stay";
    EXPECT_EQ(currentLap[0], 1) << "the walk goes on unseen";
}

TEST_F(ReadOuts, TheLapsTimeAtTheTopLeavesTheTimeFactorOutOfTheLapsStart) {
    timeFactor[0] = 0.5;
    lapCount[0] = 2;
    lapStart[0][1] = 1000;
    FillLapEnd(0);
    cursorPos[0] = 200000;
    DrawLapList();
    EXPECT_TRUE(Has(Record(DrawLapList), "\"00'15.00\"")) << "20 s less 1000 samples of 5 ms";
}

TEST_F(ReadOuts, TheScrollBarGrowsUnderTheMouseAndShrinksSlower) {
    mouseY = clientHeight - 5;
    DrawScrollBar();
    EXPECT_EQ(scrollBarGrow, 2);
    for (int frame = 0; frame < 40; frame++) DrawScrollBar();
    EXPECT_EQ(scrollBarGrow, 32);
    mouseY = 0;
    DrawScrollBar();
    EXPECT_EQ(scrollBarGrow, 31);
}

TEST_F(ReadOuts, TheScrollBarsThumbStandsAtTheCursor) {
    cursorPos[0] = 300000;
    scrollBarGrow = 1;
    const std::string lines = Record(DrawScrollBar);
    EXPECT_TRUE(Has(lines, "SetBlend 4 48"));
    const int half = static_cast<int>(5.0 * (BaseLineX() * clientWidth / 6000)), centre = clientWidth / 2;
    EXPECT_TRUE(Has(lines, "FillRect " + std::to_string(centre - half) + " " + std::to_string(clientHeight - 11) + " " +
                               std::to_string(centre + half) + " " + std::to_string(clientHeight - 3)));
}

TEST_F(ReadOuts, TheSummaryListsTheRunAndDividesItsTimeByTheZoom) {
    channelMax[0][chNe] = 12345;
    lapLength[0][1] = 7200 * 1500;
    viewZoom = 2.0;
    const std::string lines = Record(DrawSummaryImage);
    EXPECT_TRUE(Has(lines, "\"12345 rpm\""));
    EXPECT_TRUE(Has(lines, "\"1.50 km\""));
    EXPECT_TRUE(Has(lines, "\"  0'15\\x22\"")) << "30 s under a zoom of 2";
    EXPECT_EQ(Count(lines, " rpm"), 1) << "File 2's column only when it is loaded";
}

TEST_F(ReadOuts, ThePanelsSlideInWhenTheViewRests) {
    activityCount = 150;
    for (int frame = 0; frame < 25; frame++) {
        DrawSummaryPanel();
        DrawMemoPanel();
    }
    EXPECT_EQ(summaryFade, 20);
    EXPECT_EQ(memoFade, 20);
    EXPECT_EQ(Record(DrawSummaryPanel), "");
    activityCount = 72;
    DrawSummaryPanel();
    DrawMemoPanel();
    EXPECT_EQ(summaryFade, 19);
    EXPECT_EQ(memoFade, 20);
    activityCount = 69;
    DrawMemoPanel();
    EXPECT_EQ(memoFade, 19);
    Memo_view = 0;
    DrawMemoPanel();
    EXPECT_EQ(memoFade, 20);
}

TEST_F(ReadOuts, TheMemoTypesOneCharacterAFrameWithDoubleByteOnesAndNewRows) {
    strcpy(memoText[0], "a\x82\xA0\r\nb");
    memoFade = 20;
    activityCount = 0;
    const std::string first = Record(DrawMemoPanel);
    EXPECT_TRUE(Has(first, "\"Tire Size F:1920mm R:2010mm\""));
    EXPECT_TRUE(Has(first, "\"Final 15-43(2.867)\""));
    EXPECT_TRUE(Has(first, "\"a\""));
    EXPECT_EQ(activityCount, 2);
    EXPECT_TRUE(Has(Record(DrawMemoPanel), "\"\\x82\\xA0\""));
    EXPECT_EQ(memoCursor[0].column, 3);
    DrawMemoPanel();
    EXPECT_EQ(memoCursor[0].row, 3);
    EXPECT_TRUE(Has(Record(DrawMemoPanel), "DrawTextAt 8 " + std::to_string((fontSize + 1) * 3 + 4)));
    activityCount = 0;
    DrawMemoPanel();
    EXPECT_EQ(activityCount, 0) << "typed to its end";
}

TEST_F(ReadOuts, TheMemoWrapsAfterTwentyNineCellsAndStopsAtTheLastRow) {
    std::fill(memoText[0], memoText[0] + 189, 'm');
    memoFade = 20;
    for (int frame = 0; frame < 300; frame++) {
        activityCount = 60;
        DrawMemoPanel();
    }
    EXPECT_EQ(memoCursor[0].index, 189);
    EXPECT_EQ(memoCursor[0].row, 2 + 188 / 29);
    std::fill(memoText[0], memoText[0] + 189, '\r');
    memoFade = 20;
    for (int frame = 0; frame < 300; frame++) DrawMemoPanel();
    EXPECT_EQ(memoCursor[0].row, 10);
}

TEST_F(ReadOuts, AMemoThatEndsInsideACharacterIsTypedToItsLastByte) {
    strcpy(memoText[0], "\x82");
    memoFade = 20;
    activityCount = 0;
    for (int frame = 0; frame < 5; frame++) DrawMemoPanel();
    EXPECT_EQ(memoCursor[0].index, 1);
}

TEST_F(ReadOuts, ACursorBeyondTheEndOfAShorterFileReadsItsLastSample) {
    MakeLog(1, 100);
    cursorPos[1] = 1000000;
    EXPECT_EQ(MouseSample(1), 100);
    EXPECT_EQ(BaseSample(1), 100);
    DrawValueReadout();
    DrawRuler();
    DrawLapList();
    EXPECT_EQ(currentLap[1], 1);
}
