// toolbar.h -- the tool bar's thinking: what its buttons do and show. Its window is toolbar_window.cpp.
#pragma once
#include <cstdint>

// Goes to a spot tied to the main window with fromMainWindow 1; with 0 it stays and is only pulled onto the monitor.
void PlaceToolbar(int fromMainWindow);
// The window itself: toolbar_window.cpp on Windows, recorded elsewhere.
void CreateToolbarWindow();
void DestroyToolbarWindow();
