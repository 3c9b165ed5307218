// draw_layer.h -- the drawing layer: window, frame, input, images, primitives, text. Everything on the screen goes
// through here, and nothing above this folder touches a pixel.
//
// Coordinates  pixels, origin at the top left of the target, y grows downward. Drawing is clipped to the target.
// Colours      opaque integers of MakeColor; only the OR of two packed colours is a colour again.
// Handles      an image or a font is a number from 0 up, noHandle is failure. A bad handle draws nothing.
// State        target, blend and brightness hold until changed; the resting state is backBuffer, (0, 255), (255, 255, 255).
// Thread       all calls come from the one thread.
#pragma once
#include <cstdarg>
#include <cstdint>

constexpr int noHandle   = -1;
constexpr int backBuffer = -2;  // as a draw target: the window's surface

// Blend modes. S source after brightness, D target, P parameter 0..255 (held), all per channel in integers.
enum BlendMode : int {
    blendNone       = 0,   // S; the parameter has no effect
    blendAlpha      = 1,   // (S x P + D x (255 - P)) / 255, one truncation
    blendAdd        = 2,   // D + S x P / 255, saturating; the product is truncated first
    blendSubtract   = 3,   // D - S x P / 255, saturating at 0
    blendMultiply   = 4,   // D x S / 255; the parameter has no effect
    blendAlphaImage = 17,  // colours as blendAlpha; the target's alpha becomes P + A x (255 - P) / 255
    blendSubtractPremultiplied = 19  // as blendSubtract
};

using Color = uint32_t;  // 0x00RRGGBB; only draw/ takes it apart

// The start state: no window, image or font, the resting state, switches and sizes as they are before anyone sets them.
// What a test has chosen outside of the program stays: AllowAlphaImages, AllowImages, SelectBackEnd, RecordOperations.
void DefaultDrawLayer();

// --- window and frame ---------------------------------------------------------------------------------------------

// Sets the surface. 0 done; -1 failed (bits other than 0, 8, 16, 32, or a size below 1; bits 0 means 16); -2 only a
// fall-back of 640 x 480 at 16 bits was possible.
int SetVideoMode(int bits, int width, int height, int refresh);
// The same at once on an existing window; -1 keeps a value.
int ChangeVideoMode(int width, int height, int bits, int unused, int refresh);
// Creates the window (or, without a screen, the surface alone). 0 done, -1 failed. All else but the two above needs it.
int InitDrawing();
// Releases everything and waits for the window to go.
void ShutDownDrawing();
// Serves all pending window messages, also the dialogs' keyboard. 0, or -1 once the window has been closed or the pump
// failed; WindowCloseRequested tells which.
int ProcessMessages();
bool WindowCloseRequested();
// Shows the back buffer. 0 or -1. Waits for the vertical blank unless SetWaitForBlank(false).
int FlipScreen();
void GetClientSize(int* width, int* height);
void GetWindowPos(int* x, int* y);
// Applies the window's style, position and size after a change of them.
void ApplyWindowStyle();
// Sets the client size; the surface keeps its own size, the window shows its top left part at scale 1.
void ApplyClientSize(int width, int height);
// 1: scaled images are drawn with linear filtering.
void SetSmoothScaling(int smooth);
// Waits the full time and serves messages meanwhile. The last 4 ms of a short wait are exact, and serve nothing.
void WaitMs(int milliseconds);
// Milliseconds since some fixed point, 31 bits.
int NowMs();

// Switches before InitDrawing.
void SetWindowTitle(const char* utf8);
void SetWindowIcon(int resourceId);
void SetWindowPosition(int x, int y);   // where InitDrawing puts the window
void SetStartMinimised(bool minimised);
void SetWaitForBlank(bool wait);
void SetRunInBackground(bool run);
// The tool bar, whose dialog keys ProcessMessages serves. 0 for none.
void SetDialogWindow(void* window);
// Called after a lost device has been restored.
void SetRestoreCallback(void (*rebuild)());
// Images with an alpha channel can be made ("runs on hardware"); tests switch it off.
bool CanMakeAlphaImages();
void AllowAlphaImages(bool allow);
// Images can be made at all; tests switch it off.
void AllowImages(bool allow);

