// drawing.h -- a small window to draw on, for the tests of this folder.
#pragma once
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "draw/draw_layer.h"
#include "draw/surface.h"
#include "platform/headless/script.h"

// A surface of 64 x 48 pixels in the resting state.
struct Drawing : testing::Test {
    static constexpr int width = 64, height = 48;
    void SetUp() override {
        DefaultScript();
        DefaultDrawLayer();
        ASSERT_EQ(SetVideoMode(32, width, height, 60), 0);
        ASSERT_EQ(InitDrawing(), 0);
        SetSmoothScaling(1);
    }
    void TearDown() override { ShutDownDrawing(); }
};

constexpr Color Rgb(int r, int g, int b) { return static_cast<Color>(r << 16 | g << 8 | b); }

inline uint32_t PixelOf(const Surface& s, int x, int y) { return s.pixels[ptrdiff_t{s.pitch} * y + x]; }
inline uint32_t PixelAt(int x, int y) { return PixelOf(BackBufferSurface(), x, y); }

// A surface's pixels, row after row.
inline std::vector<uint32_t> PixelsOf(const Surface& s) {
    std::vector<uint32_t> pixels;
    for (int y = 0; y < s.height; ++y)
        for (int x = 0; x < s.width; ++x) pixels.push_back(PixelOf(s, x, y));
    return pixels;
}
inline std::vector<uint32_t> Picture() { return PixelsOf(BackBufferSurface()); }
inline int CountLit(const std::vector<uint32_t>& pixels) {
    return static_cast<int>(std::count_if(pixels.begin(), pixels.end(), [](uint32_t p) { return p != 0; }));
}
// Everything to one colour.
inline void Paper(Color color) {
    SetBlend(blendNone, 255);
    FillRect(0, 0, Drawing::width, Drawing::height, color);
}
// The top left part of the surface as letters, a row a line.
inline std::string Shown(int columns, int rows) {
    std::string text;
    for (int y = 0; y < rows; ++y) {
        for (int x = 0; x < columns; ++x) text += PixelAt(x, y) ? '#' : '.';
        text += '\n';
    }
    return text;
}

// Random numbers that are the same everywhere.
struct Random {
    uint64_t state;
    explicit Random(uint64_t seed) : state(seed * 2862933555777941757u + 3037000493u) {}
    uint32_t Next() {
        state = state * 6364136223846793005u + 1442695040888963407u;
        return static_cast<uint32_t>(state >> 32);
    }
    int Below(int limit) { return static_cast<int>(Next() % static_cast<uint32_t>(limit)); }
    int Between(int low, int high) { return low + Below(high - low + 1); }
};
