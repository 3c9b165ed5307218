#include "views/course_map.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>

#include "app/frame_loop.h"
#include "draw/draw_layer.h"
#include "draw/recorder.h"
#include "draw/surface.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/derived_channels.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/test_folder.h"
#include "views/course_file.h"
#include "views/course_image.h"

namespace {

// A square course of 40 points and one log of three laps of 1000 samples at a steady 36.0 km/h.
class CourseMap : public testing::Test {
  protected:
    TestFolder folder;

    void SetUp() override {
        DefaultScript();
        LoadDefaults();
        std::string course;
        for (int i = 0; i < 40; i++) {
            const int along = i % 10 * 20 - 100, side = i / 10;
            const int x = side == 0 ? along : side == 1 ? 100 : side == 2 ? -along : -100;
            const int y = side == 0 ? -100 : side == 1 ? along : side == 2 ? 100 : -along;
            course += std::to_string(x) + "," + std::to_string(y) + "\n";
        }
        folder.Write("sorrel.crs", course);
        SetProgramFolder((folder.Path() + "/").c_str());
        SetVideoMode(32, 1024, 768, 60);
        ASSERT_EQ(InitDrawing(), 0);
        RebuildResources();
        clientWidth = 1024;
        clientHeight = 768;
        courseCenterX = 600;
        courseCenterY = 400;
        courseZoom = 1.0f;
        MakeLog(0);
        slotInUse[0] = 1;
    }
    void TearDown() override { ShutDownDrawing(); }

    static void MakeLog(int slot) {
        EnsureChannels(slot, 3016);
        ClearChannels(slot, 3016);
        slotInUse[slot] = 1;
        sampleCount[slot] = 3000;
        lapCount[slot] = 3;
        lapStart[slot][1] = 1000;
        lapStart[slot][2] = 2000;
        FillLapEnd(slot);
        for (int i = 1; i < 3016; i++) {
            VFW[slot][i] = VRW[slot][i] = 360;
            lapDistance[slot][i] = i % 1000 == 0 ? 0 : lapDistance[slot][i - 1] + 360;
        }
        lapLength[slot][1] = 999 * 360;
        lapLength[slot][2] = lapLength[slot][3] = 1000 * 360;
        currentLap[slot] = 1;
    }
    // The colours of the dots of the selector at hand, in the order of the points; no sector boundaries stand.
    static std::vector<uint32_t> DotColours() {
        std::string lines;
        RecordOperations(&lines);
        RedrawCourseImage(0);
        RecordOperations(nullptr);
        std::vector<uint32_t> colours;
        std::istringstream text(lines);
        for (std::string line; std::getline(text, line);) {
            int x, y, radius;
            unsigned colour;
            if (std::sscanf(line.c_str(), "DrawCircle %d %d %d #%X", &x, &y, &radius, &colour) == 4 && radius == 4) colours.push_back(colour);
        }
        return colours;
    }
    static uint32_t PixelAt(int point) {
        const Surface image = ImageSurface(courseImage);
        const int x = static_cast<int>(courseX[point] * courseScale + courseHalf), y = static_cast<int>(courseY[point] * courseScale + courseHalf);
        return image.pixels[y * image.pitch + x] & 0xFFFFFF;
    }
};

template <class Draw>
std::string Record(Draw draw) {
    std::string lines;
    RecordOperations(&lines);
    draw();
    RecordOperations(nullptr);
    return lines;
}

int Count(const std::string& lines, const std::string& text) {
    int count = 0;
    for (size_t at = lines.find(text); at != std::string::npos; at = lines.find(text, at + 1)) count++;
    return count;
}

}  // namespace

TEST_F(CourseMap, APointIsTheSampleWithItsShareOfTheLapsDistance) {
    EXPECT_EQ(CoursePointToSample(0, 20), 500);
    currentLap[0] = 2;
    EXPECT_EQ(CoursePointToSample(0, 20), 1500);
    EXPECT_EQ(CoursePointToSample(0, 0), 1000);
}

