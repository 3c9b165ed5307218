#include <climits>
#include <cmath>
#include <limits>
#include <map>

#include "tests/draw/drawing.h"

namespace {

constexpr Color white = Rgb(255, 255, 255);

struct Lines : Drawing {
    // One step of grey for each time a pixel is drawn.
    void CountDrawing() { SetBlend(blendAdd, 255); }
    static constexpr Color once = Rgb(1, 1, 1);
};

// The rule as it is said, one pixel at a time, in exact numbers.
std::map<std::pair<int, int>, int> PixelsOfRule(float x1, float y1, float x2, float y2, int thickness) {
    const auto snap = [](float v) { return static_cast<int64_t>(std::nearbyint(double{v} * 256)); };
    int64_t a1 = snap(x1), b1 = snap(y1), a2 = snap(x2), b2 = snap(y2);
    const bool steep = std::abs(a2 - a1) <= std::abs(b2 - b1);
    if (steep) std::swap(a1, b1), std::swap(a2, b2);
    if (a1 > a2) std::swap(a1, a2), std::swap(b1, b2);
    std::map<std::pair<int, int>, int> pixels;
    const int limit = steep ? Drawing::height : Drawing::width, across = steep ? Drawing::width : Drawing::height;
    for (int m = 0; m < limit; ++m) {
        const int64_t centre = m * 256 + 128;
        if (centre < a1 || centre >= a2) continue;
        const double exact = static_cast<double>(b1) + static_cast<double>((centre - a1) * (b2 - b1)) / static_cast<double>(a2 - a1);
        const int minor = static_cast<int>(std::floor(exact / 256));
        for (int t = 0; t < thickness; ++t) {
            const int n = minor - (thickness - 1) / 2 + t;
            if (n >= 0 && n < across) ++pixels[steep ? std::pair{n, m} : std::pair{m, n}];
        }
    }
    return pixels;
}

TEST_F(Lines, EveryLineCoversThePixelsOfTheRuleOnce) {
    Random random(11);
    const auto place = [&random] {  // around the target, in 1/256 and in whole pixels
        return random.Below(3) ? static_cast<float>(random.Between(-20 * 256, 90 * 256)) / 256 : static_cast<float>(random.Below(50));
    };
    for (int turn = 0; turn < 4000; ++turn) {
        float x1 = place(), y1 = place(), x2 = place(), y2 = place();
        if (turn % 2) x2 = x1 + random.Between(-300, 300) / 256.0f, y2 = y1 + random.Between(-900, 900) / 256.0f;
        const int thickness = turn % 3 ? 1 : random.Between(1, 6);
        SCOPED_TRACE(testing::Message() << x1 << ' ' << y1 << ' ' << x2 << ' ' << y2 << ' ' << thickness);
        Paper(0);
        CountDrawing();
        DrawLineF(x1, y1, x2, y2, once, thickness);
        const auto expected = PixelsOfRule(x1, y1, x2, y2, thickness);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) {
                const auto found = expected.find({x, y});
                ASSERT_EQ(PixelAt(x, y), found == expected.end() ? 0u : found->second * 0x010101u) << x << ' ' << y;
            }
    }
}

TEST_F(Lines, FlatTraceDrawsEachColumnOnce) {
    CountDrawing();
    float x = -3.3f;
    for (int piece = 0; piece < 200; ++piece, x += 0.37f) DrawLineF(x, 10.2f, x + 0.37f, 10.2f, once, 1);
    for (int column = 0; column < width; ++column) EXPECT_EQ(PixelAt(column, 10), 0x010101u) << column;
}

TEST_F(Lines, WholeNumbersNameAPixel) {
    DrawLineF(10, 2, 10, 5, white, 1);
    DrawLineF(20, 7, 23, 7, white, 1);
    EXPECT_EQ(CountLit(Picture()), 6);
    EXPECT_TRUE(PixelAt(10, 2) && PixelAt(10, 3) && PixelAt(10, 4));
    EXPECT_TRUE(PixelAt(20, 7) && PixelAt(21, 7) && PixelAt(22, 7));
}

TEST_F(Lines, LineOfNoLengthDrawsNothing) {
    DrawLineF(5, 5, 5, 5, white, 3);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Lines, PointSizedSegmentOfAColumnIsOnePixel) {
    DrawLineF(5, 9.4f, 6, 9.4f, white, 1);
    EXPECT_EQ(CountLit(Picture()), 1);
    EXPECT_EQ(PixelAt(5, 9), white);
}

