// course_popup.h -- the small panel beside the mouse that the course map opens and mouse movement closes.
#pragma once

// Steps its counter and draws the image as far as it is open: first across, then down.
void DrawCoursePopup();
