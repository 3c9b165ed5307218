// glyphs.h -- the glyph source: coverage masks of single characters, from GDI on Windows and FreeType elsewhere.
//
// The layer asks once per character and font and keeps what it gets.
#pragma once
#include <cstdint>
#include <vector>

struct Glyph {
    int left, top;        // of the mask, from the pen at the top left of the line
    int width, height;    // of the mask
    int advance;          // pixels to the next character
    std::vector<uint8_t> coverage;  // width x height, 0 to 255
};
// The em of this face is as high as its cell, and all its panels count on that: half an em for a digit. So its size is that
// of the em, whatever stands in for it.
constexpr char emSizedFace[] = "MS Gothic";
// Opens a face at a pixel size (the cell height). A missing face is replaced by one that draws Japanese as well.
// Returns the source's own number, or -1.
int OpenFace(const char* face, int size, int thickness);
void CloseFaces();
// `unicode` is one UTF-16 code unit of code page 932.
void RasterizeGlyph(int face, char16_t unicode, Glyph& out);