TEST_F(CourseMap, APointThatTheLapDoesNotReachFallsBackOnItsNumber) {
    lapLength[0][1] = 40 * 1000 * 360;
    EXPECT_EQ(CoursePointToSample(0, 20), 20);
    EXPECT_EQ(CoursePointToSample(0, -3), 0);
}

TEST_F(CourseMap, WithTwoMarksPerLapTheGroupOfTheCurrentLapCounts) {
    MarksPerLap[0] = 2;
    currentLap[0] = 2;
    for (int i = 1001; i < 2000; i++) lapDistance[0][i] = lapDistance[0][i - 1] + 360;
    EXPECT_EQ(CurrentLapGroup(0), 1);
    EXPECT_EQ(CurrentLapLength(0), 1999u * 360);
    EXPECT_EQ(CoursePointToSample(0, 10), 500);
}

TEST_F(CourseMap, EverySelectorColoursTheDotsOfItsChannel) {
    const struct { int selector; const char* caption; } rows[] = {
        {1, "File 1:Ne"},    {2, "File 1:Th"},   {3, "File 1:VFW"},   {4, "File 1:VRW"},    {5, "File 1:FSUS"},   {6, "File 1:RSUS"}, {7, "File 1:LAF1"},
        {8, "File 1:LAF2"},  {9, "File 1:VB"},   {10, "File 1:AUX1"}, {11, "File 1:AUX2"},  {129, "File 1:Slip%"}, {130, "File 1:GearPos"}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.selector);
        courseColorChannel = row.selector;
        RedrawCourseImage(0);
        EXPECT_STREQ(courseCaption, row.caption);
        EXPECT_EQ(courseColorChannel, row.selector);
    }
    Debug = 1;
    courseColorChannel = 131;
    RedrawCourseImage(0);
    EXPECT_STREQ(courseCaption, "File 1:dVFW");
    courseColorChannel = 132;
    RedrawCourseImage(0);
    EXPECT_STREQ(courseCaption, "File 1:dVRW");
}

TEST_F(CourseMap, AChannelIsScaledBetweenTheEndsOfItsGrid) {
    GraphGrid_min[chVFW] = 160;
    GraphGrid_max[chVFW] = 560;
    courseColorChannel = 3;
    const std::string lines = Record([] { RedrawCourseImage(0); });
    char color[16];
    std::snprintf(color, sizeof color, "#%06X", ColorRamp[200 * 255 / 400]);
    EXPECT_GE(Count(lines, std::string(" 4 ") + color), 38) << lines.substr(0, 400);
}

TEST_F(CourseMap, EqualEndsOfAGridGiveTheFirstColour) {
    GraphGrid_min[chVFW] = GraphGrid_max[chVFW] = 360;
    courseColorChannel = 3;
    RedrawCourseImage(0);
    EXPECT_STREQ(courseCaption, "File 1:VFW");
}

TEST_F(CourseMap, Selector12KeepsTheColourForOnePointAndCarriesOnAsSlip) {
    courseColorChannel = 12;
    const std::string lines = Record([] { RedrawCourseImage(0); });
    EXPECT_EQ(courseColorChannel, 129);
    char first[16];
    std::snprintf(first, sizeof first, " 4 #%06X", ColorRamp[0]);
    EXPECT_EQ(Count(lines, first), 1) << "point 0 keeps the colour before";
}

TEST_F(CourseMap, UnlistedSelectorsBecomeNoneAndRisesNeedDebug) {
    for (int selector : {13, 128, 133, 254, 256, 100000}) {
        courseColorChannel = selector;
        RedrawCourseImage(0);
        EXPECT_EQ(courseColorChannel, 0) << selector;
    }
    courseColorChannel = 131;
    RedrawCourseImage(0);
    EXPECT_EQ(courseColorChannel, 255);
    EXPECT_STREQ(courseCaption, "");
}

TEST_F(CourseMap, SectorDotsAreDrawnWithOneMarkPerLapOnly) {
    sectorMark[0][1] = 10;
    sectorMark[0][2] = 20;
    EXPECT_EQ(Count(Record([] { RedrawCourseImage(1); }), " 6 #FFFF00"), 2);
    for (int marks : {2, 3}) {
        MarksPerLap[0] = marks;
        EXPECT_EQ(Count(Record([] { RedrawCourseImage(1); }), " 6 #FFFF00"), 0) << marks;
    }
}

