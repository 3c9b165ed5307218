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

// The colour under the state at hand.
Paint PreparePaint(Color color);
// The blend of an image under the state at hand.
Mix PrepareMix();
