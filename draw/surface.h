// surface.h -- access to pixels for what shows, saves and tests them; views never include this.
#pragma once
#include <cstdint>

// 32 bit pixels, 0x00RRGGBB (blue first in memory), top row first. pitch is in pixels: an odd multiple of 16, so that
// rows of one column do not fall on the same cache sets.
struct Surface {
    uint32_t* pixels;
    int width, height, pitch;
};
// The window's surface; pixels is nullptr before InitDrawing.
const Surface& BackBufferSurface();
// Pixels of an image; pixels is nullptr for a bad handle.
Surface ImageSurface(int image);
// Which last stage runs: the software rasteriser, or nothing, which times the callers alone.
enum class DrawBackEnd { software, none };
void SelectBackEnd(DrawBackEnd backEnd);
// What a lost device does: the next ProcessMessages makes the surface anew and calls the restore callback.
void LoseSurface();
