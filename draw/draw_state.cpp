#include "draw/draw_state.h"

#include <algorithm>

#include "draw/recording.h"

DrawState drawState{{backBuffer, {nullptr, 0, 0, 0}, false}, blendNone, 255, 0xFFFFFF, 0, false};

static uint32_t PackChannels(int r, int g, int b) {
    const auto held = [](int value) { return static_cast<uint32_t>(std::clamp(value, 0, 255)); };
    return held(r) << 16 | held(g) << 8 | held(b);
}

Color MakeColor(int r, int g, int b) { return PackChannels(r, g, b); }

void SetBlend(int mode, int parameter) {
    Record("SetBlend", mode, parameter);
    drawState.blendMode      = mode;
    drawState.blendParameter = std::clamp(parameter, 0, 255);
}

void SetBrightness(int r, int g, int b) {
    Record("SetBrightness", r, g, b);
    drawState.brightness = PackChannels(r, g, b);
}

void SetTransparentColor(int r, int g, int b) {
    Record("SetTransparentColor", r, g, b);
    drawState.transparentColor = PackChannels(r, g, b);
}

void SetSmoothScaling(int smooth) { drawState.smooth = smooth != 0; }

// The operation behind a blend mode; a mode that is none of ours replaces, as blendNone does.
static BlendKind KindOf(int mode) {
    switch (mode) {
        case blendAlpha:
        case blendAlphaImage: return BlendKind::alpha;
        case blendAdd: return BlendKind::add;
        case blendSubtract:
        case blendSubtractPremultiplied: return BlendKind::subtract;
        case blendMultiply: return BlendKind::multiply;
        default: return BlendKind::copy;
    }
}

// Whether the blend at hand changes the target's alpha channel; without one the top byte stays 0.
static bool ChangesAlpha() { return drawState.target.alpha && drawState.blendMode == blendAlphaImage; }

static uint32_t AllChannels(int value) { return static_cast<uint32_t>(value) * 0x01010101u; }

Paint PreparePaint(Color color) {
    const uint32_t s = drawState.brightness == 0xFFFFFF ? color & 0xFFFFFF : MultiplyChannels(color, drawState.brightness);
    const int p = drawState.blendParameter;
    const BlendKind kind = KindOf(drawState.blendMode);
    switch (kind) {
        case BlendKind::alpha:
            if (p == 0) return {BlendKind::nothing, 0, 0};
            if (ChangesAlpha()) return {kind, s | alphaBits, AllChannels(p)};
            if (p == 255 && !drawState.target.alpha) return {BlendKind::copy, s, 0};
            return {kind, s, AllChannels(p) & ~alphaBits};
        case BlendKind::add:
        case BlendKind::subtract: {
            const uint32_t scaled = p == 255 ? s : MultiplyChannels(s, AllChannels(p));
            return {scaled ? kind : BlendKind::nothing, scaled, 0};
        }
        case BlendKind::multiply: return {s == 0xFFFFFF ? BlendKind::nothing : kind, s | alphaBits, 0};
        default: return {BlendKind::copy, drawState.target.alpha ? s | alphaBits : s, 0};
    }
}

Mix PrepareMix() {
    Mix mix{};
    mix.kind       = KindOf(drawState.blendMode);
    mix.parameter  = static_cast<uint32_t>(drawState.blendParameter);
    mix.brightness = drawState.brightness | alphaBits;
    if (mix.kind == BlendKind::copy && drawState.target.alpha)
        mix.setBits = alphaBits;
    else if (!ChangesAlpha())
        mix.keptBits = alphaBits;
    if (mix.parameter == 0 && mix.kind != BlendKind::copy && mix.kind != BlendKind::multiply) mix.kind = BlendKind::nothing;
    return mix;
}
