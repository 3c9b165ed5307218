#include "platform/window.h"

#include <cstdlib>
#include <memory>

#include "platform/clock.h"
#include "platform/headless/script_state.h"

struct FreeMemory {
    void operator()(void* memory) const { std::free(memory); }
};
static std::unique_ptr<void, FreeMemory> pixelMemory;

int OpenMainWindow(const WindowOptions& options) {
    if (script.openFails) return -1;
    if (!script.sizeScripted) {
        script.clientWidth  = options.width;
        script.clientHeight = options.height;
    }
    script.x         = options.x;
    script.y         = options.y;
    script.minimised = options.minimised;
    script.maximised = false;
    script.open      = true;
    return 0;
}

void CloseMainWindow() {
    script.open           = false;
    script.closeRequested = false;  // it was meant for the window that goes
    pixelMemory.reset();
}

bool MainWindowOpen() { return script.open; }

int PumpMessages() {
    const bool fails = script.pumpFails || script.closeRequested;
    script.pumpFails = false;
    return fails ? -1 : 0;
}

void WaitForMessages(int milliseconds) { SleepMs(milliseconds); }  // a script acts between two passes

bool CloseRequested() { return script.closeRequested; }

uint32_t* AllocateWindowPixels(int width, int height, int* pitch) {
    // Rows are an odd multiple of 64 bytes apart. Memory of this size comes as fresh pages that cost nothing until they
    // are touched, so that a large virtual screen is free where the window is small.
    constexpr int linePixels = 16;
    constexpr size_t alignment = linePixels * sizeof(uint32_t);
    *pitch = ((width + linePixels - 1) / linePixels | 1) * linePixels;
    pixelMemory.reset(std::calloc(size_t(*pitch) * height * sizeof(uint32_t) + alignment, 1));
    if (!pixelMemory) return nullptr;
    const uintptr_t start = reinterpret_cast<uintptr_t>(pixelMemory.get());
    return reinterpret_cast<uint32_t*>((start + alignment - 1) / alignment * alignment);
}

int PresentPixels(bool) { return script.open ? 0 : -1; }

void WindowClientSize(int* width, int* height) {
    *width  = script.minimised ? 0 : script.clientWidth;
    *height = script.minimised ? 0 : script.clientHeight;
}

void WindowPosition(int* x, int* y) {
    *x = script.x;
    *y = script.y;
}

void SetWindowClientSize(int width, int height) {
    script.clientWidth  = width;
    script.clientHeight = height;
}

void MoveMainWindow(int x, int y) {
    script.x = x;
    script.y = y;
}

// A maximised window keeps the script's size: the script alone says how large the client area is.
void ShowMainWindow(int how) {
    if (how == 4) return;
    if (how == 2) script.maximised = true;
    if (how == 0 || (how == 3 && !script.minimised)) script.maximised = false;
    script.minimised = how == 1;
}

bool MainWindowMaximised() { return script.maximised && !script.minimised; }

ScreenRect MainWindowNormalRect() {
    return {script.x, script.y, script.x + script.clientWidth, script.y + script.clientHeight};
}

ScreenRect MonitorRect(const ScreenRect&) { return {0, 0, script.screenWidth, script.screenHeight}; }

void BringMainWindowToFront() { script.foreground = Foreground::mainWindow; }

Foreground ForegroundWindow() { return script.foreground; }

void* MainWindowHandle() { return script.open ? &script : nullptr; }

void VirtualScreenSize(int* width, int* height) {
    *width  = script.screenWidth;
    *height = script.screenHeight;
}

void SetDialogKeysWindow(void*) {}  // keys come from the script

void MousePosition(int* x, int* y) {
    *x = script.mouseX;
    *y = script.mouseY;
}

uint32_t MouseButtonMask() { return script.buttons; }

static int Take(int& value) {
    const int taken = value;
    value = 0;
    return taken;
}
int TakeWheelDelta() { return Take(script.wheelDelta); }
int TakeHWheelDelta() { return Take(script.hWheelDelta); }

int TakeTypedChar() {
    if (script.chars.empty()) return 0;
    const int character = script.chars.front();
    script.chars.pop_front();
    return character;
}

void ClearTypedChars() { script.chars.clear(); }

void AllowIme(bool) {}
