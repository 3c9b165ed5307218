#include "views/course_file.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <string>

#include "graph/view_state.h"
#include "platform/boxes.h"
#include "platform/files.h"
#include "run_data/run_store.h"
#include "settings/profile_file.h"
#include "settings/settings.h"
#include "views/course_image.h"

float courseX[courseArraySize], courseY[courseArraySize];
float courseLen[courseArraySize];
int   coursePointCount;
int   sectorMark[fileSlots][sectorMarkSize];

constexpr float   markerFrom = 1024.0f;  // a coordinate from here on makes a pair a sector boundary
constexpr float   farthest   = 1023.0f;
constexpr int64_t courseFileLimit = 16 << 20;
constexpr int     savedMarks = 7;        // boundaries that "Sector.ini" keeps

static float rawX[courseArraySize], rawY[courseArraySize];  // the file's points and the closing one
static int   fileMark[sectorMarkSize];                      // boundaries written in the course file, noSectorMark for none
static bool  rowOverwritten[fileSlots];                     // by lap marks

// --- the course file -------------------------------------------------------------------------------------------------------

struct CoursePair {
    float x, y;
};

// Reads "x,y" at `text` and moves it on: blanks and line ends may stand before a number, nothing before the comma.
static bool TakePair(const char*& text, CoursePair& pair) {
    char* end;
    pair.x = std::strtof(text, &end);
    if (end == text || *end != ',') return false;
    const char* second = end + 1;
    pair.y = std::strtof(second, &end);
    if (end == second) return false;
    text = end;
    return true;
}

static float HoldCoordinate(float value) { return value == value ? std::clamp(value, -farthest, farthest) : 0.0f; }

static bool IsMarker(const CoursePair& pair) { return pair.x >= markerFrom || pair.y >= markerFrom; }

// Fills the raw points and the file's boundaries; returns the number of points. The first pair is always a point, also
// one that cannot be read.
static int ReadPoints(const char* text) {
    int points = 0, mark = 1;
    CoursePair pair{0, 0};
    bool read = TakePair(text, pair);
    if (!read) pair = {0, 0};
    std::fill(std::begin(fileMark), std::end(fileMark), noSectorMark);
    do {
        if (points > 0 && IsMarker(pair)) {
            fileMark[mark] = points;
            mark = std::min(mark + 1, sectorMarkSize - 1);
        } else {
            rawX[points] = HoldCoordinate(pair.x);
            rawY[points] = HoldCoordinate(pair.y);
            points++;
        }
        read = read && TakePair(text, pair);
    } while (read && points < coursePointLimit);
    return points;
}

static float Distance(float x1, float y1, float x2, float y2) {
    return std::sqrt((x2 - x1) * (x2 - x1) + (y2 - y1) * (y2 - y1));
}

int LoadCourse() {
    EnterProgramFolder();
    FileBytes file;
    const std::string path = std::string(ProgramFolder()) + CourseFile_name;
    if (ReadWholeFile(path.c_str(), courseFileLimit, 1, file) != 0) {
        ShowBox("Not Found Course Layout File !", "ZRKA", BoxOwner::toolbar);
        CourseLayout_on = 0;
        coursePointCount = 1;
        return 0;
    }
    coursePointCount = ReadPoints(reinterpret_cast<const char*>(file.data.get()));
    LoadSectorIni();
    if (coursePointCount >= coursePointLimit) ShowBox("CourseData Fail ! #003", "ZRKA");
    rawX[coursePointCount] = rawX[0];
    rawY[coursePointCount] = rawY[0];
    if (courseOffset < 0 || courseOffset > coursePointCount) courseOffset = 0;
    ApplyCourseOffset();
    return 1;
}

int ApplyCourseOffset() {
    const int count = coursePointCount;
    if (courseOffset > count || courseOffset < 0) {
        courseOffset = courseOffset < 0 ? count : 0;
        return 0;
    }
    for (int i = 0, raw = courseOffset; i <= count; i++, raw = raw + 1 > count ? 0 : raw + 1) {
        courseX[i] = rawX[raw];
        courseY[i] = rawY[raw];
        courseLen[i] = i == 0 ? 0 : courseLen[i - 1] + Distance(courseX[i - 1], courseY[i - 1], courseX[i], courseY[i]);
    }
    courseX[count + 1] = courseX[0];
    courseY[count + 1] = courseY[0];
    courseLen[count + 1] = courseLen[count + 2] = courseLen[count] + Distance(courseX[count], courseY[count], courseX[0], courseY[0]);
    RedrawCourseImage(1);
    return 0;
}

// --- sector boundaries -------------------------------------------------------------------------------------------------------

static std::string SectorPath() { return std::string(ProgramFolder()) + "Sector.ini"; }

// Kept: the course's name is cut to 50 characters on reading and to 49 on writing.
static std::string SectionName(size_t characters) { return std::string(CourseFile_name).substr(0, characters); }

static void FillSectorRow(const ProfileText& profile, int slot) {
    int* row = sectorMark[slot];
    row[0] = 0;
    row[8] = fileMark[8];
    for (int k = 1; k <= savedMarks; k++) {
        char key[8];
        std::snprintf(key, sizeof key, "Sec%d", k);
        const int point = ProfileInt(profile, SectionName(50), key, noSectorMark);
        row[k] = fileMark[k] != noSectorMark ? fileMark[k] : point <= 0 || point > noSectorMark ? noSectorMark : point;
    }
    rowOverwritten[slot] = false;
}

void LoadSectorIni() {
    ProfileText profile;
    LoadProfile(SectorPath().c_str(), profile);
    for (int slot = 0; slot < fileSlots; slot++) FillSectorRow(profile, slot);
    courseOffset = ProfileInt(profile, SectionName(50), "Offset", 0);
}

void SaveSectorIni() {
    if (MarksPerLap[0] != 1 || rowOverwritten[0]) return;
    ProfileText profile;
    if (LoadProfile(SectorPath().c_str(), profile) != 0) return;
    for (int k = 1; k <= savedMarks; k++) {
        char key[8];
        std::snprintf(key, sizeof key, "Sec%d", k);
        if (sectorMark[0][k] < noSectorMark)
            WriteIntKey(profile, sectorMark[0][k], SectionName(49), key);
        else
            RemoveProfileKey(profile, SectionName(49), key);
    }
    WriteIntKey(profile, courseOffset, SectionName(49), "Offset");
    SaveProfile(SectorPath().c_str(), profile);  // silent: a read-only folder must not disturb the end of a run
}

// Kept: entry 0 is 1 here, not 0.
void OverwriteSectorRow(int slot, int marks) {
    std::fill(sectorMark[slot] + 1, sectorMark[slot] + 8, noSectorMark);
    for (int mark = 0; mark < marks; mark++) sectorMark[slot][mark] = mark + 1;
    rowOverwritten[slot] = true;
}

void RestoreSectorRow(int slot) {
    if (!rowOverwritten[slot]) return;
    ProfileText profile;
    LoadProfile(SectorPath().c_str(), profile);
    FillSectorRow(profile, slot);
}

void DefaultCourse() {
    for (float* array : {courseX, courseY, courseLen, rawX, rawY}) std::fill(array, array + courseArraySize, 0.0f);
    coursePointCount = 1;
    std::fill(std::begin(fileMark), std::end(fileMark), noSectorMark);
    for (int slot = 0; slot < fileSlots; slot++) {
        std::fill(std::begin(sectorMark[slot]), std::end(sectorMark[slot]), noSectorMark);
        sectorMark[slot][0] = 0;
        rowOverwritten[slot] = false;
    }
    DefaultCourseImage();
}