TEST_F(CourseMap, TheUniformColourIsYellowInTheDarkSchemeAndMagentaInTheLightOne) {
    RedrawCourseImage(1);
    EXPECT_EQ(PixelAt(0), 0xFFFF00u);
    colortype = 1;
    RedrawCourseImage(1);
    EXPECT_EQ(PixelAt(0), 0xFF00FFu);
}

TEST_F(CourseMap, WithoutAnAlphaChannelTheDotsAndThePanelAreAdded) {
    AllowAlphaImages(false);
    RebuildResources();
    AllowAlphaImages(true);
    EXPECT_EQ(courseImageNoAlpha, 1);
    EXPECT_GE(Count(Record([] { RedrawCourseImage(1); }), "SetBlend 2 127"), 1);
    EXPECT_GE(Count(Record(DrawCourseMap), "SetBlend 2 255"), 1);
}

TEST_F(CourseMap, AMarkerStandsAtTheRunsShareOfTheLap) {
    cursorPos[0] = 50000;
    const std::string lines = Record(DrawCourseMap);
    const int index = static_cast<int>(40.0f * (static_cast<float>(lapDistance[0][500]) / static_cast<float>(lapLength[0][1])));
    const int x = 600 + static_cast<int>(courseX[index] * 0.96f), y = 400 + static_cast<int>(courseY[index] * 0.96f);
    const auto box = [&](int half) {
        return "DrawBoxOutline " + std::to_string(x - half) + " " + std::to_string(y - half) + " " + std::to_string(x + half) + " " +
               std::to_string(y + half) + " ";
    };
    EXPECT_EQ(Count(lines, box(8)), 1) << lines;
    EXPECT_EQ(Count(lines, box(6)), 1) << "File 1's inner box, at every zoom";
}

TEST_F(CourseMap, ACursorBeyondTheLapsDistanceSuppressesItsMarkerAndThoseBehind) {
    MakeLog(1);
    cursorPos[1] = 50000;
    lapLength[0][1] = 100;
    cursorPos[0] = 50000;
    EXPECT_EQ(Count(Record(DrawCourseMap), "DrawBoxOutline"), 0);
    lapLength[0][1] = 999 * 360;
    EXPECT_EQ(Count(Record(DrawCourseMap), "DrawBoxOutline"), 4);
}

TEST_F(CourseMap, ThePanelIsKeptInTheWindowWithoutMovingItsSavedPlace) {
    courseCenterX = 5000;
    courseCenterY = -900;
    EXPECT_EQ(Count(Record(DrawCourseMap), "DrawImageRotated " + std::to_string(clientWidth - 256) + ".5 256.5 256 256 courseImage 1 1 0"), 1);
    EXPECT_EQ(courseCenterX, 5000);
}

TEST_F(CourseMap, TheBackdropComesAboveThreeQuartersAndTheHighlightUnderTheMouse) {
    for (int frame = 0; frame < 110; frame++) DrawCourseMap();
    EXPECT_EQ(Count(Record(DrawCourseMap), "SetBlend 19 200"), 1);
    courseZoom = 0.75f;
    for (int frame = 0; frame < 110; frame++) DrawCourseMap();
    EXPECT_EQ(Count(Record(DrawCourseMap), "SetBlend 19"), 0);
    courseHover = 1;
    for (int frame = 0; frame < 40; frame++) DrawCourseMap();
    EXPECT_EQ(Count(Record(DrawCourseMap), "SetBlend 1 64"), 1);
}

TEST_F(CourseMap, TheColouringFollowsTheLapUnlessAButtonIsDown) {
    courseColorChannel = 3;
    DrawCourseMap();
    EXPECT_EQ(Count(Record(DrawCourseMap), "DrawCircle"), 0) << "redrawn once for the lap";
    currentLap[0] = 2;
    mouseButtons = 1;
    EXPECT_EQ(Count(Record(DrawCourseMap), "DrawCircle"), 0);
    mouseButtons = 0;
    EXPECT_GT(Count(Record(DrawCourseMap), "DrawCircle"), 40);
}

