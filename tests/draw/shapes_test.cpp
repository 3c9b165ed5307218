#include <gtest/gtest.h>

#include "draw/draw_layer.h"
#include "draw/surface.h"
#include "platform/headless/script.h"

namespace {

uint32_t PixelAt(int x, int y) {
    const Surface& s = BackBufferSurface();
    return s.pixels[ptrdiff_t{s.pitch} * y + x];
}

struct Shapes : testing::Test {
    void SetUp() override {
        DefaultScript();
        ASSERT_EQ(SetVideoMode(32, 64, 48, 60), 0);
        ASSERT_EQ(InitDrawing(), 0);
        SetBlend(blendNone, 255);
    }
    void TearDown() override { ShutDownDrawing(); }
};

TEST_F(Shapes, FillRectLeavesOutRightAndBottom) {
    FillRect(2, 3, 5, 6, MakeColor(1, 2, 3));
    EXPECT_EQ(PixelAt(2, 3), 0x010203u);
    EXPECT_EQ(PixelAt(4, 5), 0x010203u);
    EXPECT_EQ(PixelAt(5, 5), 0u);
    EXPECT_EQ(PixelAt(4, 6), 0u);
}

TEST_F(Shapes, TextLightsPixels) {
    const int font = CreateFontHandle("MS Gothic", 15, 1, 0);
    ASSERT_GE(font, 0);
    DrawTextAt(0, 0, "88", MakeColor(255, 255, 255), font);
    int lit = 0;
    for (int y = 0; y < 15; ++y)
        for (int x = 0; x < 20; ++x) lit += PixelAt(x, y) != 0;
    EXPECT_GT(lit, 20);
}

}  // namespace
