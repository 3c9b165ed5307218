#include "draw/draw_state.h"

#include <algorithm>

#include "draw/recording.h"

static constexpr DrawState restingState{{backBuffer, {nullptr, 0, 0, 0}, false}, blendNone, 255, 0xFFFFFF, 0, false};
DrawState drawState = restingState;
PaintRule paintRule{BlendKind::copy, true, 0xFFFFFF, 0xFFFFFF, 0, 0};

void DefaultDrawState() {
    drawState = restingState;
    UpdatePaintRule();
}

static uint32_t PackChannels(int r, int g, int b) {
    const auto held = [](int value) { return static_cast<uint32_t>(std::clamp(value, 0, 255)); };
    return held(r) << 16 | held(g) << 8 | held(b);
}

Color MakeColor(int r, int g, int b) { return PackChannels(r, g, b); }

void SetBlend(int mode, int parameter) {
    Record("SetBlend", mode, parameter);
    parameter = std::clamp(parameter, 0, 255);
    if (mode == drawState.blendMode && parameter == drawState.blendParameter) return;
    drawState.blendMode      = mode;
    drawState.blendParameter = parameter;
    UpdatePaintRule();
}

void SetBrightness(int r, int g, int b) {
    Record("SetBrightness", r, g, b);
    drawState.brightness = PackChannels(r, g, b);
    UpdatePaintRule();
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

void UpdatePaintRule() {
    const uint32_t parameter = AllChannels(drawState.blendParameter);
    const bool alphaTarget = drawState.target.alpha;
    PaintRule rule{KindOf(drawState.blendMode), false, drawState.brightness, 0xFFFFFF, 0, 0};
    switch (rule.kind) {
        case BlendKind::alpha:
            rule.setBits = ChangesAlpha() ? alphaBits : 0;
            rule.weight  = ChangesAlpha() ? parameter : parameter & ~alphaBits;
            if (drawState.blendParameter == 0) rule.kind = BlendKind::nothing;
            if (drawState.blendParameter == 255 && !alphaTarget) rule.kind = BlendKind::copy;
            break;
        case BlendKind::add:
        case BlendKind::subtract:
            rule.parameter = parameter & ~alphaBits;
            if (drawState.blendParameter == 0) rule.kind = BlendKind::nothing;
            break;
        case BlendKind::multiply: rule.setBits = alphaBits; break;
        default: rule.setBits = alphaTarget ? alphaBits : 0;
    }
    rule.unscaled = rule.brightness == 0xFFFFFF && rule.parameter == 0xFFFFFF;
    paintRule = rule;
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
