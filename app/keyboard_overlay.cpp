#include "app/keyboard_overlay.h"

#include "draw/draw_layer.h"
#include "graph/color_scheme.h"
#include "graph/view_state.h"

struct OverlayRow {
    int         row;
    const char* text;
};
// Kept: "Mater", "Mome" and "Cursol" are spelled so.
static constexpr OverlayRow overlayRows[] = {
    {0, "Keyboard shortcuts"},
    {3, "[1][2][3]   - File Open"},
    {4, "[4]         - Course Map"},
    {5, "[5][6]      - GraphLayout Load,Save"},
    {7, "[Q]         - Body View"},
    {8, "[W]         - SusHistogram"},
    {9, "[E]         - A/F MapView"},
    {11, "[A]         - Mater View"},
    {12, "[S]         - RealTimePlay"},
    {13, "[D]         - Analysis Tools"},
    {14, "[F]         - Setup"},
    {15, "[L]         - Cursol Value width"},
    {17, "[Z][X]      - MoveOn,off File1,2"},
    {18, "[Shift]+[X] - MoveOn,off File3"},
    {19, "[V]         - Value View"},
    {20, "[B]         - Scroll Bar On,Off"},
    {21, "[N]         - Zoom Change"},
    {22, "[M]         - Mome View On,Off"},
    {23, "[<][>]      - TimeOffset LAF"},
    {24, "[Shift]     - Difference Value"},
    {25, "[Ctrl]      - Smoothing"},
};

void DrawKeyboardOverlay() {
    SetBlend(blendAdd, shortcutFade < 255 ? shortcutFade : 255);
    for (const OverlayRow& row : overlayRows) DrawTextAt(300, 64 + rowHeight * row.row, row.text, whiteColor, bigFont);
    SetBlend(blendNone, zoomDragOn ? 64 : 255);  // as the grid is drawn
    shortcutFade--;
    if (shortcutFade < 10) shortcutOverlayOn = 0;
}
