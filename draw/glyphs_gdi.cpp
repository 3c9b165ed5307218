// Glyphs from GDI: each character is written white on black into a small picture, which takes missing ones from the
// system's fallback fonts, and its brightness is the coverage.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "draw/glyphs.h"

struct OpenedFace {
    HFONT font;
    int size;  // cell height, pixels
};
static std::vector<OpenedFace> faces;
static HDC canvas;
static HBITMAP canvasBitmap;
static uint32_t* canvasPixels;
static int canvasSide;       // pixels
static int canvasFace = -1;  // the face selected into it

// A picture large enough for a character of a size, with room for what hangs over its cell on both sides.
static bool MakeCanvas(int side) {
    if (canvas && canvasSide >= side) return true;
    if (!canvas) canvas = CreateCompatibleDC(nullptr);
    if (!canvas) return false;
    BITMAPINFO info{};
    info.bmiHeader.biSize     = sizeof info.bmiHeader;
    info.bmiHeader.biWidth    = side;
    info.bmiHeader.biHeight   = -side;  // top row first
    info.bmiHeader.biPlanes   = 1;
    info.bmiHeader.biBitCount = 32;
    void* pixels = nullptr;
    const HBITMAP bitmap = CreateDIBSection(canvas, &info, DIB_RGB_COLORS, &pixels, nullptr, 0);
    if (!bitmap) return false;
    SelectObject(canvas, bitmap);
    if (canvasBitmap) DeleteObject(canvasBitmap);
    canvasBitmap = bitmap;
    canvasPixels = static_cast<uint32_t*>(pixels);
    canvasSide   = side;
    SetTextColor(canvas, RGB(255, 255, 255));
    SetBkColor(canvas, RGB(0, 0, 0));
    SetBkMode(canvas, OPAQUE);
    return true;
}

int OpenFace(const char* face, int size, int thickness) {
    wchar_t name[LF_FACESIZE] = {};
    MultiByteToWideChar(932, 0, face, -1, name, LF_FACESIZE - 1);
    const int height = std::strcmp(face, emSizedFace) == 0 ? -size : size;  // negative is the em, positive the cell
    const HFONT font = CreateFontW(height, 0, 0, 0, thickness > 4 ? FW_BOLD : FW_NORMAL, FALSE, FALSE, FALSE, SHIFTJIS_CHARSET,
                                   OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS, ANTIALIASED_QUALITY, DEFAULT_PITCH, name);
    if (!font) return -1;
    faces.push_back({font, size});
    return static_cast<int>(faces.size()) - 1;
}

void CloseFaces() {
    if (canvas) SelectObject(canvas, GetStockObject(SYSTEM_FONT));
    canvasFace = -1;
    for (const OpenedFace& face : faces) DeleteObject(face.font);
    faces.clear();
    if (canvas) DeleteDC(canvas);
    if (canvasBitmap) DeleteObject(canvasBitmap);
    canvas       = nullptr;
    canvasBitmap = nullptr;
    canvasSide   = 0;
}

// The box of the canvas's lit pixels.
static RECT LitBox() {
    RECT box{canvasSide, canvasSide, 0, 0};
    for (LONG y = 0; y < canvasSide; ++y)
        for (LONG x = 0; x < canvasSide; ++x)
            if (canvasPixels[y * canvasSide + x] & 0xFFFFFF)
                box = {std::min(box.left, x), std::min(box.top, y), std::max(box.right, x + 1), y + 1};
    return box;
}

void RasterizeGlyph(int number, char16_t unicode, Glyph& out) {
    out = Glyph{};
    const OpenedFace& face = faces[number];
    const int margin = face.size;
    if (!MakeCanvas(4 * face.size)) return;
    const wchar_t character = unicode;
    if (canvasFace != number) SelectObject(canvas, face.font);
    canvasFace = number;
    const RECT all{0, 0, canvasSide, canvasSide};
    ExtTextOutW(canvas, margin, margin, ETO_OPAQUE, &all, &character, 1, nullptr);
    SIZE extent{};
    GetTextExtentPoint32W(canvas, &character, 1, &extent);
    GdiFlush();
    out.advance = extent.cx;
    const RECT box = LitBox();
    if (box.left >= box.right) return;
    out.left   = box.left - margin;
    out.top    = box.top - margin;
    out.width  = box.right - box.left;
    out.height = box.bottom - box.top;
    out.coverage.reserve(size_t(out.width) * out.height);
    for (LONG y = box.top; y < box.bottom; ++y)
        for (LONG x = box.left; x < box.right; ++x)
            out.coverage.push_back(static_cast<uint8_t>(canvasPixels[y * canvasSide + x] >> 8));  // green
}
