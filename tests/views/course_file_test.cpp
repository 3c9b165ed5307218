#include "views/course_file.h"

#include <gtest/gtest.h>

#include <cmath>

#include "app/frame_loop.h"
#include "graph/view_state.h"
#include "platform/files.h"
#include "platform/headless/script.h"
#include "run_data/run_store.h"
#include "settings/settings.h"
#include "tests/test_folder.h"

namespace {

class CourseFile : public testing::Test {
  protected:
    TestFolder folder;

    void SetUp() override {
        DefaultScript();
        LoadDefaults();
        SetProgramFolder((folder.Path() + "/").c_str());
    }
    int Load(const std::string& text) {
        folder.Write("sorrel.crs", text);
        return LoadCourse();
    }
    static std::string Points(int count) {
        std::string text;
        for (int i = 0; i < count; i++) text += std::to_string(i % 200) + "," + std::to_string(i / 200) + "\n";
        return text;
    }
};

}  // namespace

TEST_F(CourseFile, AMissingFileIsToldAndTurnsThePanelOff) {
    EXPECT_EQ(LoadCourse(), 0);
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "Not Found Course Layout File !");
    EXPECT_EQ(shown[0].title, "ZRKA");
    EXPECT_EQ(CourseLayout_on, 0);
    EXPECT_EQ(coursePointCount, 1);
}

TEST_F(CourseFile, PointsAreClosedByACopyOfTheFirstWhichCountsInTheLength) {
    EXPECT_EQ(Load("0,0\n3,4\n3,0\n"), 1);
    EXPECT_EQ(coursePointCount, 3);
    EXPECT_EQ(courseX[3], courseX[0]);
    EXPECT_EQ(courseLen[1], 5);
    EXPECT_EQ(courseLen[2], 9);
    EXPECT_EQ(courseLen[3], 12);
    EXPECT_EQ(courseLen[4], 12);
}

TEST_F(CourseFile, LineEndsOfBothKindsAreTaken) {
    Load("1,2\r\n3,4\r\n5,6");
    EXPECT_EQ(coursePointCount, 3);
    EXPECT_EQ(courseY[2], 6);
}

TEST_F(CourseFile, ACoordinateOf1024IsAMarkerAnd1023Point99IsAPoint) {
    Load("0,0\n1,1\n1024.0,0\n2,2\n1023.99,3\n0,1024\n4,4\n");
    EXPECT_EQ(coursePointCount, 5);
    EXPECT_EQ(sectorMark[0][1], 2);
    EXPECT_EQ(sectorMark[2][2], 4);
    EXPECT_EQ(courseX[3], 1023);
}

TEST_F(CourseFile, TheFirstPairIsAlwaysAPointAndAMarkerAtTheEndStandsForTheClosingPoint) {
    Load("2000,1\n1,1\n2,2\n1500,0\n");
    EXPECT_EQ(coursePointCount, 3);
    EXPECT_EQ(courseX[0], 1023);
    EXPECT_EQ(sectorMark[0][1], 3);
}

TEST_F(CourseFile, MarkersInARowAreEachTestedAndTheEighthTakesTheRest) {
    std::string text = "0,0\n";
    for (int k = 0; k < 12; k++) text += "1024,0\n" + std::to_string(k) + ",1\n";
    Load(text + "1024,0\n1024,0\n5,5\n");
    EXPECT_EQ(sectorMark[0][1], 1);
    EXPECT_EQ(sectorMark[0][7], 7);
    EXPECT_EQ(sectorMark[0][8], 13);
}

TEST_F(CourseFile, AnEmptyFileAndAnUnreadableFirstPairGiveOnePoint) {
    for (const char* text : {"", "course\n1,1\n", "1;2\n"}) {
        SCOPED_TRACE(text);
        EXPECT_EQ(Load(text), 1);
        EXPECT_EQ(coursePointCount, 1);
        EXPECT_EQ(courseX[0], 0);
    }
    EXPECT_TRUE(shown.empty());
}

TEST_F(CourseFile, With2999PointsAndAMarkerAllAreKeptAnd3000AreTold) {
    Load(Points(2999) + "1024,0\n");
    EXPECT_EQ(coursePointCount, 2999);
    EXPECT_TRUE(shown.empty());
    Load(Points(3000));
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].text, "CourseData Fail ! #003");
    EXPECT_EQ(coursePointCount, 3000);
    Load(Points(100000));
    EXPECT_EQ(coursePointCount, 3000);
    EXPECT_EQ(courseY[2999], 2999 / 200);
}

