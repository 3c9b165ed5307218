// Any bytes as text, at any place, in both faces: drawn inside the surface, and as wide as its characters.
#include <cstdlib>
#include <cstring>
#include <string>

#include "draw/draw_layer.h"
#include "draw/shift_jis.h"
#include "platform/headless/script.h"

static int fonts[2];

extern "C" int LLVMFuzzerInitialize(int*, char***) {
    DefaultScript();
    DefaultDrawLayer();
    SetVideoMode(32, 128, 64, 60);
    if (InitDrawing() != 0) std::abort();
    fonts[0] = CreateFontHandle("MS Gothic", 15, 1, 0);
    fonts[1] = CreateFontHandle("Tahoma", 11, 1, 0);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    int place[2] = {};
    if (size < sizeof place + 1) return 0;
    std::memcpy(place, data, sizeof place);
    const int mode = data[sizeof place];
    const std::string text(reinterpret_cast<const char*>(data) + sizeof place + 1, size - sizeof place - 1);

    for (size_t at = 0; at < text.size();) {
        char16_t character = 0;
        const int taken = DecodeShiftJis(text.data() + at, static_cast<int>(text.size() - at), &character);
        if (taken < 1 || taken > 2 || at + taken > text.size()) std::abort();
        at += taken;
    }
    const Color color = MakeColor(255, 128, mode);
    SetBlend(mode & 31, mode);
    for (const int font : fonts) {
        DrawTextAt(place[0], place[1], text.c_str(), color, font);
        DrawTextF(place[0] % 160 - 20, place[1] % 96 - 20, color, font, "%s", text.c_str());
        if (TextWidth(text.c_str(), static_cast<int>(text.size()), font) < 0) std::abort();
        if (TextWidthF(font, "%s", text.c_str()) > TextWidth(text.c_str(), static_cast<int>(text.size()), font)) std::abort();
    }
    SetBlend(blendNone, 255);
    return 0;
}