TEST_F(CourseMap, HitsAreTakenWithoutTheScaleOfThePicture) {
    mouseX = courseCenterX + static_cast<int>(courseX[15]);
    mouseY = courseCenterY + static_cast<int>(courseY[15]);
    EXPECT_EQ(FindCoursePoint(), 15);
    mouseX = courseCenterX;
    mouseY = courseCenterY;
    EXPECT_EQ(FindCoursePoint(), -1);
}

TEST_F(CourseMap, ALeftPressOnAPointSendsTheMovingFilesThereAndSparesTheCursor) {
    MakeLog(1);
    fileMoveOn[1] = 0;
    mouseButtons = 1;
    mouseX = courseCenterX + static_cast<int>(courseX[20]);
    mouseY = courseCenterY + static_cast<int>(courseY[20]);
    HoldCourseLeft(0, 0);
    EXPECT_EQ(jumpTarget[0], 500);
    EXPECT_EQ(jumpTarget[1], -1);
    EXPECT_EQ(mouseButtons, 0u);
    EXPECT_EQ(mouseX, BaseLineX());
}

TEST_F(CourseMap, ALeftPressBesideThePointsMovesThePanel) {
    mouseButtons = 1;
    mouseX = courseCenterX;
    mouseY = courseCenterY;
    HoldCourseLeft(7, -3);
    EXPECT_EQ(courseCenterX, 607);
    EXPECT_EQ(courseCenterY, 397);
}

TEST_F(CourseMap, ARightPressOnAPointShowsTimeAndLengthAndBesideItZooms) {
    MakeLog(1);
    cursorPos[0] = 10000;
    mouseButtons = 2;
    mouseX = courseCenterX + static_cast<int>(courseX[20]);
    mouseY = courseCenterY + static_cast<int>(courseY[20]);
    const std::string lines = Record(HoldCourseRight);
    EXPECT_EQ(popupWanted, 1);
    EXPECT_EQ(Count(lines, "\"  2.00s       20m\""), 1) << lines;
    EXPECT_EQ(Count(lines, "\"  2.50s       25m\""), 1);
    mouseX = courseCenterX;
    mouseY = courseCenterY;
    HoldCourseRight();
    mouseY -= 100;
    HoldCourseRight();
    EXPECT_FLOAT_EQ(courseZoom, 1.05f);
    for (int pass = 0; pass < 300; pass++) {
        mouseY -= 50;
        HoldCourseRight();
    }
    EXPECT_EQ(courseZoom, 2.0f);
}

TEST_F(CourseMap, AClickOnAPointWithoutARunMovesNoCursor) {
    ResetSlot(0);
    mouseButtons = 1;
    mouseX = courseCenterX + static_cast<int>(courseX[20]);
    mouseY = courseCenterY + static_cast<int>(courseY[20]);
    EXPECT_EQ(CourseClick(), 1);
    EXPECT_EQ(cursorPos[0], 0);
    mouseButtons = 2;
    mouseX = courseCenterX + static_cast<int>(courseX[20]);
    EXPECT_EQ(Count(Record([] { CourseClick(); }), "ClearImageBlack coursePopup"), 1);
}

TEST_F(CourseMap, SevenPicturesAreSavedUnderTheNameCutAtItsLastPoint) {
    QueueAnswer(Answer::path, folder.Path("my.map.bmp"));
    courseColorChannel = 4;
    SaveCourseMapImages();
    for (const char* suffix : {"_ne", "_th", "_vfw", "_fsus", "_rsus", "_Slip", "_gear"})
        EXPECT_TRUE(std::filesystem::exists(folder.path / ("my.map" + std::string(suffix) + ".bmp"))) << suffix;
    EXPECT_EQ(courseColorChannel, 4);
    ASSERT_FALSE(shown.empty());
    EXPECT_EQ(shown.back().text, "Course Map was saved.");
    EXPECT_EQ(shown.back().title, "Saved");
}