TEST_F(CourseFile, NumbersThatAreNoneAndHugeOnesAreHeld) {
    Load("nan,nan\n-1e30,5\ninf,1\n7,-inf\n");
    EXPECT_EQ(courseX[0], 0);
    EXPECT_EQ(courseX[1], -1023);
    EXPECT_EQ(coursePointCount, 3) << "infinity is a marker";
    for (int i = 0; i <= coursePointCount; i++) EXPECT_TRUE(std::isfinite(courseLen[i]));
}

TEST_F(CourseFile, SectorIniGivesBoundariesAndOffsetAndMarkersOfTheCourseOverwriteThem) {
    folder.Write("Sector.ini", "[sorrel.crs]\r\nSec1=2\r\nSec2=3\r\nSec3=0\r\nOffset=1\r\n");
    Load("0,0\n10,0\n10,10\n0,10\n");
    EXPECT_EQ(sectorMark[0][1], 2);
    EXPECT_EQ(sectorMark[1][2], 3);
    EXPECT_EQ(sectorMark[0][3], noSectorMark) << "a stored 0";
    EXPECT_EQ(courseOffset, 1);
    EXPECT_EQ(courseX[0], 10);
    Load("0,0\n10,0\n10,10\n1024,0\n0,10\n");
    EXPECT_EQ(sectorMark[0][1], 3);
    EXPECT_EQ(sectorMark[0][2], 3);
}

TEST_F(CourseFile, SectorIniWithAnyNumbersStaysInTheTable) {
    folder.Write("Sector.ini", "[sorrel.crs]\nSec1=-5\nSec2=99999\nSec3=x\nOffset=-3\n");
    Load("0,0\n10,0\n10,10\n");
    for (int k = 1; k <= 3; k++) EXPECT_EQ(sectorMark[0][k], noSectorMark);
    EXPECT_EQ(courseOffset, 0);
    folder.Write("Sector.ini", "[sorrel.crs]\nOffset=4\n");
    Load("0,0\n10,0\n10,10\n");
    EXPECT_EQ(courseOffset, 0) << "greater than the point count";
}

TEST_F(CourseFile, BoundariesAreWrittenBackAndRemovedOnes) {
    folder.Write("Sector.ini", "[other.crs]\r\nSec1=7\r\n[sorrel.crs]\r\nSec1=2\r\nSec2=3\r\n");
    Load("0,0\n10,0\n10,10\n0,10\n");
    sectorMark[0][1] = 1;
    sectorMark[0][2] = noSectorMark;
    courseOffset = 2;
    SaveSectorIni();
    const std::string text = folder.Read("Sector.ini");
    EXPECT_NE(text.find("[other.crs]\r\nSec1=7"), std::string::npos);
    EXPECT_NE(text.find("Sec1=1"), std::string::npos);
    EXPECT_EQ(text.find("Sec2"), std::string::npos);
    EXPECT_NE(text.find("Offset=2"), std::string::npos);
}

TEST_F(CourseFile, BoundariesOverwrittenByLapMarksAreNeitherWrittenNorUsedAgain) {
    folder.Write("Sector.ini", "[sorrel.crs]\nSec1=2\n");
    Load("0,0\n10,0\n10,10\n0,10\n");
    MarksPerLap[0] = 2;
    OverwriteSectorRow(0, 2);
    SaveSectorIni();
    MarksPerLap[0] = 1;
    SaveSectorIni();
    EXPECT_EQ(folder.Read("Sector.ini"), "[sorrel.crs]\nSec1=2\n");
    RestoreSectorRow(0);
    EXPECT_EQ(sectorMark[0][0], 0);
    EXPECT_EQ(sectorMark[0][1], 2);
}

TEST_F(CourseFile, AnOffsetPastEitherEndOnlyWraps) {
    Load("0,0\n10,0\n10,10\n0,10\n");
    courseOffset = -1;
    ApplyCourseOffset();
    EXPECT_EQ(courseOffset, 4);
    EXPECT_EQ(courseX[0], 0) << "no movement for that press";
    courseOffset = 3;
    ApplyCourseOffset();
    EXPECT_EQ(courseY[0], 10);
    courseOffset = 5;
    ApplyCourseOffset();
    EXPECT_EQ(courseOffset, 0);
    EXPECT_EQ(courseY[0], 10);
}

