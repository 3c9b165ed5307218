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
static VideoMode videoMode{fallBackBits, fallBackWidth, fallBackHeight, 60};
static Surface surface{nullptr, 0, 0, 0};
static bool surfaceLost;

static std::string windowTitle;
static WindowOptions windowOptions{"", 0, 0, 0, fallBackWidth, fallBackHeight, false};
static bool waitForBlank = true, runInBackground = true, imeAllowed;
static void (*restoreCallback)();
static bool pumpFailed;     // seen while waiting; the next ProcessMessages says so
static int wheelRemainder;  // delta, below one notch

const Surface& BackBufferSurface() { return surface; }

// --- surface -------------------------------------------------------------------------------------------------------

static int MakeSurface(int width, int height) {
    int pitch = 0;
    uint32_t* pixels = width <= surfaceSideLimit && height <= surfaceSideLimit ? AllocateWindowPixels(width, height, &pitch) : nullptr;
    surface = pixels ? Surface{pixels, width, height, pitch} : Surface{nullptr, 0, 0, 0};
    if (drawState.target.handle == backBuffer) TargetBackBuffer();
    return pixels ? 0 : -1;
}

// Makes the surface that the video mode asks for, or the small one.
static int ApplyVideoMode() {
    if (MakeSurface(videoMode.width, videoMode.height) == 0) return 0;
    videoMode = {fallBackBits, fallBackWidth, fallBackHeight, videoMode.refresh};
    return MakeSurface(videoMode.width, videoMode.height) == 0 ? -2 : -1;
}

int SetVideoMode(int bits, int width, int height, int refresh) {
    Record("SetVideoMode", bits, width, height, refresh);
    if ((bits != 0 && bits != 8 && bits != 16 && bits != 32) || width < 1 || height < 1) return -1;
    videoMode = {bits == 0 ? 16 : bits, width, height, refresh};
    return MainWindowOpen() ? ApplyVideoMode() : 0;
}

int ChangeVideoMode(int width, int height, int bits, int, int refresh) {
    const auto changed = [](int asked, int present) { return asked == -1 ? present : asked; };
    return SetVideoMode(changed(bits, videoMode.bits), changed(width, videoMode.width), changed(height, videoMode.height),
                        changed(refresh, videoMode.refresh));
}

// --- window --------------------------------------------------------------------------------------------------------

int InitDrawing() {
    if (OpenMainWindow(windowOptions) != 0) return -1;
    pumpFailed = surfaceLost = false;
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
    surface = {nullptr, 0, 0, 0};
    TargetBackBuffer();
    CloseMainWindow();
}

void LoseSurface() { surfaceLost = true; }

// After a loss: a new surface, and what was drawn from the program's data is drawn again.
static void RestoreSurface() {
    surfaceLost = false;
    if (ApplyVideoMode() != -1 && restoreCallback) restoreCallback();
}

int ProcessMessages() {
    if (pumpFailed || PumpMessages() != 0) {
        pumpFailed = false;
        return -1;
    }
    if (surfaceLost) RestoreSurface();
    return 0;
}

bool WindowCloseRequested() { return CloseRequested(); }

int FlipScreen() {
    Record("FlipScreen");
    if (!surface.pixels) return -1;
    if (PresentPixels(waitForBlank) == 0) return 0;
    LoseSurface();
    return -1;
}

void GetClientSize(int* width, int* height) { WindowClientSize(width, height); }
void GetWindowPos(int* x, int* y) { WindowPosition(x, y); }

void ApplyWindowStyle() {
    if (!MainWindowOpen()) return;
    MoveMainWindow(windowOptions.x, windowOptions.y);
    SetWindowClientSize(windowOptions.width, windowOptions.height);
}

void ApplyClientSize(int width, int height) {
    windowOptions.width  = width;
    windowOptions.height = height;
    if (MainWindowOpen()) SetWindowClientSize(width, height);
}

void SetWindowTitle(const char* utf8) {
    windowTitle         = utf8;
    windowOptions.title = windowTitle.c_str();
}
void SetWindowIcon(int resourceId) { windowOptions.iconResource = resourceId; }
void SetWindowPosition(int x, int y) {
    windowOptions.x = x;
    windowOptions.y = y;
}
void SetStartMinimised(bool minimised) { windowOptions.minimised = minimised; }
void SetWaitForBlank(bool wait) { waitForBlank = wait; }
void SetRunInBackground(bool run) { runInBackground = run; }
void SetDialogWindow(void* window) { SetDialogKeysWindow(window); }
void SetRestoreCallback(void (*rebuild)()) { restoreCallback = rebuild; }

// --- time ----------------------------------------------------------------------------------------------------------

void WaitMs(int milliseconds) {
    const int64_t end = SteadyMs() + std::max(milliseconds, 0);
    const int spin = milliseconds > exactWaitMs ? 0 : waitSpinMs;
    const auto left = [=] { return static_cast<int>(end - spin - SteadyMs()); };
    while (left() > 0) {
        if (ProcessMessages() != 0) {
            pumpFailed = !CloseRequested();
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
static bool InputRead() { return runInBackground || ForegroundWindow() != Foreground::other; }

void GetMousePos(int* x, int* y) { MousePosition(x, y); }
uint32_t GetMouseButtons() { return InputRead() ? MouseButtonMask() : 0; }

int GetWheelNotches() {
    wheelRemainder += TakeWheelDelta();
    const int notches = wheelRemainder / wheelNotch;
    wheelRemainder -= notches * wheelNotch;
    return notches;
}

int GetHWheelDelta() { return TakeHWheelDelta(); }
int TakeChar() { return TakeTypedChar(); }
void DrainCharQueue() { ClearTypedChars(); }
bool IsKeyDown(Key key) { return InputRead() && IsKeyHeld(key == Key::shift ? HeldKey::shift : HeldKey::ctrl); }
void SetImeAllowed(bool allowed) { imeAllowed = allowed; }
void ApplyImeSwitch() { AllowIme(imeAllowed); }
