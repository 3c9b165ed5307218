// The window's side of the drawing layer: surface, frame, time and input.
#include "draw/draw_layer.h"

#include <algorithm>
#include <string>

#include "draw/draw_state.h"
#include "draw/images.h"
#include "draw/recording.h"
#include "platform/clock.h"
#include "platform/keyboard.h"
#include "platform/window.h"

constexpr int fallBackWidth = 640, fallBackHeight = 480, fallBackBits = 16;
constexpr int surfaceSideLimit = 32768;  // pixels
constexpr int wheelNotch = 120;          // delta of one notch
constexpr int waitSpinMs = 4;            // the end of a wait, which a sleep would miss
constexpr int exactWaitMs = 20;          // longer waits are rests: they end with a sleep and cost nothing

struct VideoMode {
    int bits, width, height, refresh;
};
// What is set before the window is made, or about it.
struct LayerState {
    VideoMode videoMode{fallBackBits, fallBackWidth, fallBackHeight, 60};
    WindowOptions window{"", 0, 0, 0, fallBackWidth, fallBackHeight, false};
    std::string title;
    bool waitForBlank = true, runInBackground = true, imeAllowed = false;
    void (*restore)() = nullptr;
    bool surfaceLost = false;
    bool pumpFailed = false;  // seen while waiting; the next ProcessMessages says so
    int wheelRemainder = 0;   // delta, below one notch
};
static LayerState layer;
static constexpr Surface noSurface{nullptr, 0, 0, 0};
static Surface surface = noSurface;

void DefaultDrawLayer() {
    if (MainWindowOpen()) ShutDownDrawing();
    layer = LayerState{};
    DefaultDrawState();
    DefaultImages();
}

const Surface& BackBufferSurface() { return surface; }

// --- surface -------------------------------------------------------------------------------------------------------

// A surface in the size of the video mode. The one at hand stays, with its picture, when it has that size.
static bool MakeSurface() {
    const VideoMode& mode = layer.videoMode;
    if (surface.pixels && surface.width == mode.width && surface.height == mode.height) return true;
    int pitch = 0;
    const bool sizeServed = mode.width <= surfaceSideLimit && mode.height <= surfaceSideLimit;
    uint32_t* pixels = sizeServed ? AllocateWindowPixels(mode.width, mode.height, &pitch) : nullptr;
    surface = pixels ? Surface{pixels, mode.width, mode.height, pitch} : noSurface;
    if (drawState.target.handle == backBuffer) TargetBackBuffer();
    return pixels != nullptr;
}

// Makes the surface that the video mode asks for, or the small one.
static int ApplyVideoMode() {
    if (MakeSurface()) return 0;
    layer.videoMode = {fallBackBits, fallBackWidth, fallBackHeight, layer.videoMode.refresh};
    return MakeSurface() ? -2 : -1;
}

int SetVideoMode(int bits, int width, int height, int refresh) {
    Record("SetVideoMode", bits, width, height, refresh);
    if ((bits != 0 && bits != 8 && bits != 16 && bits != 32) || width < 1 || height < 1) return -1;
    layer.videoMode = {bits == 0 ? 16 : bits, width, height, refresh};
    return MainWindowOpen() ? ApplyVideoMode() : 0;
}

int ChangeVideoMode(int width, int height, int bits, int, int refresh) {
    const auto changed = [](int asked, int present) { return asked == -1 ? present : asked; };
    const VideoMode& mode = layer.videoMode;
    return SetVideoMode(changed(bits, mode.bits), changed(width, mode.width), changed(height, mode.height),
                        changed(refresh, mode.refresh));
}

// --- window --------------------------------------------------------------------------------------------------------

int InitDrawing() {
    if (OpenMainWindow(layer.window) != 0) return -1;
    layer.pumpFailed = layer.surfaceLost = false;
    TargetBackBuffer();
    if (ApplyVideoMode() == -1) {
        CloseMainWindow();
        return -1;
    }
    return 0;
}