TEST_F(CourseFile, ACourseOfOnePointIsClosedByItself) {
    EXPECT_EQ(Load("7,-3\n"), 1);
    EXPECT_EQ(coursePointCount, 1);
    EXPECT_EQ(courseX[1], 7);
    EXPECT_EQ(courseY[1], -3);
    EXPECT_EQ(courseLen[1], 0);
    EXPECT_TRUE(shown.empty());
}

TEST_F(CourseFile, LongFilesKeepTheirFirst3000PointsWithEitherLineEnd) {
    for (const char* end : {"\n", "\r\n"}) {
        for (int lines : {2999, 3000, 100000}) {
            SCOPED_TRACE(lines);
            shown.clear();
            std::string text;
            for (int i = 0; i < lines; i++) text += std::to_string(i % 500 - 250) + ".5," + std::to_string(i / 500) + end;
            EXPECT_EQ(Load(text), 1);
            EXPECT_EQ(coursePointCount, std::min(lines, 3000));
            EXPECT_EQ(courseX[2998], 2998 % 500 - 249.5f);
            EXPECT_EQ(courseX[coursePointCount], -250.5f) << "closed by the first point";
            EXPECT_EQ(shown.size(), lines < 3000 ? 0u : 1u);
        }
    }
}

TEST_F(CourseFile, AnOffsetGreaterThanThePointCountBecomesZeroWhenTheFileIsLoaded) {
    for (const char* offset : {"5", "3000", "-1", "2147483647", "99999999999"}) {
        SCOPED_TRACE(offset);
        folder.Write("Sector.ini", std::string("[sorrel.crs]\nOffset=") + offset + "\n");
        Load("0,0\n10,0\n10,10\n0,10\n");
        EXPECT_EQ(courseOffset, 0);
        EXPECT_EQ(courseX[1], 10);
    }
    folder.Write("Sector.ini", "[sorrel.crs]\nOffset=4\n");
    Load("0,0\n10,0\n10,10\n0,10\n");
    EXPECT_EQ(courseOffset, 4) << "the closing point";
}

TEST_F(CourseFile, MarkersFillTheRowsOfAllThreeFiles) {
    Load("0,0\n1024,5\n10,0\n10,10\n5,2000\n0,10\n");
    EXPECT_EQ(coursePointCount, 4);
    for (const auto& row : sectorMark) {
        EXPECT_EQ(row[0], 0);
        EXPECT_EQ(row[1], 1);
        EXPECT_EQ(row[2], 3);
        for (int k = 3; k < sectorMarkSize; k++) EXPECT_EQ(row[k], noSectorMark);
    }
}

TEST_F(CourseFile, ACourseWithoutMarkersLeavesSectorIniInCharge) {
    Load("0,0\n1024,5\n10,0\n10,10\n");
    ASSERT_EQ(sectorMark[0][1], 1);
    folder.Write("Sector.ini", "[sorrel.crs]\nSec1=2\n");
    Load("0,0\n10,0\n10,10\n");
    EXPECT_EQ(sectorMark[0][1], 2);
}

TEST_F(CourseFile, TheSectionIsTheNameCutTo50CharactersOnReadingAndTo49OnWriting) {
    const std::string name = std::string(56, 'c') + ".crs";
    std::snprintf(CourseFile_name, sizeof CourseFile_name, "%s", name.c_str());
    folder.Write(name, "0,0\n10,0\n10,10\n0,10\n");
    folder.Write("Sector.ini", "[" + name.substr(0, 50) + "]\nSec1=2\n[" + name.substr(0, 49) + "]\nSec1=3\n");
    EXPECT_EQ(LoadCourse(), 1);
    EXPECT_EQ(sectorMark[0][1], 2);
    sectorMark[0][1] = 1;
    SaveSectorIni();
    EXPECT_EQ(folder.Read("Sector.ini").find("[" + name.substr(0, 50) + "]\nSec1=2"), 0u);
    EXPECT_NE(folder.Read("Sector.ini").find("[" + name.substr(0, 49) + "]\nSec1=1"), std::string::npos);
}

TEST_F(CourseFile, ABoundaryBehindTheLastPointIsKept) {
    folder.Write("Sector.ini", "[sorrel.crs]\nSec1=4999\nSec2=5001\n");
    Load("0,0\n10,0\n10,10\n");
    EXPECT_EQ(sectorMark[0][1], 4999);
    EXPECT_EQ(sectorMark[0][2], noSectorMark);
}
