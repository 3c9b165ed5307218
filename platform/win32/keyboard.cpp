#include "platform/keyboard.h"

#include <windows.h>

bool IsKeyHeld(HeldKey key) { return GetAsyncKeyState(key == HeldKey::shift ? VK_SHIFT : VK_CONTROL) < 0; }