TEST_F(CourseMap, AFailingPictureSaysTheWordsAndLeavesNoHalfFile) {
    std::filesystem::create_directories(folder.path / "map_th.bmp");
    QueueAnswer(Answer::path, folder.Path("map.bmp"));
    SaveCourseMapImages();
    EXPECT_EQ(shown.back().text, "failed to save !!");
    EXPECT_EQ(shown.back().title, "Error !!");
    EXPECT_TRUE(std::filesystem::exists(folder.path / "map_ne.bmp"));
    EXPECT_FALSE(std::filesystem::exists(folder.path / "map_vfw.bmp"));
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder.path)) files += entry.is_regular_file();
    EXPECT_EQ(files, 2) << "the course and the first picture";
}

TEST_F(CourseMap, ACancelledSaveChangesNothing) {
    SaveCourseMapImages();
    EXPECT_EQ(shown.back().kind, "save");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path), {}), 1);
}

TEST_F(CourseMap, FuelIsCountedByPulsesPerLap) {
    showChannel[0][chAUX1] = 1;
    for (int sample : {100, 200, 1500, 2500}) AUX1[0][sample] = 251;
    AUX1[0][700] = 250;
    ShowFuelUsed();
    EXPECT_EQ(shown.back().title, "Fuel used");
    EXPECT_EQ(shown.back().text,
              "total -     4 cc  :      0 cc\n\nlap 0  -     2 cc  :     0 cc\nlap 1  -     1 cc  :     0 cc\nlap 2  -     1 cc  :     0 cc\n");
    showChannel[0][chAUX1] = 0;
    ShowFuelUsed();
    EXPECT_EQ(shown.back().text.find("total -     0 cc"), 0u);
}

TEST_F(CourseMap, TheImageIsOutlineThenDotsThenTheFinishPoint) {
    const std::string lines = Record([] { RedrawCourseImage(1); });
    std::vector<std::string> kinds;  // of following operations, equal neighbours told once
    std::istringstream text(lines);
    for (std::string line; std::getline(text, line);) {
        int x, y, radius;
        if (std::sscanf(line.c_str(), "DrawCircle %d %d %d", &x, &y, &radius) == 3) line = "circles " + std::to_string(radius);
        if (kinds.empty() || kinds.back() != line) kinds.push_back(line);
    }
    EXPECT_EQ(kinds, (std::vector<std::string>{"SetDrawTarget courseImage", "SetBlend 0 255", "ClearImageBlack courseImage", "circles 6",
                                               "SetBlend 17 127", "circles 4", "SetBlend 0 255", "circles 7", "SetDrawTarget -2"}))
        << lines;
    EXPECT_EQ(Count(lines, " 6 #000000 1 1"), 41) << "the closing point too";
    EXPECT_EQ(Count(lines, " 4 #FFFF00 1 1"), 41);
}

TEST_F(CourseMap, SlipsAreColouredFromMinus15To15Percent) {
    struct Case { int front, rear, index; };
    for (const Case& c : {Case{50, 300, 0}, Case{1000, 1000, 127}, Case{1000, 1100, 212}, Case{1000, 900, 42}, Case{1000, 2000, 255},
                          Case{1000, 0, 0}, Case{51, 51, 127}}) {
        SCOPED_TRACE(c.rear);
        std::fill(VFW[0].begin(), VFW[0].end(), static_cast<uint16_t>(c.front));
        std::fill(VRW[0].begin(), VRW[0].end(), static_cast<uint16_t>(c.rear));
        courseColorChannel = 129;
        EXPECT_EQ(DotColours(), std::vector<uint32_t>(41, ColorRamp[c.index]));
    }
}

TEST_F(CourseMap, ThrottleIsInWholePercentAndAnIndexBelowTenIsGrey) {
    GraphGrid_min[chTH] = 0;
    GraphGrid_max[chTH] = 100;
    struct Case { int tenths, index; };
    for (const Case& c : {Case{39, 0}, Case{40, 10}, Case{500, 127}, Case{1000, 255}, Case{2000, 255}}) {
        SCOPED_TRACE(c.tenths);
        std::fill(TH[0].begin(), TH[0].end(), c.tenths);
        courseColorChannel = 2;
        EXPECT_EQ(DotColours(), std::vector<uint32_t>(41, ColorRamp[c.index]));
    }
}

