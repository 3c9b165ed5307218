#include "graph/color_scheme.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "run_data/fixed_point.h"
#include "run_data/run_store.h"
#include "settings/settings.h"

Color channelColor[channelTotal][fileSlots];
Color backColor, panelBackColor, cursorColor, gridMajorColor, gridMinorColor, lapHoverColor;
Color lapBarColor[fileSlots];
Color scrollTrackColor, scrollThumbColor, scrollEdgeColor;
Color debugColor[3];
Color fileTextColor[fileSlots], lapTextColor[fileSlots], lapLineColor[fileSlots];
Color panelMask[fileSlots], tagMask[fileSlots];
Color whiteColor;
Color speedRamp[40], coolRamp[41], ColorRamp[256];

struct Rgb { int r, g, b; };
constexpr int schemeTotal = 2;  // 0 dark on black, 1 light on white

// The scheme the colours were last built for.
static int scheme;

static Color MakeColor(const Rgb& rgb) { return MakeColor(rgb.r, rgb.g, rgb.b); }

constexpr int paletteRows = 9;
static constexpr Rgb palette[schemeTotal][paletteRows] = {
    {{0, 255, 0}, {0, 255, 192}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {192, 255, 0}, {0, 150, 0}, {140, 140, 140}, {255, 255, 255}},
    {{0, 0, 255}, {0, 192, 255}, {255, 0, 0}, {255, 0, 192}, {192, 168, 0}, {128, 128, 0}, {0, 150, 0}, {100, 100, 100}, {10, 10, 10}},
};

// A colour of one meaning: dark scheme, light scheme.
struct ColorRole {
    Color* color;
    Rgb    rgb[schemeTotal];
};
static const ColorRole colorRoles[] = {
    {&backColor, {{0, 0, 0}, {255, 255, 255}}},
    {&panelBackColor, {{0, 0, 0}, {0, 0, 0}}},
    {&cursorColor, {{255, 255, 255}, {0, 0, 0}}},
    {&gridMajorColor, {{0, 0, 200}, {64, 64, 64}}},
    {&gridMinorColor, {{0, 0, 92}, {190, 190, 190}}},
    {&lapHoverColor, {{0, 0, 255}, {0, 0, 255}}},
    {&lapBarColor[0], {{0, 255, 0}, {0, 0, 255}}},
    {&lapBarColor[1], {{255, 0, 0}, {255, 0, 0}}},
    {&lapBarColor[2], {{255, 255, 255}, {255, 255, 255}}},
    {&whiteColor, {{255, 255, 255}, {255, 255, 255}}},
    {&scrollTrackColor, {{128, 128, 128}, {128, 128, 128}}},
    {&scrollThumbColor, {{128, 128, 32}, {92, 92, 255}}},
    {&scrollEdgeColor, {{255, 255, 64}, {0, 0, 128}}},
    {&debugColor[0], {{200, 255, 200}, {128, 128, 255}}},
    {&debugColor[1], {{200, 255, 235}, {128, 200, 255}}},
    {&debugColor[2], {{255, 200, 235}, {255, 128, 200}}},
};

// The same per file.
struct FileColorRole {
    Color* color;  // of File 1
    Rgb    rgb[schemeTotal][fileSlots];
};
static const FileColorRole fileColorRoles[] = {
    {fileTextColor, {{{200, 255, 200}, {255, 200, 200}, {200, 200, 200}}, {{20, 20, 128}, {128, 20, 20}, {64, 64, 64}}}},
    {lapTextColor, {{{180, 255, 180}, {255, 200, 200}, {200, 200, 200}}, {{180, 180, 255}, {255, 200, 200}, {200, 200, 200}}}},
    {lapLineColor, {{{0, 200, 0}, {210, 0, 0}, {210, 210, 210}}, {{0, 0, 200}, {200, 0, 0}, {120, 120, 120}}}},
    {panelMask, {{{128, 128, 128}, {192, 192, 192}, {192, 192, 192}}, {{192, 192, 192}, {192, 192, 192}, {192, 192, 192}}}},
    {tagMask, {{{192, 192, 192}, {192, 192, 192}, {192, 192, 192}}, {{16, 16, 16}, {64, 64, 64}, {64, 64, 64}}}},
};

Color PaletteColor(int index) { return MakeColor(palette[scheme][index >= 0 && index < 8 ? index : paletteRows - 1]); }

static void BuildGradients() {
    for (int k = 0; k < 40; k++) speedRamp[k] = MakeColor(255 - 255 * k / 40, 255 * k / 40, 0);
    for (int k = 0; k < 41; k++) coolRamp[k] = MakeColor(0, 255 - 255 * k / 40, 255 * k / 40);
}

void BuildColors() {
    if (colortype < 0 || colortype >= schemeTotal) return;
    scheme = colortype;
    for (const ColorRole& role : colorRoles) *role.color = MakeColor(role.rgb[scheme]);
    for (const FileColorRole& role : fileColorRoles)
        for (int slot = 0; slot < fileSlots; slot++) role.color[slot] = MakeColor(role.rgb[scheme][slot]);
    for (int channel = 0; channel < channelTotal; channel++) {
        channelColor[channel][0] = PaletteColor(colorCurrent[channel]);
        channelColor[channel][1] = PaletteColor(Color_Red[channel]);
        channelColor[channel][2] = PaletteColor(Color_White[channel]);
    }
    BuildGradients();
    const int transparent = scheme == 0 ? 0 : 255;
    SetTransparentColor(transparent, transparent, transparent);
}

// Blue, cyan, green, yellow, red: four quarters of 64 entries, eased by a quarter of a sine.
void BuildColorRamp() {
    for (int i = 0; i < 64; i++) {
        const int s = TruncToInt(255 * std::sin(i * 0.024932539652264305));  // 3.1415 / 126
        ColorRamp[i] = MakeColor(0, s, 255);
        ColorRamp[64 + i] = MakeColor(0, 255, 255 - s);
        ColorRamp[128 + i] = MakeColor(s, 255, 0);
        ColorRamp[192 + i] = MakeColor(255, 255 - s, 0);
    }
    ColorRamp[0] = MakeColor(64, 64, 64);
}

// A lone File 1 may wear colours of its own.
void ApplyColorSet(int forceNormal) {
    const bool alone = !slotInUse[1] && !slotInUse[2];
    const int  row = alone && ExclusiveF1Color && ExpertMode >= 2 && !forceNormal ? 1 : 0;
    std::copy(std::begin(colorStored[row]), std::end(colorStored[row]), colorCurrent);
    BuildColors();
}

void DefaultColorScheme() {
    const int wanted = colortype;
    colortype = 0;  // a colortype that names no scheme keeps the dark one
    BuildColors();
    colortype = wanted;
    BuildColorRamp();
}
