// run_events.h -- what a load or a reset announces to the rest of the program.
//
// A load has consequences above run_data: grid, statistics text, colours, fades, tool bar. They are called in one
// place, app/run_events.cpp, in the order in which they happen.
#pragma once

enum class LoadResult { nothing = -1, loaded = 0, refused = 1 };

// A reader ran or refused the file, before the rename: rebuilds grid and statistics text.
void AfterRead(int slot);
// The last step of every LoadFile, also of a cancelled one. The slot's title and path are already set.
void AfterLoad(int slot, LoadResult result);
// A slot was emptied by ResetSlot.
void AfterReset(int slot);
// File 2 and File 3, or File 3 alone, were unloaded.
void AfterUnload();
