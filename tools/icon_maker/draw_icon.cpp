// draw_icon.cpp -- pixels of a drawing, and the .ico file around them.
#include <algorithm>
#include <cmath>
#include <iterator>

#include "tools/icon_maker/icon_maker.h"

namespace {

constexpr int fine = 8;  // samples a pixel, in each direction

bool Inside(const IconShape& shape, IconPoint p) {
    bool inside = false;  // even-odd, so that a second outline cuts a hole
    for (const auto& outline : shape.outlines) {
        for (size_t i = 0; i < outline.size(); ++i) {
            const IconPoint a = outline[i], b = outline[(i + 1) % outline.size()];
            if ((a.y > p.y) != (b.y > p.y) && p.x < a.x + (p.y - a.y) / (b.y - a.y) * (b.x - a.x)) inside = !inside;
        }
    }
    return inside;
}

bool NearLine(const IconShape& shape, IconPoint p) {
    const double reach = shape.strokeWidth * shape.strokeWidth / 4;
    for (const auto& outline : shape.outlines) {
        for (size_t i = 0; i + 1 < outline.size(); ++i) {
            const IconPoint a = outline[i], b = outline[i + 1];
            const double dx = b.x - a.x, dy = b.y - a.y, length = dx * dx + dy * dy;
            const double along = length > 0 ? std::clamp(((p.x - a.x) * dx + (p.y - a.y) * dy) / length, 0.0, 1.0) : 0;
            const double ox = p.x - a.x - along * dx, oy = p.y - a.y - along * dy;
            if (ox * ox + oy * oy <= reach) return true;
        }
    }
    return false;
}

struct Paint {
    double r = 0, g = 0, b = 0, a = 0;  // premultiplied, 0..1
    void Over(int64_t color, double opacity) {
        const double parts[] = {double(color >> 16 & 255) / 255, double(color >> 8 & 255) / 255, double(color & 255) / 255};
        double* into[] = {&r, &g, &b};
        for (int i = 0; i < 3; ++i) *into[i] = parts[i] * opacity + *into[i] * (1 - opacity);
        a = opacity + a * (1 - opacity);
    }
};

Paint PaintAt(const IconDrawing& drawing, IconPoint p) {
    Paint paint;
    for (const IconShape& shape : drawing.shapes) {
        if (shape.fill >= 0 && Inside(shape, p)) paint.Over(shape.fill, shape.opacity);
        if (shape.stroke >= 0 && NearLine(shape, p)) paint.Over(shape.stroke, shape.opacity);
    }
    return paint;
}

uint32_t Pixel(const IconDrawing& drawing, int size, int x, int y) {
    Paint sum;
    const double step = drawing.size / (size * fine);
    for (int j = 0; j < fine; ++j) {
        for (int i = 0; i < fine; ++i) {
            const Paint paint = PaintAt(drawing, {(x * fine + i + 0.5) * step, (y * fine + j + 0.5) * step});
            sum.r += paint.r;
            sum.g += paint.g;
            sum.b += paint.b;
            sum.a += paint.a;
        }
    }
    if (sum.a <= 0) return 0;
    const auto byte = [](double value) { return static_cast<uint32_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255)); };
    return byte(sum.a / (fine * fine)) << 24 | byte(sum.r / sum.a) << 16 | byte(sum.g / sum.a) << 8 | byte(sum.b / sum.a);
}

void Put(std::string& bytes, uint32_t value, int size) {
    for (int i = 0; i < size; ++i) bytes += static_cast<char>(value >> 8 * i);
}

std::string PackImage(const std::vector<uint32_t>& pixels, int size) {
    std::string bytes;
    const uint32_t header[] = {40, uint32_t(size), uint32_t(size * 2), 1 | 32 << 16, 0, 0, 0, 0, 0, 0};
    for (uint32_t field : header) Put(bytes, field, 4);
    for (int y = size - 1; y >= 0; --y)
        for (int x = 0; x < size; ++x) Put(bytes, pixels[y * size + x], 4);
    const int maskRow = (size + 31) / 32 * 4;
    for (int y = size - 1; y >= 0; --y) {
        std::string row(maskRow, '\0');
        for (int x = 0; x < size; ++x)
            if (pixels[y * size + x] >> 24 == 0) row[x / 8] |= static_cast<char>(0x80 >> x % 8);
        bytes += row;
    }
    return bytes;
}

}  // namespace

std::vector<uint32_t> DrawIcon(const IconDrawing& drawing, int size) {
    std::vector<uint32_t> pixels;
    for (int y = 0; y < size; ++y)
        for (int x = 0; x < size; ++x) pixels.push_back(Pixel(drawing, size, x, y));
    return pixels;
}

std::string PackIcon(const IconDrawing& drawing) {
    std::string directory, images;
    Put(directory, 0, 2);
    Put(directory, 1, 2);  // icon
    Put(directory, std::size(iconSizes), 2);
    for (int size : iconSizes) {
        const std::string image = PackImage(DrawIcon(drawing, size), size);
        Put(directory, size, 1);
        Put(directory, size, 1);
        Put(directory, 0, 2);
        Put(directory, 1, 2);   // planes
        Put(directory, 32, 2);  // bits
        Put(directory, static_cast<uint32_t>(image.size()), 4);
        Put(directory, static_cast<uint32_t>(6 + 16 * std::size(iconSizes) + images.size()), 4);
        images += image;
    }
    return directory + images;
}
