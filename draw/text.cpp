// Fonts and text: bytes of code page 932 to glyphs, glyphs to coverage masks inside the target.
#include <algorithm>
#include <array>
#include <climits>
#include <cstdio>
#include <memory>
#include <vector>

#include "draw/glyphs.h"
#include "draw/raster.h"
#include "draw/recording.h"
#include "draw/shift_jis.h"

constexpr int fontSizeLimit = 256;   // pixels
constexpr int textLimit     = 1024;  // bytes of formatted text with its end
constexpr int placeLimit    = 1 << 28;  // pixels; far enough outside, and sums still fit

// A font keeps every glyph it was asked for, in pages of 256 characters.
struct Font {
    int face;
    std::array<std::unique_ptr<std::array<std::unique_ptr<Glyph>, 256>>, 256> pages;
};
static std::vector<std::unique_ptr<Font>> fonts;
static std::unique_ptr<Font> defaultFont;

static std::unique_ptr<Font> MakeFont(const char* face, int size, int thickness) {
    if (size < 1 || size > fontSizeLimit) return nullptr;
    const int number = OpenFace(face, size, thickness);
    if (number < 0) return nullptr;
    std::unique_ptr<Font> font = std::make_unique<Font>();
    font->face = number;
    return font;
}

int CreateFontHandle(const char* face, int size, int thickness, int type) {
    Record("CreateFontHandle", face, size, thickness, type);
    std::unique_ptr<Font> font = MakeFont(face, size, thickness);
    if (!font) return noHandle;
    fonts.push_back(std::move(font));
    return static_cast<int>(fonts.size()) - 1;
}

void ResetFonts(int unused) {
    Record("ResetFonts", unused);
    fonts.clear();
    defaultFont.reset();
    CloseFaces();
    ForgetFontNames();
}

static Font* FindFont(int handle) {
    return handle >= 0 && handle < static_cast<int>(fonts.size()) ? fonts[handle].get() : nullptr;
}

static const Glyph& GlyphOf(Font& font, char16_t character) {
    auto& page = font.pages[character >> 8];
    if (!page) page = std::make_unique<std::array<std::unique_ptr<Glyph>, 256>>();
    std::unique_ptr<Glyph>& glyph = (*page)[character & 255];
    if (!glyph) {
        glyph = std::make_unique<Glyph>();
        RasterizeGlyph(font.face, character, *glyph);
    }
    return *glyph;
}

// Calls visit(glyph) for each character of the text; control characters have no glyph.
template <class Visit>
static void ForEachGlyph(Font& font, const char* text, int bytes, Visit visit) {
    for (int at = 0; at < bytes && text[at];) {
        char16_t character;
        at += DecodeShiftJis(text + at, bytes - at, &character);
        if (character >= ' ') visit(GlyphOf(font, character));
    }
}

static void DrawGlyph(const Glyph& glyph, int x, int y, uint32_t source) {
    const int left = x + glyph.left, top = y + glyph.top;
    const PixelRect area = ClipToTarget({left, top, left + glyph.width, top + glyph.height});
    if (Empty(area)) return;
    const uint8_t* coverage = glyph.coverage.data() + ptrdiff_t{glyph.width} * (area.top - top) + (area.left - left);
    backEnd->cover(area, coverage, glyph.width, source);
}

static void DrawBytes(int x, int y, const char* text, Color color, int fontHandle) {
    Font* font = FindFont(fontHandle);
    const uint32_t source = SourceOf(color);
    if (!font || PaintsNothing()) return;
    y = std::clamp(y, -placeLimit, placeLimit);
    int64_t pen = x;
    ForEachGlyph(*font, text, INT_MAX, [&](const Glyph& glyph) {
        if (pen > -placeLimit && pen < placeLimit) DrawGlyph(glyph, static_cast<int>(pen), y, source);
        pen += glyph.advance;
    });
}

static int WidthOf(Font* font, const char* text, int bytes) {
    int64_t width = 0;
    if (font) ForEachGlyph(*font, text, bytes, [&](const Glyph& glyph) { width += glyph.advance; });
    return static_cast<int>(std::min<int64_t>(width, INT_MAX));
}

static void Format(char (&text)[textLimit], const char* format, va_list arguments) {
    if (std::vsnprintf(text, sizeof text, format, arguments) < 0) text[0] = 0;
}

void DrawTextF(int x, int y, Color color, int font, const char* format, ...) {
    char text[textLimit];
    va_list arguments;
    va_start(arguments, format);
    Format(text, format, arguments);
    va_end(arguments);
    Record("DrawTextF", x, y, color, FontArgument{font}, text);
    DrawBytes(x, y, text, color, font);
}

void DrawTextAt(int x, int y, const char* text, Color color, int font) {
    Record("DrawTextAt", x, y, text, color, FontArgument{font});
    DrawBytes(x, y, text, color, font);
}

int TextWidthF(int font, const char* format, ...) {
    char text[textLimit];
    va_list arguments;
    va_start(arguments, format);
    Format(text, format, arguments);
    va_end(arguments);
    return WidthOf(FindFont(font), text, textLimit);
}

int TextWidthDefaultF(const char* format, ...) {
    char text[textLimit];
    va_list arguments;
    va_start(arguments, format);
    Format(text, format, arguments);
    va_end(arguments);
    if (!defaultFont) defaultFont = MakeFont("MS Gothic", 16, 1);
    return WidthOf(defaultFont.get(), text, textLimit);
}

int TextWidth(const char* text, int bytes, int font) { return WidthOf(FindFont(font), text, bytes); }
