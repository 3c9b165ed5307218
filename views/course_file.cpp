#include "views/course_file.h"

#include <algorithm>
#include <iterator>

float courseX[courseArraySize], courseY[courseArraySize];
float courseLen[courseArraySize];
int   coursePointCount;
int   sectorMark[fileSlots][sectorMarkSize];

void DefaultCourse() {
    std::fill(std::begin(courseX), std::end(courseX), 0.0f);
    std::fill(std::begin(courseY), std::end(courseY), 0.0f);
    std::fill(std::begin(courseLen), std::end(courseLen), 0.0f);
    coursePointCount = 1;
    for (auto& row : sectorMark) {
        std::fill(std::begin(row), std::end(row), noSectorMark);
        row[0] = 0;
    }
}
