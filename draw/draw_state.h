// draw_state.h -- what SetDrawTarget, SetBlend and SetBrightness have set, and what a colour becomes under it.
//
// Owns     target, blend and brightness.  Written by the operations of draw_layer.h and by images.cpp, which knows where the
//          pixels of a target lie.  Read by every drawing operation of this folder.
#pragma once
#include "draw/blend.h"
#include "draw/draw_layer.h"
#include "draw/surface.h"

struct DrawTarget {
    int handle;       // backBuffer or an image
    Surface surface;  // pixels is nullptr when there is nothing to draw on; then width and height are 0
    bool alpha;       // has an alpha channel
};
struct DrawState {
    DrawTarget target;
    int blendMode, blendParameter;
    uint32_t brightness;  // 0x00RRGGBB
    Color transparentColor;
    bool smooth;          // linear filter for scaled images
};
extern DrawState drawState;
void DefaultDrawState();

// What the state at hand does to any colour; worked out whenever the state changes, so that a call costs little.
struct PaintRule {
    BlendKind kind;
    bool unscaled;        // neither brightness nor parameter changes the colour
    uint32_t brightness;  // factors per channel, in this order
    uint32_t parameter;
    uint32_t setBits;     // of every source
    uint32_t weight;      // that of Paint
};
extern PaintRule paintRule;
void UpdatePaintRule();

// Whether the blend at hand leaves the target as it is.
inline bool PaintsNothing() { return paintRule.kind == BlendKind::nothing; }
// The source of a colour under the rule at hand; the rule's kind and weight go with it.
inline uint32_t SourceOf(Color color) {
    if (!paintRule.unscaled) color = MultiplyChannels(MultiplyChannels(color, paintRule.brightness), paintRule.parameter);
    return (color & ~alphaBits) | paintRule.setBits;
}
// The blend of an image under the state at hand.
Mix PrepareMix();
