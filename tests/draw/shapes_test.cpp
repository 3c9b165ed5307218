#include <climits>

#include "tests/draw/drawing.h"

namespace {

constexpr Color white = Rgb(255, 255, 255), once = Rgb(1, 1, 1);

struct Shapes : Drawing {
    void CountDrawing() { SetBlend(blendAdd, 255); }
    bool NothingDrawnTwice() {
        for (const uint32_t pixel : Picture())
            if (pixel > once) return false;
        return true;
    }
};

TEST_F(Shapes, FillRectLeavesOutRightAndBottom) {
    FillRect(1, 1, 4, 3, white);
    EXPECT_EQ(Shown(5, 4), ".....\n.###.\n.###.\n.....\n");
}

TEST_F(Shapes, FillRectWithRightEqualToLeftDrawsNothing) {
    FillRect(5, 5, 5, 20, white);
    FillRect(5, 5, 20, 5, white);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Shapes, FillRectTakesCornersInEitherOrder) {
    FillRect(4, 3, 1, 1, white);
    EXPECT_EQ(Shown(5, 4), ".....\n.###.\n.###.\n.....\n");
}

TEST_F(Shapes, WhatLiesOutsideIsClippedNotRefused) {
    FillRect(-10, -10, 2, 2, white);
    FillRect(width - 1, height - 1, width + 10, height + 10, white);
    EXPECT_EQ(CountLit(Picture()), 5);
    FillRect(INT_MIN, INT_MIN, INT_MAX, INT_MAX, white);
    EXPECT_EQ(CountLit(Picture()), width * height);
}

TEST_F(Shapes, WhatLiesWhollyOutsideDrawsNothing) {
    FillRect(-10, 0, 0, 10, white);
    FillRect(width, 0, width + 10, 10, white);
    FillRect(0, height, 10, INT_MAX, white);
    DrawBoxOutline(-20, -20, -10, -10, white);
    DrawCircle(-100, -100, 20, white, 1, 1);
    DrawLineI(-5, -5, -1, 40, white);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Shapes, BoxOutlineIsOnePixelWideAndLeavesOutRightAndBottom) {
    CountDrawing();
    DrawBoxOutline(1, 1, 6, 5, once);
    EXPECT_EQ(Shown(7, 6), ".......\n.#####.\n.#...#.\n.#...#.\n.#####.\n.......\n");
    EXPECT_TRUE(NothingDrawnTwice());
}

TEST_F(Shapes, SmallBoxOutlinesDrawNoPixelTwice) {
    CountDrawing();
    DrawBoxOutline(0, 0, 1, 1, once);
    DrawBoxOutline(2, 0, 3, 4, once);
    DrawBoxOutline(4, 0, 8, 1, once);
    DrawBoxOutline(9, 0, 11, 2, once);
    DrawBoxOutline(12, 0, 12, 3, once);
    EXPECT_EQ(Shown(13, 4), "#.#.####.##..\n..#......##..\n..#..........\n..#..........\n");
    EXPECT_TRUE(NothingDrawnTwice());
}

TEST_F(Shapes, BoxOutlineTakesCornersInEitherOrderAndFarOnes) {
    DrawBoxOutline(6, 5, 1, 1, white);
    EXPECT_EQ(Shown(7, 6), ".......\n.#####.\n.#...#.\n.#...#.\n.#####.\n.......\n");
    Paper(0);
    DrawBoxOutline(INT_MIN, INT_MIN, INT_MAX, INT_MAX, white);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Shapes, CirclesAreRoundAndDrawNoPixelTwice) {
    CountDrawing();
    DrawCircle(4, 4, 3, once, 1, 1);
    EXPECT_EQ(Shown(9, 9),
              ".........\n...###...\n..#####..\n.#######.\n.#######.\n.#######.\n..#####..\n...###...\n.........\n");
    EXPECT_TRUE(NothingDrawnTwice());
}

TEST_F(Shapes, CircleOutlineHasItsThickness) {
    CountDrawing();
    DrawCircle(4, 4, 3, once, 0, 1);
    EXPECT_EQ(Shown(9, 9),
              ".........\n...###...\n..#...#..\n.#.....#.\n.#.....#.\n.#.....#.\n..#...#..\n...###...\n.........\n");
    Paper(0);
    CountDrawing();
    DrawCircle(10, 10, 8, once, 0, 3);
    EXPECT_TRUE(NothingDrawnTwice());
    for (int x = 2; x <= 4; ++x) EXPECT_TRUE(PixelAt(x, 10)) << x;
    EXPECT_FALSE(PixelAt(1, 10));
    EXPECT_FALSE(PixelAt(5, 10));
}

TEST_F(Shapes, CircleWithThicknessAboveItsRadiusIsFilled) {
    DrawCircle(10, 10, 5, white, 0, 9);
    const std::vector<uint32_t> outline = Picture();
    Paper(0);
    DrawCircle(10, 10, 5, white, 1, 1);
    EXPECT_EQ(Picture(), outline);
}

TEST_F(Shapes, NegativeRadiusDrawsNothingAndZeroOnePixel) {
    DrawCircle(10, 10, -1, white, 1, 1);
    DrawCircle(10, 10, INT_MIN, white, 0, 1);
    EXPECT_EQ(CountLit(Picture()), 0);
    DrawCircle(10, 10, 0, white, 1, 1);
    DrawCircle(20, 10, 0, white, 0, 1);
    EXPECT_EQ(CountLit(Picture()), 2);
}

TEST_F(Shapes, HugeCirclesAreClipped) {
    DrawCircle(32, 24, 1 << 30, white, 1, 1);
    EXPECT_EQ(CountLit(Picture()), width * height);
    Paper(0);
    DrawCircle(32, 24, 1 << 30, white, 0, 1);
    EXPECT_EQ(CountLit(Picture()), 0);
    DrawCircle(INT_MAX, INT_MIN, INT_MAX, white, 0, INT_MAX);
    DrawCircle(0, 0, 1000, white, 1, 1);
    EXPECT_EQ(CountLit(Picture()), width * height);
}

TEST_F(Shapes, MirroredQuartersOfACircleAreEqual) {
    for (int radius = 1; radius <= 20; ++radius) {
        Paper(0);
        DrawCircle(30, 22, radius, white, 0, 2);
        for (int dy = 0; dy <= radius; ++dy)
            for (int dx = 0; dx <= radius; ++dx) {
                const uint32_t pixel = PixelAt(30 + dx, 22 + dy);
                EXPECT_EQ(PixelAt(30 - dx, 22 + dy), pixel);
                EXPECT_EQ(PixelAt(30 + dx, 22 - dy), pixel);
                EXPECT_EQ(PixelAt(30 + dy, 22 + dx), pixel);  // and so are the eighths
            }
    }
}

TEST_F(Shapes, NothingIsDrawnWithoutASurface) {
    ShutDownDrawing();
    FillRect(0, 0, 10, 10, white);
    DrawLineF(0, 0, 10, 10, white, 1);
    DrawLineI(0, 0, 10, 10, white);
    DrawCircle(5, 5, 5, white, 1, 1);
    EXPECT_EQ(BackBufferSurface().pixels, nullptr);
}

TEST_F(Shapes, NullBackEndDrawsNothing) {
    SelectBackEnd(DrawBackEnd::none);
    FillRect(0, 0, 10, 10, white);
    DrawLineF(0, 0, 10, 3, white, 1);
    SelectBackEnd(DrawBackEnd::software);
    EXPECT_EQ(CountLit(Picture()), 0);
}

}  // namespace
