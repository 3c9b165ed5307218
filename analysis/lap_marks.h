// lap_marks.h -- the extreme marks: fading circles on the traces at the values that the lap table lists.
#pragma once

enum class MarkEvent { frame = 0, tableChanged = 1, toggle = 2 };
// frame: once per frame, draws. tableChanged: the marks appear. toggle: the middle button and Tab let them come and go.
void DrawExtremeMarks(MarkEvent event);
// The marks stay up (the statistics are being computed), or may leave (a command of the tool bar).
void HoldMarks();
void ReleaseMarks();
// Collects a file's marks from the checked laps and the channels shown.
void CollectMarks(int slot);
void ClearSlotMarks(int slot);
void DefaultLapMarks();
