// course_image.h -- the course as a picture, its dots coloured by a channel along the current lap.
#pragma once
#include <cstdint>

#include "draw/draw_layer.h"

extern char courseCaption[16];  // what colours the dots: "File 1:Ne"

// A course point in image pixels of courseImage: trunc(x * 0.96 + 256).
constexpr float courseScale = 0.96f;
constexpr int   courseHalf  = 256;

// Draws courseImage: all dots in one colour with uniform 1, else by courseColorChannel of courseColorFile's run. The
// selector may move on while it draws.
void RedrawCourseImage(int uniform);
// The sample of a run's current lap at which it passes a course point, by its share of the lap's distance.
int CoursePointToSample(int slot, int point);
// Where a course point lies in a run's current lap.
struct CoursePlace {
    uint32_t distance;  // speed counts from the lap's start
    int      sample;    // -1 when the lap does not reach it
};
CoursePlace FindCoursePlace(int slot, int point);
// First mark of the group of marks that makes the current lap, from 1, and the length of that lap.
int      CurrentLapGroup(int slot);
uint32_t CurrentLapLength(int slot);
void DefaultCourseImage();
