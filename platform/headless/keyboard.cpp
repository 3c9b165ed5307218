#include "platform/keyboard.h"

#include "platform/headless/script_state.h"

bool IsKeyHeld(HeldKey key) { return key == HeldKey::shift ? script.shift : script.ctrl; }
