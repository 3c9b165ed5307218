// toolbar_commands.h -- what the buttons of the tool bar do.
#pragma once

// The press of a button. `on` is the state that a check button has after it.
void ToolbarCommand(int id, bool on);
