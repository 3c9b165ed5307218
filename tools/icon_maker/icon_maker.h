// icon_maker.h -- draws the icons of the program from vector sources and packs them into .ico files.
//
// Source  a small part of SVG, on a square view box: rect (with rx), circle, line, polyline, polygon and path (absolute
//         M, L, H, V, C, Z) with the attributes fill, stroke, stroke-width and opacity; colours as #rrggbb or none.
//         Lines end and join round.
// File    ICONDIR, one ICONDIRENTRY an image, then the images: BITMAPINFOHEADER, 32 bit BGRA from the bottom row up, and
//         a mask of one bit a pixel, set where alpha is 0. All little-endian.
#pragma once
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

struct IconPoint {
    double x, y;
};
struct IconShape {
    std::vector<std::vector<IconPoint>> outlines;  // of one path; closed ones repeat their first point
    int64_t fill = -1, stroke = -1;                // 0xRRGGBB, -1 for none
    double strokeWidth = 1, opacity = 1;
};
struct IconDrawing {
    double size = 32;  // of the view box
    std::vector<IconShape> shapes;
};
// 0 done; 1 with a message when the source uses anything else.
int ParseIcon(std::string_view source, IconDrawing& drawing, std::string& message);
// size x size pixels as 0xAARRGGBB, alpha not premultiplied.
std::vector<uint32_t> DrawIcon(const IconDrawing& drawing, int size);
// The bytes of an .ico file with one image of each size.
constexpr int iconSizes[] = {16, 32, 48};
std::string PackIcon(const IconDrawing& drawing);
