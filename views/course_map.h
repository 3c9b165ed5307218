// course_map.h -- the floating panel with the course and the place of each run on it.
#pragma once

// Each frame, in normal and in graph position mode.
void DrawCourseMap();
// The mouse on the panel: the point under it, or -1. Kept: the points are taken without the image's factor 0.96, so that
// hits and picture differ by 4 % towards the rim.
int FindCoursePoint();
// A press on a point: with the left button the cursors run there, with the right one the popup tells time and length to
// it. 1 when a point took the press.
int CourseClick();
// A held button on the panel, once per pass: the left one moves it by the mouse's movement, the right one zooms.
void HoldCourseLeft(int movedX, int movedY);
void HoldCourseRight();
// The button is up: its next press starts anew.
void ReleaseCourseLeft();
void ReleaseCourseRight();
// The wheel: the colouring by another channel. Without a step nothing is redrawn.
void StepCourseColor(int steps);
// The seven pictures of the map, into files beside the name that the user gives.
void SaveCourseMapImages();
// The message box with the fuel used, counted from the pulses on AUX1.
void ShowFuelUsed();
void DefaultCourseMap();
