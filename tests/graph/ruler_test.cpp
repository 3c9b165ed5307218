// Every line and text of the ruler.
#include "graph/ruler.h"

#include "tests/graph/readouts_fixture.h"

namespace {

struct Ruler : ReadOuts {
    void SetUp() override {
        ReadOuts::SetUp();
        scrollBarOn = 0;
        rulerFade = 20;
    }
};

TEST_F(Ruler, LineArrowsAndTimeStandBetweenCursorLineAndMouse) {
    mouseX = 700;
    const std::string lines = Record(DrawRuler);
    EXPECT_TRUE(Draws(lines, Blend(2, 255) + Line(700, 14, 512, 14, cursorColor) + ShortLine(692, 11, 700, 14, cursorColor) +
                                 ShortLine(520, 11, 512, 14, cursorColor) + Line(700, 14, 700, 768, cursorColor) +
                                 TextF(606 - 20, 0, cursorColor, "smallFont", "4.70sec")));
    EXPECT_EQ(lines.rfind(Blend(2, 255), 0), 0u) << "no range without Shift";
    mouseX = 400;
    EXPECT_TRUE(Draws(Record(DrawRuler), ShortLine(408, 11, 400, 14, cursorColor) + ShortLine(504, 11, 512, 14, cursorColor)));
    colortype = 1;
    EXPECT_TRUE(Draws(Record(DrawRuler), Blend(0, 255) + Line(400, 14, 512, 14, cursorColor)));
}

TEST_F(Ruler, EndsAboveTheScrollBar) {
    scrollBarOn = 1;
    scrollBarGrow = 30;
    EXPECT_TRUE(Draws(Record(DrawRuler), Line(mouseX, 14, mouseX, 768 - 23, cursorColor)));
}

TEST_F(Ruler, TheRangeIsShadedWithShiftAndWhileTheExportWaitsForOne) {
    mouseX = 700;
    const std::string right = Blend(1, 100) + Box(512, 14, 700, 768, cursorColor);
    shiftDown = 1;
    EXPECT_TRUE(Draws(Record(DrawRuler), right));
    shiftDown = 0;
    csvRangePending = 1;
    EXPECT_TRUE(Draws(Record(DrawRuler), right));
    mouseX = 400;
    EXPECT_TRUE(Draws(Record(DrawRuler), Box(400, 14, 512, 768, cursorColor)));
}

TEST_F(Ruler, MinutesStandSixteenPixelsLeftOfTheMiddle) {
    timeScale = 125.0;
    mouseX = 512 + 200;
    EXPECT_TRUE(Draws(Record(DrawRuler), TextF(612 - 16, 0, cursorColor, "smallFont", "2m05s")));
    mouseX = 512 - 200;
    EXPECT_TRUE(Draws(Record(DrawRuler), TextF(412 - 16, 0, cursorColor, "smallFont", "2m05s"))) << "positive on either side";
}

TEST_F(Ruler, TheTimeLeavesTheTimeFactorOut) {
    timeFactor[0] = 0.25;
    viewZoom = 2.0;
    timeScale = 3.0;
    mouseX = 512 + 100;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"0.75sec\""));
}

TEST_F(Ruler, EachLoadedFileHasItsDistances) {
    for (int slot : {1, 2}) MakeLog(slot, 6000);
    for (int slot = 0; slot < fileSlots; slot++)
        for (int i = 1; i < 6016; i++) {
            distFront[slot][i] = distFront[slot][i - 1] + 3600 * (slot + 1);
            distRear[slot][i] = distRear[slot][i - 1] + 7200 * (slot + 1);
        }
    timeFactor[1] = 0.5;
    cursorPos[0] = cursorPos[1] = cursorPos[2] = 100000;
    mouseX = 512 + 20;  // 100 samples
    const std::string lines = Record(DrawRuler);
    const int middle = 522;
    EXPECT_TRUE(Draws(lines, TextF(middle - 136, 0, fileTextColor[0], "smallFont", "(   50m:F  100m:R)")));
    EXPECT_TRUE(Draws(lines, TextF(middle + 40, 0, fileTextColor[1], "smallFont", "(  100m:F  200m:R)"))) << "50 samples of twice the time";
    EXPECT_TRUE(Draws(lines, TextF(middle + 160, 0, fileTextColor[2], "smallFont", "(  150m:F  300m:R)")));
    slotInUse[1] = 0;
    EXPECT_FALSE(Draws(Record(DrawRuler), TextF(middle + 40, 0, fileTextColor[1], "smallFont", "(  100m:F  200m:R)")));
}

TEST_F(Ruler, DistancesEndAtTheEndsOfTheFile) {
    for (int i = 1; i < 6016; i++) distFront[0][i] = distFront[0][i - 1] + 7200;
    cursorPos[0] = 599000;
    mouseX = 1000;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"(   10m:F    0m:R)\""));
    cursorPos[0] = 2000;
    mouseX = 0;
    EXPECT_TRUE(Has(Record(DrawRuler), "\"(  -20m:F    0m:R)\""));
}

TEST_F(Ruler, TicksStandAboutTheMouseByTheTimeScale) {
    const struct { double scale; int span; } rows[] = {{5.0, 80}, {15.0, 26}, {16.0, 250}, {50.0, 80}, {51.0, 470}, {200.0, 120}, {0.1, 4000}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.scale);
        timeScale = row.scale;
        const int span = row.span, half = span / 2, quarter = half / 2, x = mouseX;
        std::string wanted = Blend(2, 80);
        for (int distance : {span, half}) wanted += Line(x - distance, 14, x - distance, 768, gridMajorColor) + Line(x + distance, 14, x + distance, 768, gridMajorColor);
        for (int distance : {half + quarter, quarter}) wanted += Line(x - distance, 14, x - distance, 768, gridMinorColor) + Line(x + distance, 14, x + distance, 768, gridMinorColor);
        EXPECT_TRUE(Draws(Record(DrawRuler), wanted + Blend(0, 255)));
    }
    viewZoom = 2.0;
    timeScale = 5.0;
    EXPECT_TRUE(Draws(Record(DrawRuler), Line(mouseX - 160, 14, mouseX - 160, 768, gridMajorColor)));
    colortype = 1;
    EXPECT_TRUE(Draws(Record(DrawRuler), Blend(1, 20) + Line(mouseX - 160, 14, mouseX - 160, 768, gridMajorColor)));
}

}  // namespace