TEST_F(CourseMap, EachGearHasItsColourAndAChangeLeavesAGreyDot) {
    constexpr int indices[] = {10, 61, 83, 163, 199, 255};  // of gears 1 to 6
    for (int i = 500; i < 3000; i++) Ne[0][i] = 10000;      // before, the bike stands: gear 0
    courseColorChannel = 130;
    for (int gear = 1; gear <= 6; gear++) {
        SCOPED_TRACE(gear);
        for (int k = 0; k < 6; k++) gearLimit[0][k] = k < gear ? 2147483647 : 0;
        ASSERT_EQ(GearPosition(0, 600), gear);
        const std::vector<uint32_t> colours = DotColours();
        for (int point = 0; point <= 20; point++) EXPECT_EQ(colours[point], ColorRamp[0]) << point;
        EXPECT_EQ(colours[21], ColorRamp[indices[gear - 1]]);
    }
}

TEST_F(CourseMap, RisesCompareHalfASecondAheadWithHalfASecondBehind) {
    Debug = 1;
    for (int i = 0; i < 3000; i++) VFW[0][i] = static_cast<uint16_t>(i < 500 ? 300 : 400);
    courseColorChannel = 131;
    const int sample = CoursePointToSample(0, 20);
    ASSERT_EQ(sample, 500);
    const std::vector<uint32_t> colours = DotColours();
    // ahead 100 of 400; behind the sample itself of 400 and 99 of 300
    EXPECT_EQ(colours[20], ColorRamp[(40000 / 100 - 30100 / 100) * 128 / 200 + 128]);
    EXPECT_EQ(colours[5], ColorRamp[128]);
}

TEST_F(CourseMap, ARiseOfIndexZeroIsShownAsTwo) {
    Debug = 1;
    for (int i = 0; i < 3000; i++) VRW[0][i] = static_cast<uint16_t>(i < 500 ? 1000 : 797);
    courseColorChannel = 132;
    EXPECT_EQ((79700 / 100 - 99797 / 100) * 128 / 200 + 128, 0);
    EXPECT_EQ(DotColours()[20], ColorRamp[2]);
}

TEST_F(CourseMap, TheGradientRunsAlongTheTrack) {
    courseColorChannel = 255;
    const std::vector<uint32_t> colours = DotColours();
    ASSERT_EQ(colours.size(), 41u);
    for (int point = 0; point <= 40; point++) EXPECT_EQ(colours[point], ColorRamp[point * 255 / 40]);
    EXPECT_STREQ(courseCaption, "");
}

TEST_F(CourseMap, TheSecondFileColoursTheDotsToo) {
    MakeLog(1);
    courseColorFile = 1;
    courseColorChannel = 1;
    RedrawCourseImage(0);
    EXPECT_STREQ(courseCaption, "File 2:Ne");
}

TEST_F(CourseMap, ALapOfZeroLengthStandsAtTheFinishLine) {
    lapLength[0][1] = 0;
    lapStart[0][1] = 0;
    cursorPos[0] = 50000;
    EXPECT_EQ(CoursePointToSample(0, 20), 0);
    const std::string lines = Record(DrawCourseMap);
    const int x = 600 + static_cast<int>(courseX[0] * 0.96f), y = 400 + static_cast<int>(courseY[0] * 0.96f);
    EXPECT_EQ(Count(lines, "DrawBoxOutline " + std::to_string(x - 8) + " " + std::to_string(y - 8) + " "), 1) << lines;
    courseColorChannel = 1;
    RedrawCourseImage(0);
}

TEST_F(CourseMap, MarksBehindTheLogAndADistanceOutOfReachEndTheSearchAtItsLastSample) {
    lapStart[0][1] = lapStart[0][2] = 4000000000u;
    lapLength[0][1] = 4000000000u;
    EXPECT_EQ(CoursePointToSample(0, 40), 40);
    courseColorChannel = 3;
    RedrawCourseImage(0);
    lapStart[0][0] = 4000000000u;
    EXPECT_EQ(CoursePointToSample(0, 30), 30);
}

