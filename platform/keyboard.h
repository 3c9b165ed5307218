// keyboard.h -- live key states, for what looks at Shift and Ctrl while it runs (a load, a dialog).
#pragma once

enum class HeldKey { shift, ctrl };
bool IsKeyHeld(HeldKey key);