// --- input ----------------------------------------------------------------------------------------------------------

// Client coordinates, also outside the client area.
void GetMousePos(int* x, int* y);
// Bits: 1 left, 2 right, 4 middle, 8 and 16 the side buttons.
uint32_t GetMouseButtons();
// Whole notches since the last call; the remainder is kept.
int GetWheelNotches();
// Accumulated horizontal delta since the last call, 120 a notch.
int GetHWheelDelta();
// One typed character, 0 for none. Right, Left, Up, Down arrive as 28, 29, 30, 31; Tab 9, Esc 27, Space 32.
int TakeChar();
void DrainCharQueue();
enum class Key { shift, ctrl };
// Live state of a key.
bool IsKeyDown(Key key);
// Applies the flag that allows an input method to the window.
void SetImeAllowed(bool allowed);
void ApplyImeSwitch();

// --- images -----------------------------------------------------------------------------------------------------------

struct ImageOptions {
    bool drawable;  // can be a draw target
    bool alpha;     // has an alpha channel
};
void GetImageOptions(ImageOptions* options);
void SetImageOptions(const ImageOptions& options);
// A .BMP of the working folder. transparent 1: its transparent colour is the one at hand (SetTransparentColor).
int LoadImageFile(const char* fileName, int transparent);
// width, height 1 and up; a new image is black, or clear with alpha.
int CreateDrawableImage(int width, int height, int unused);
void DeleteImage(int image);
void DeleteAllImages();
// An image, or backBuffer. A bad handle leaves the target as it is.
void SetDrawTarget(int image);
void ClearImageBlack(int image);
// Writes the top left part of the current target as a 24 bit BMP. 0 done.
int SaveDrawTargetBmp(const char* fileName, int width, int height);
// The colour that is not drawn where the transparent flag is 1 and the image has no alpha channel.
void SetTransparentColor(int r, int g, int b);

// --- drawing: all honour blend, brightness and target -----------------------------------------------------------------

Color MakeColor(int r, int g, int b);
void SetBlend(int mode, int parameter);
void SetBrightness(int r, int g, int b);
// Half-open along the longer axis (pixel centres in [min, max)); thickness in whole pixels across the other.
void DrawLineF(float x1, float y1, float x2, float y2, Color color, int thickness);
// One pixel wide, both ends drawn.
void DrawLineI(int x1, int y1, int x2, int y2, Color color);
// Right and bottom exclusive; corners in either order.
void FillRect(int left, int top, int right, int bottom, Color color);
// One pixel wide, right and bottom exclusive; corners in either order.
void DrawBoxOutline(int left, int top, int right, int bottom, Color color);
// Filled with fill 1, else an outline of the thickness. A negative radius draws nothing.
void DrawCircle(int x, int y, int radius, Color color, int fill, int thickness);
// The image on the rectangle, right and bottom exclusive; y1 above y2 draws it upside down. -1 for a bad handle, else 0.
int DrawImageStretched(int x1, int y1, int x2, int y2, int image, int transparent);
// The image's pivot goes to x, y; scaled and turned (radians, clockwise on the screen) about it. Scale 1 and angle 0 is a
// plain copy at the floored position.
int DrawImageRotated(float x, float y, float pivotX, float pivotY, int image, int transparent, double scale, double angle);
// Separate scales, no turn, not transparent.
int DrawImageScaledXY(float x, float y, float pivotX, float pivotY, int image, double xScale, double yScale);

// --- text: bytes of Shift-JIS (code page 932), top left at x, y ---------------------------------------------------------

// Frees all fonts.
void ResetFonts(int unused);
int CreateFontHandle(const char* face, int size, int thickness, int type);
// The ones with formats are printf-style, at most 1023 bytes of result.
void DrawTextF(int x, int y, Color color, int font, const char* format, ...) __attribute__((format(printf, 5, 6)));
void DrawTextAt(int x, int y, const char* text, Color color, int font);
int TextWidthF(int font, const char* format, ...) __attribute__((format(printf, 2, 3)));
int TextWidthDefaultF(const char* format, ...) __attribute__((format(printf, 1, 2)));
int TextWidth(const char* text, int bytes, int font);