TEST_F(CourseMap, InALogOf511LapsTheLastGroupOfMarksIsFound) {
    lapCount[0] = 511;
    for (int k = 1; k < 511; k++) lapStart[0][k] = static_cast<uint32_t>(k * 5);
    FillLapEnd(0);
    for (int marks : {1, 2, 3}) {
        SCOPED_TRACE(marks);
        MarksPerLap[0] = marks;
        currentLap[0] = 511;
        EXPECT_GE(CoursePointToSample(0, 40), 0);
        DrawCourseMap();
        courseColorChannel = 1;
        RedrawCourseImage(0);
    }
}

TEST_F(CourseMap, WithoutItsImageTheMapDrawsNothingAndSaysNothing) {
    courseImage = noHandle;
    EXPECT_EQ(Record([] { RedrawCourseImage(0); }), "");
    DrawCourseMap();
    EXPECT_TRUE(shown.empty());
}

TEST_F(CourseMap, AnImageThatCannotBeMadeIsToldWithDebugOnly) {
    AllowImages(false);
    RebuildResources();
    EXPECT_EQ(courseImage, noHandle);
    EXPECT_TRUE(shown.empty());
    Debug = 1;
    RebuildResources();
    AllowImages(true);
    int told = 0;
    for (const Shown& entry : shown) told += entry.text == "Memory err cgh00" && entry.title == "ZRKA";
    EXPECT_EQ(told, 1);
}

TEST_F(CourseMap, ASavedPictureCarriesItsNameAndTheLapsTime) {
    QueueAnswer(Answer::path, folder.Path("my.map.bmp"));
    currentLap[0] = 2;
    const std::string lines = Record(SaveCourseMapImages);
    const std::string right = std::to_string(512 - 9 * fontSize);
    for (const char* suffix : {"_ne", "_th", "_vfw", "_fsus", "_rsus", "_Slip", "_gear"})
        EXPECT_EQ(Count(lines, "DrawTextAt " + right + " 0 \"my.map" + suffix + "\""), 1) << suffix << lines.substr(lines.size() - 900);
    EXPECT_EQ(Count(lines, "\"00'05.00\""), 7);
    EXPECT_EQ(std::string(bmpFolder) + "my.map.bmp", folder.Path("my.map.bmp"));
}

TEST_F(CourseMap, InTheFirstLapASavedPictureShowsNoTime) {
    QueueAnswer(Answer::path, folder.Path("map"));
    EXPECT_EQ(Count(Record(SaveCourseMapImages), "\"00'00.00\""), 7);
    EXPECT_TRUE(std::filesystem::exists(folder.path / "map_ne.bmp"));
}

TEST_F(CourseMap, FuelOfTwoFilesIsToldForThirtyLapsAtMost) {
    MakeLog(1);
    showChannel[0][chAUX1] = showChannel[1][chAUX1] = 1;
    lapCount[1] = 60;
    for (int k = 1; k < 60; k++) lapStart[1][k] = static_cast<uint32_t>(k * 40);
    FillLapEnd(1);
    for (int i = 0; i < 2400; i += 40) AUX1[1][i + 10] = 300;
    ShowFuelUsed();
    const std::string text = shown.back().text;
    EXPECT_EQ(text.find("total -     0 cc  :     60 cc\n\nlap 0  -     0 cc  :     1 cc\n"), 0u);
    EXPECT_EQ(Count(text, "lap "), 30);
    EXPECT_EQ(Count(text, "lap 29  -     0 cc  :     1 cc\n"), 1);
}

TEST_F(CourseMap, MarksThatDoNotRiseDoNotHoldUpTheFuelOfTheLaps) {
    showChannel[0][chAUX1] = 1;
    lapStart[0][1] = lapStart[0][2] = 1000;
    AUX1[0][2500] = 300;
    ShowFuelUsed();
    EXPECT_EQ(Count(shown.back().text, "lap 2  -     1 cc"), 1) << shown.back().text;
}