void ShutDownDrawing() {
    ResetFonts(0);
    DeleteAllImages();
    surface = noSurface;
    TargetBackBuffer();
    CloseMainWindow();
}

void LoseSurface() { layer.surfaceLost = true; }

// After a loss: a new surface, and what was drawn from the program's data is drawn again.
static void RestoreSurface() {
    layer.surfaceLost = false;
    surface           = noSurface;
    if (ApplyVideoMode() != -1 && layer.restore) layer.restore();
}

int ProcessMessages() {
    if (layer.pumpFailed || PumpMessages() != 0) {
        layer.pumpFailed = false;
        return -1;
    }
    if (layer.surfaceLost) RestoreSurface();
    return 0;
}

bool WindowCloseRequested() { return CloseRequested(); }

int FlipScreen() {
    Record("FlipScreen");
    if (!surface.pixels) return -1;
    if (PresentPixels(layer.waitForBlank) == 0) return 0;
    LoseSurface();
    return -1;
}

void GetClientSize(int* width, int* height) { WindowClientSize(width, height); }
void GetWindowPos(int* x, int* y) { WindowPosition(x, y); }

void ApplyWindowStyle() {
    if (!MainWindowOpen()) return;
    MoveMainWindow(layer.window.x, layer.window.y);
    SetWindowClientSize(layer.window.width, layer.window.height);
}

void ApplyClientSize(int width, int height) {
    layer.window.width  = width;
    layer.window.height = height;
    if (MainWindowOpen()) SetWindowClientSize(width, height);
}

void SetWindowTitle(const char* utf8) {
    layer.title        = utf8;
    layer.window.title = layer.title.c_str();
}
void SetWindowIcon(int resourceId) { layer.window.iconResource = resourceId; }
void SetWindowPosition(int x, int y) {
    layer.window.x = x;
    layer.window.y = y;
}
void SetStartMinimised(bool minimised) { layer.window.minimised = minimised; }
void SetWaitForBlank(bool wait) { layer.waitForBlank = wait; }
void SetRunInBackground(bool run) { layer.runInBackground = run; }
void SetDialogWindow(void* window) { SetDialogKeysWindow(window); }
void SetRestoreCallback(void (*rebuild)()) { layer.restore = rebuild; }

// --- time ----------------------------------------------------------------------------------------------------------

void WaitMs(int milliseconds) {
    const int64_t end = SteadyMs() + std::max(milliseconds, 0);
    const int spin = milliseconds > exactWaitMs ? 0 : waitSpinMs;
    const auto left = [=] { return static_cast<int>(end - spin - SteadyMs()); };
    while (left() > 0) {
        if (ProcessMessages() != 0) {
            layer.pumpFailed = !CloseRequested();
            SleepMs(left());
            break;
        }
        WaitForMessages(left());
    }
    SpinUntil(end);
}

int NowMs() { return static_cast<int>(SteadyMs() & 0x7FFFFFFF); }

// --- input ---------------------------------------------------------------------------------------------------------

// Input is read in the background too, unless that was switched off.
static bool InputRead() { return layer.runInBackground || ForegroundWindow() != Foreground::other; }

void GetMousePos(int* x, int* y) { MousePosition(x, y); }
uint32_t GetMouseButtons() { return InputRead() ? MouseButtonMask() : 0; }

int GetWheelNotches() {
    layer.wheelRemainder += TakeWheelDelta();
    const int notches = layer.wheelRemainder / wheelNotch;
    layer.wheelRemainder -= notches * wheelNotch;
    return notches;
}

int GetHWheelDelta() { return TakeHWheelDelta(); }
int TakeChar() { return TakeTypedChar(); }
void DrainCharQueue() { ClearTypedChars(); }
bool IsKeyDown(Key key) { return InputRead() && IsKeyHeld(key == Key::shift ? HeldKey::shift : HeldKey::ctrl); }
void SetImeAllowed(bool allowed) { layer.imeAllowed = allowed; }
void ApplyImeSwitch() { AllowIme(layer.imeAllowed); }
