// The table of printable values: forms, names, and the lines of a slot.
#include "cli/values.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>

#include "analysis/lap_stats.h"
#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/cli/cli_run.h"
#include "views/course_file.h"

namespace {

struct CliValues : testing::Test {
    void SetUp() override { LoadDefaults(); }
};

std::string Line(const char* name) {
    const Value* value = FindValue(name);
    std::string line;
    if (value) AppendValueLine(line, *value);
    return line;
}

TEST_F(CliValues, IntegersAreDecimal) {
    scrollY = -7;
    EXPECT_EQ(Line("scrollY"), "scrollY -7\n");
}

TEST_F(CliValues, DoublesAndFloatsHaveSeventeenDigits) {
    timeScale = 0.1;
    neFactor[1] = 0.1f;
    EXPECT_EQ(Line("timeScale"), "timeScale 0.10000000000000001\n");
    EXPECT_EQ(Line("neFactor"), "neFactor 1 0.10000000149011612 1\n");
    EXPECT_EQ(Line("viewZoom"), "viewZoom 50\n");
}

TEST_F(CliValues, TextsAreQuotedWithEscapes) {
    std::string quoted;
    AppendQuoted(quoted, std::string_view("a \"b\"\\\x01~\x7F\x83\x4C\0z", 12));
    EXPECT_EQ(quoted, R"("a \x22b\x22\x5C\x01~\x7F\x83L\x00")");
}

TEST_F(CliValues, TextsEndAtTheirFirstZeroByte) {
    strcpy(memoText[0], "dry");
    EXPECT_EQ(Line("memoText"), "memoText \"dry\" \"\" \"\"\n");
}

TEST_F(CliValues, ArraysOfSlotsAreOneLine) {
    cursorPos[2] = 5;
    titleRect[1][3] = 9;
    EXPECT_EQ(Line("cursorPos"), "cursorPos 0 0 5\n");
    EXPECT_EQ(Line("titleRect"), "titleRect 0 0 0 0 0 0 0 9 0 0 0 0\n");
    EXPECT_EQ(Line("slotInUse"), "slotInUse 1 0 0 0\n");
}

TEST_F(CliValues, LapTablesEndWithTheirLastUsedEntries) {
    lapCount[0] = 2;
    lapStart[0][1] = 5;
    sampleCount[0] = 9;
    FillLapEnd(0);
    lapLength[0][2] = 4;
    std::string text;
    AppendSlotText(text, 0);
    EXPECT_NE(text.find("\nlapStart 0 5 9 9 9\nlapLength 0 0 4\n"), std::string::npos) << text;
}

TEST_F(CliValues, TheCourseEndsWithItsClosingPointAndBoundariesAreARowPerFile) {
    coursePointCount = 2;
    courseX[0] = courseX[2] = 1.5f;
    courseX[1] = -3;
    sectorMark[1][1] = 40;
    EXPECT_EQ(Line("courseX"), "courseX 1.5 -3 1.5\n");
    EXPECT_EQ(Line("courseLen"), "courseLen 0 0 0\n");
    EXPECT_EQ(Line("sectorMark"), "sectorMark 0 5000 5000 5000 5000 5000 5000 5000 5000 0 40 5000 5000 5000 5000 5000 5000 5000 "
                                  "0 5000 5000 5000 5000 5000 5000 5000 5000\n");
    EXPECT_EQ(Line("courseCaption"), "courseCaption \"\"\n");
}

TEST_F(CliValues, EveryFieldOfTheLapStatisticsHasItsRows) {
    lapStats[0].maxVFW[1] = 2500;
    lapStats[0].maxVFWAt[1] = 77;
    lapStats[1].minSlip[0] = -1.5f;
    EXPECT_EQ(Line("maxVFW").rfind("maxVFW 0 2500 0 ", 0), 0u);
    EXPECT_EQ(Line("maxVFW_at").rfind("maxVFW_at 0 77 0 ", 0), 0u);
    const std::string slips = Line("minSlip");
    EXPECT_EQ(std::count(slips.begin(), slips.end(), ' '), 3 * lapTableSize);
    EXPECT_NE(slips.find(" -1.5 "), std::string::npos);
    for (const StatColumn& column : statColumns) {
        EXPECT_TRUE(FindValue(column.name)) << column.name;
        EXPECT_EQ(FindValue(std::string(column.name) + "_at") != nullptr, column.at != nullptr) << column.name;
    }
}

TEST_F(CliValues, AnalogCurvesArePairs) {
    analog[1][2].curveX[0] = 100;
    analog[1][2].curveY[0] = -3;
    analog[1][2].slope = 12;
    std::string text;
    AppendSlotText(text, 1);
    EXPECT_NE(text.find("\nanalogSlope 0 0 12 0\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\nanalogCurve2 100 -3 0 0 0 0"), std::string::npos) << text;
}

TEST_F(CliValues, SlotTextHasTheAgreedLinesInTheirOrder) {
    const char* expected =
        "slotInUse fileKind formatVersion sampleCount lapCount timeFactor cursorPos lapViewOffset jumpTarget fileTitle "
        "filePath memoText firmwareText neDivider neRange frontPulses frontTyreMm rearPulses rearTyreMm rearOnGearbox "
        "gearboxPulses frontSprocket rearSprocket MarksPerLap tpsClosedRaw tpsOpenRaw tpsSpan fsusType rsusType "
        "fsusZeroRaw rsusZeroRaw fsusStroke rsusStroke analogType analogSlope analogOffset analogCurve0 analogCurve1 "
        "analogCurve2 analogCurve3 auxDivider lafDivider primaryMain primaryCounter gearMain gearCounter primaryRatio "
        "gearLimit tpsMinSeen tpsMaxSeen fsusMaxSeen rsusMaxSeen channelMax channelMin showChannel lapStart lapLength ";
    for (int slot = 0; slot < fileSlots; slot++) {
        std::string text, names;
        AppendSlotText(text, slot);
        for (size_t at = 0; at < text.size(); at = text.find('\n', at) + 1) names += text.substr(at, text.find(' ', at) - at) + " ";
        std::string wanted = expected;
        if (slot > 0) wanted.erase(wanted.find("firmwareText "), strlen("firmwareText "));
        EXPECT_EQ(names, wanted) << "slot " << slot;
    }
}

TEST_F(CliValues, NamesAreUnique) {
    std::set<std::string> names;
    for (const Value& value : AllValues()) EXPECT_TRUE(names.insert(value.name).second) << value.name;
}

TEST_F(CliValues, EveryValuePrintsOneLineOfItsOwn) {
    for (const Value& value : AllValues()) {
        SCOPED_TRACE(value.name);
        const std::string line = Line(value.name);
        EXPECT_EQ(line.rfind(std::string(value.name) + " ", 0), 0u);
        EXPECT_EQ(LineCount(line), 1);
    }
}

// State of loop, input and read-outs, and the settings by the names that their file uses.
TEST_F(CliValues, TheTableCoversEveryNameAScriptMayAskFor) {
    const char* names =
        "activityCount idleFrame animationPending quitFlag powerState screenWidth screenHeight clientWidth clientHeight "
        "halfWidth halfHeight viewZoom viewZoomGoal timeScale scrollY shortcutOverlayOn shortcutFade scrollBarOn "
        "scrollBarGrow graphPositionOn afMapOn realTimePlayOn mainWindow toolbarWindow rowHeight fontSize lapColumnWidth lapListTop "
        "bodyImage tireImage meterImage needleImage courseImage summaryPanel memoPanel gridStrip labelStrip susImageA "
        "susImageB bigFont smallFont mouseX mouseY mouseButtons wheelNotches lapSteps shiftDown ctrlDown fileMoveOn "
        "jumpTarget lapHover panelHover widgetHover courseHover dragKind zoomDragOn lafDelay lafDelayShow rulerFade "
        "lapChecked lapOrder firstRow sortKey selectState bestLap secondLap bestSector secondSector statPage sectorView lowerFile "
        "afInvert afLow afWidth csvRangePending clientVisible appear histBusy courseDrag playStamp coursePopup popupWanted popupCounter "
        "keepSelection simFront simRear simTireLength "
        "tagSpread nameFade tagValue summaryFade memoFade memoCursor layoutCycle titleRect fileBright fileDim neFactor cursorPos currentLap lapViewOffset LapTimeCentis baseLineX "
        "Data BMP x y x2 y2 zoomed Curse_X Curse_Y Curse_Z MC_X MC_Y MC_Z Meter_X Meter_Y Meter_Z Susgram_X Susgram_Y "
        "Susgram_Z AFmap_YCH AFmap_AFCH AFmap_SWCH AFmap_SWTHS CursolValueMode smoothingNE smoothingVW SmoothingSample "
        "CoursePosSource colortype CourseLayout_on GridFill AnimeMode BodyDisplay SusgramDisplay ExpertMode BaseLinePos "
        "AutoOnOffLoad VFWCopyVRW ModifyFileName CslValWidth SusFilter_n ExclusiveF1Color HD_Display CourseFile_name "
        "VSync LinkRatio Memo_view Blend_mode Color_body Debug AWC LC Finalchg VBerrexp CompressFile CompressFileVer "
        "AllowCompressMode SusVSampleNum Lastcono SmoothingSTD Maxcono ColorMap RTM Shifter SPLT Color_Green Color_Gonly "
        "Color_Red Color_White GraphGrid_min GraphGrid_max GraphGrid_step GraphGrid_disp ";
    for (std::string_view rest = names; !rest.empty(); rest.remove_prefix(rest.find(' ') + 1)) {
        const std::string_view name = rest.substr(0, rest.find(' '));
        EXPECT_NE(FindValue(name), nullptr) << name;
    }
    EXPECT_EQ(FindValue("no such name"), nullptr);
    EXPECT_EQ(FindValue(""), nullptr);
}

}  // namespace
