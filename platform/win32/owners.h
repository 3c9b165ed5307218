// owners.h -- which window owns a box or a dialog, so that the right ones are disabled while it is open.
#pragma once
#include <windows.h>

#include "platform/boxes.h"

// The tool bar; nullptr when there is none.
HWND DialogKeysWindow();
// The innermost modal dialog that runs, or nullptr.
HWND InnermostDialog();
// The window for a box; without the wanted one the next best.
HWND OwnerWindow(BoxOwner owner);
// The window for a modal dialog: the innermost dialog, or the tool bar, whose commands must not run meanwhile.
HWND DialogOwner();