TEST_F(Lines, ThicknessLiesAcrossAndBeginsHalfBefore) {
    DrawLineF(10, 20, 20, 20, white, 4);
    EXPECT_FALSE(PixelAt(12, 18));
    EXPECT_TRUE(PixelAt(12, 19) && PixelAt(12, 20) && PixelAt(12, 21) && PixelAt(12, 22));
    EXPECT_FALSE(PixelAt(12, 23));
}

TEST_F(Lines, ThicknessBelowOneIsOne) {
    DrawLineF(10, 20, 20, 20, white, 0);
    DrawLineF(10, 30, 20, 30, white, INT_MIN);
    EXPECT_EQ(CountLit(Picture()), 20);
}

TEST_F(Lines, HugeThicknessFillsTheTarget) {
    DrawLineF(-10, 20, 90, 20, white, INT_MAX);
    EXPECT_EQ(CountLit(Picture()), width * height);
}

TEST_F(Lines, FarEndsAreClipped) {
    CountDrawing();
    DrawLineF(-1e6f, -1e6f, 1e6f, 1e6f, once, 1);
    for (int i = 0; i < height; ++i) EXPECT_EQ(PixelAt(i, i), 0x010101u) << i;
    EXPECT_EQ(CountLit(Picture()), height);
    DrawLineF(30, -1e30f, 30, 1e30f, white, 1);
    for (int y = 0; y < height; ++y) EXPECT_EQ(PixelAt(30, y), white);
    DrawLineI(INT_MIN, 7, INT_MAX, 7, white);
    for (int x = 0; x < width; ++x) EXPECT_EQ(PixelAt(x, 7), white);
}

TEST_F(Lines, EndsThatAreNoNumberDrawAsZero) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    DrawLineF(nan, nan, nan, nan, white, 1);
    EXPECT_EQ(CountLit(Picture()), 0);
    DrawLineF(nan, 3, 4, 3, white, 1);
    EXPECT_EQ(CountLit(Picture()), 4);
    DrawLineF(-std::numeric_limits<float>::infinity(), 5, 2, 5, white, 1);
    EXPECT_EQ(CountLit(Picture()), 6);
}

TEST_F(Lines, IntegerLineDrawsBothEnds) {
    DrawLineI(2, 3, 6, 3, white);
    EXPECT_EQ(Shown(8, 5), "........\n........\n........\n..#####.\n........\n");
    Paper(0);
    DrawLineI(4, 4, 4, 1, white);
    EXPECT_EQ(Shown(8, 6), "........\n....#...\n....#...\n....#...\n....#...\n........\n");
}

TEST_F(Lines, IntegerLineOfOnePointIsAPixel) {
    DrawLineI(5, 6, 5, 6, white);
    EXPECT_EQ(CountLit(Picture()), 1);
    EXPECT_EQ(PixelAt(5, 6), white);
}

TEST_F(Lines, IntegerLineIsTheSameFromBothEndsAndTouchesThemBoth) {
    Random random(12);
    for (int turn = 0; turn < 500; ++turn) {
        const int x1 = random.Below(width), y1 = random.Below(height), x2 = random.Below(width), y2 = random.Below(height);
        Paper(0);
        CountDrawing();
        DrawLineI(x1, y1, x2, y2, once);
        const std::vector<uint32_t> there = Picture();
        EXPECT_EQ(CountLit(there), std::max(std::abs(x2 - x1), std::abs(y2 - y1)) + 1);
        EXPECT_EQ(PixelAt(x1, y1), 0x010101u);
        EXPECT_EQ(PixelAt(x2, y2), 0x010101u);
        Paper(0);
        CountDrawing();
        DrawLineI(x2, y2, x1, y1, once);
        ASSERT_EQ(Picture(), there);
    }
}

TEST_F(Lines, ClippedIntegerLineIsPartOfTheWholeOne) {
    Random random(13);
    const int image = CreateDrawableImage(200, 200, 0);
    for (int turn = 0; turn < 300; ++turn) {
        int ends[4];
        for (int& end : ends) end = random.Between(-70, 129);
        Paper(0);
        DrawLineI(ends[0], ends[1], ends[2], ends[3], white);
        SetDrawTarget(image);
        ClearImageBlack(image);
        DrawLineI(ends[0] + 70, ends[1] + 70, ends[2] + 70, ends[3] + 70, white);
        SetDrawTarget(backBuffer);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) ASSERT_EQ(PixelAt(x, y), PixelOf(ImageSurface(image), x + 70, y + 70));
    }
}

}  // namespace
