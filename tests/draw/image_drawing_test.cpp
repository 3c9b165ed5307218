#include <array>
#include <cmath>
#include <limits>

#include "draw/images.h"
#include "tests/draw/drawing.h"

namespace {

constexpr Color white = Rgb(255, 255, 255), red = Rgb(255, 0, 0), grey = Rgb(100, 100, 100);
constexpr double quarterTurn = 1.5707963267948966;

struct ImageDrawing : Drawing {
    static int Make(int columns, int rows, bool alpha = false) {
        SetImageOptions({true, alpha});
        return CreateDrawableImage(columns, rows, 0);
    }
    static void Put(int image, int x, int y, Color color) {
        SetDrawTarget(image);
        FillRect(x, y, x + 1, y + 1, color);
        SetDrawTarget(backBuffer);
    }
    // Every texel another colour.
    static int Pattern(int columns, int rows, uint64_t seed = 1) {
        Random random(seed);
        const int image = Make(columns, rows);
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < columns; ++x) Put(image, x, y, random.Next() & 0xFFFFFF);
        return image;
    }
    static int Plain(int columns, int rows, Color color) {
        const int image = Make(columns, rows);
        SetDrawTarget(image);
        FillRect(0, 0, columns, rows, color);
        SetDrawTarget(backBuffer);
        return image;
    }
};

// --- plain copies ------------------------------------------------------------------------------------------------------------

TEST_F(ImageDrawing, ScaleOneIsAPlainCopyAtTheFlooredPosition) {
    const int image = Pattern(5, 4);
    struct Row {
        float x, y, pivotX, pivotY;
        int left, top;
    };
    const Row rows[] = {{10, 20, 0, 0, 10, 20},    {10.9f, 20.9f, 0, 0, 10, 20}, {10, 20, 2, 1, 8, 19},
                        {10.5f, 20.5f, 2, 2, 8, 18}, {0.5f, 0.5f, 1, 1, -1, -1},   {60, 46, 0, 0, 60, 46}};
    for (const Row& row : rows)
        for (const bool scaledXY : {false, true}) {
            Paper(0);
            if (scaledXY)
                DrawImageScaledXY(row.x, row.y, row.pivotX, row.pivotY, image, 1, 1);
            else
                DrawImageRotated(row.x, row.y, row.pivotX, row.pivotY, image, 0, 1, 0);
            for (int y = 0; y < height; ++y)
                for (int x = 0; x < width; ++x) {
                    const int u = x - row.left, v = y - row.top;
                    const bool inside = u >= 0 && u < 5 && v >= 0 && v < 4;
                    ASSERT_EQ(PixelAt(x, y), inside ? PixelOf(ImageSurface(image), u, v) : 0u) << x << ' ' << y;
                }
        }
}

TEST_F(ImageDrawing, StretchToItsOwnSizeIsAPlainCopy) {
    const int image = Pattern(5, 4);
    EXPECT_EQ(DrawImageStretched(3, 2, 8, 6, image, 0), 0);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 5; ++x) EXPECT_EQ(PixelAt(3 + x, 2 + y), PixelOf(ImageSurface(image), x, y));
}

// --- stretches -----------------------------------------------------------------------------------------------------------------

// The filter as it is said: taps half a texel about the place, 8 bit weights, first down and then across.
uint32_t Filtered(const Surface& s, double u, double v) {
    const auto tap = [](double place, int size, int* first, int* second, int* weight) {
        const double at = std::floor((place - 0.5) * 256) / 256;
        const int low = static_cast<int>(std::floor(at));
        *weight = static_cast<int>((at - low) * 256);
        *first  = std::clamp(low, 0, size - 1);
        *second = std::clamp(low + 1, 0, size - 1);
    };
    int x1, x2, wx, y1, y2, wy;
    tap(u, s.width, &x1, &x2, &wx);
    tap(v, s.height, &y1, &y2, &wy);
    uint32_t result = 0;
    for (int shift = 0; shift < 24; shift += 8) {
        const auto channel = [&](int x, int y) { return static_cast<int>(PixelOf(s, x, y) >> shift & 255); };
        const auto mix = [](int a, int b, int w) { return (a * (256 - w) + b * w + 128) >> 8; };
        const int left = mix(channel(x1, y1), channel(x1, y2), wy), right = mix(channel(x2, y1), channel(x2, y2), wy);
        result |= static_cast<uint32_t>(mix(left, right, wx)) << shift;
    }
    return result;
}

// Sizes whose steps are whole in binary, so that the places of the test are exact.
TEST_F(ImageDrawing, StretchFiltersLinearlyBetweenTexels) {
    const int image = Pattern(8, 4);
    const Surface s = ImageSurface(image);
    for (const auto& [columns, rows] : {std::pair{16, 8}, {32, 32}, {64, 16}, {4, 2}, {8, 16}, {2, 32}, {64, 4}}) {
        Paper(0);
        DrawImageStretched(0, 0, columns, rows, image, 0);
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < columns; ++x)
                ASSERT_EQ(PixelAt(x, y), Filtered(s, (x + 0.5) * 8 / columns, (y + 0.5) * 4 / rows)) << columns << ' ' << x << ' ' << y;
    }
}

TEST_F(ImageDrawing, ClippedStretchShowsPartOfTheWholeOne) {
    const int image = Pattern(8, 6), large = Make(200, 200);
    for (const auto& [x1, y1, x2, y2] : {std::array{-70, -50, 90, 100}, {-3, -3, 13, 9}, {40, 30, 99, 120}, {-64, 10, 128, 11}}) {
        Paper(0);
        DrawImageStretched(x1, y1, x2, y2, image, 0);
        SetDrawTarget(large);
        ClearImageBlack(large);
        DrawImageStretched(x1 + 70, y1 + 60, x2 + 70, y2 + 60, image, 0);
        SetDrawTarget(backBuffer);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x) ASSERT_EQ(PixelAt(x, y), PixelOf(ImageSurface(large), x + 70, y + 60));
    }
}

TEST_F(ImageDrawing, StretchWithY1AboveY2IsUpsideDown) {
    const int image = Make(2, 4);
    for (int y = 0; y < 4; ++y) Put(image, 0, y, Rgb(0, 0, 50 * (y + 1))), Put(image, 1, y, red);
    DrawImageStretched(3, 9, 5, 5, image, 0);
    for (int y = 0; y < 4; ++y) {
        EXPECT_EQ(PixelAt(3, 5 + y), Rgb(0, 0, 50 * (4 - y))) << y;
        EXPECT_EQ(PixelAt(4, 5 + y), red);
    }
    EXPECT_EQ(CountLit(Picture()), 8);
}

TEST_F(ImageDrawing, StretchWithX1AboveX2IsMirrored) {
    const int image = Pattern(3, 2);
    DrawImageStretched(8, 5, 5, 7, image, 0);
    for (int x = 0; x < 3; ++x) EXPECT_EQ(PixelAt(5 + x, 5), PixelOf(ImageSurface(image), 2 - x, 0));
}

TEST_F(ImageDrawing, StretchOntoNothingDrawsNothing) {
    const int image = Plain(3, 2, white);
    EXPECT_EQ(DrawImageStretched(5, 5, 5, 20, image, 0), 0);
    EXPECT_EQ(DrawImageStretched(5, 5, 20, 5, image, 0), 0);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(ImageDrawing, HugeStretchesAreClipped) {
    const int image = Plain(3, 2, white);
    DrawImageStretched(-2147483647 - 1, -2147483647 - 1, 2147483647, 2147483647, image, 0);
    EXPECT_EQ(CountLit(Picture()), width * height);
    DrawImageStretched(2147483647, 2147483647, -2147483647 - 1, -2147483647 - 1, image, 1);
}

TEST_F(ImageDrawing, WithoutSmoothScalingTexelsStaySharp) {
    SetSmoothScaling(0);
    const int image = Pattern(2, 2);
    DrawImageStretched(0, 0, 6, 4, image, 0);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 6; ++x) EXPECT_EQ(PixelAt(x, y), PixelOf(ImageSurface(image), x / 3, y / 2));
}

// The grid strip: eight equal pixels a row, drawn eight clients wide and at any magnification.
TEST_F(ImageDrawing, NarrowStripOfEqualRowsCoversTheClient) {
    const int strip = Make(8, height);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < 8; ++x) Put(strip, x, y, Rgb(y, 2 * y, 255 - y));
    DrawImageScaledXY(0, 0, 0, 0, strip, width, 1);
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) ASSERT_EQ(PixelAt(x, y), Rgb(y, 2 * y, 255 - y));
}

// One differing texel makes the row take the ordinary way: all other pixels must be as before.
TEST_F(ImageDrawing, EqualRowsAreDrawnAsTheFilterWouldDrawThem) {
    const int wide = Make(70, 9), narrow = Make(8, 9);  // too wide a row is not looked at whole
    for (int y = 0; y < 9; ++y) {
        for (int x = 0; x < 70; ++x) Put(wide, x, y, Rgb(20 * y, 255 - 9 * y, y * y));
        for (int x = 0; x < 8; ++x) Put(narrow, x, y, Rgb(20 * y, 255 - 9 * y, y * y));
    }
    for (const int mode : {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply}) {
        std::vector<uint32_t> pictures[2];
        for (const int image : {wide, narrow}) {
            Paper(grey);
            SetBlend(mode, 180);
            DrawImageStretched(-100, -3, 600, 60, image, 1);
            pictures[image == narrow] = Picture();
        }
        EXPECT_EQ(pictures[0], pictures[1]) << mode;
    }
}

TEST_F(ImageDrawing, ScaledXYTakesSeparateScalesAboutItsPivot) {
    const int image = Plain(4, 4, white);
    DrawImageScaledXY(20, 20, 2, 2, image, 2, 0.5);
    const std::vector<uint32_t> drawn = Picture();
    EXPECT_EQ(CountLit(drawn), 8 * 2);
    EXPECT_TRUE(PixelAt(16, 19) && PixelAt(23, 20));
    Paper(0);
    DrawImageScaledXY(20, 20, 2, 2, image, 0, 1);
    DrawImageScaledXY(20, 20, 2, 2, image, std::numeric_limits<double>::quiet_NaN(), 1);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(ImageDrawing, ScaledXYIsNotTransparent) {
    const int image = Plain(4, 4, 0);
    Paper(white);
    DrawImageScaledXY(0, 0, 0, 0, image, 1, 1);
    EXPECT_EQ(CountLit(Picture()), width * height - 16);
}

// --- turned images ---------------------------------------------------------------------------------------------------------------

TEST_F(ImageDrawing, QuarterTurnGoesClockwise) {
    const int image = Pattern(4, 4);
    DrawImageRotated(20, 20, 2, 2, image, 0, 1, quarterTurn);
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(PixelAt(18 + x, 18 + y), PixelOf(ImageSurface(image), y, 3 - x)) << x << ' ' << y;
    EXPECT_EQ(CountLit(Picture()), 16);
}

TEST_F(ImageDrawing, TurnedImageCoversThePixelsWhoseCentreLiesInIt) {
    const int image = Plain(12, 6, white);
    Random random(21);
    for (int turn = 0; turn < 200; ++turn) {
        const float x = static_cast<float>(random.Between(0, 6400)) / 100, y = static_cast<float>(random.Between(0, 4800)) / 100;
        const double angle = random.Between(1, 628) / 100.0, scale = random.Between(20, 300) / 100.0;
        Paper(0);
        DrawImageRotated(x, y, 5, 2, image, 0, scale, angle);
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column) {
                const double dx = column + 0.5 - x, dy = row + 0.5 - y;
                const double u = 5 + (dx * std::cos(angle) + dy * std::sin(angle)) / scale;
                const double v = 2 + (dy * std::cos(angle) - dx * std::sin(angle)) / scale;
                const double edge = std::min({std::fabs(u), std::fabs(u - 12), std::fabs(v), std::fabs(v - 6)});
                if (edge < 1e-4) continue;  // on the edge itself either answer is right
                ASSERT_EQ(PixelAt(column, row) != 0, u >= 0 && u < 12 && v >= 0 && v < 6) << column << ' ' << row;
            }
    }
}

TEST_F(ImageDrawing, FullTurnLooksLikeNone) {
    const int image = Pattern(9, 9);
    DrawImageRotated(20, 20, 4, 4, image, 0, 3, 0);
    const std::vector<uint32_t> unturned = Picture();
    Paper(0);
    DrawImageRotated(20, 20, 4, 4, image, 0, 3, 4 * quarterTurn);
    const std::vector<uint32_t> turned = Picture();
    for (size_t i = 0; i < turned.size(); ++i)
        for (int shift = 0; shift < 24; shift += 8)  // a weight may differ by one of 256
            ASSERT_NEAR(static_cast<int>(turned[i] >> shift & 255), static_cast<int>(unturned[i] >> shift & 255), 2);
}

TEST_F(ImageDrawing, NumbersOutOfRangeDrawNothing) {
    const int image = Plain(8, 8, white);
    const double nan = std::numeric_limits<double>::quiet_NaN(), infinity = std::numeric_limits<double>::infinity();
    for (const double scale : {0.0, -1.0, 1e-12, nan})
        for (const double angle : {0.0, 1.0}) DrawImageRotated(20.5f, 20.5f, 4, 4, image, 0, scale, angle);
    for (const double angle : {nan, infinity}) DrawImageRotated(20, 20, 4, 4, image, 0, 1, angle);
    DrawImageRotated(1e30f, 20, 4, 4, image, 0, 2, 0.5);
    DrawImageRotated(1e30f, -1e30f, 4, 4, image, 0, 2, 0);
    EXPECT_EQ(CountLit(Picture()), 0);
    DrawImageRotated(20, 20, 4, 4, image, 0, infinity, 0.5);
    DrawImageRotated(20, 20, 4, 4, image, 0, 1e9, 0.5);
    DrawImageRotated(static_cast<float>(nan), 20, 4, 4, image, 1, 3, 0.5);
}

// --- transparent draws -------------------------------------------------------------------------------------------------------------

TEST_F(ImageDrawing, TransparentColourIsNotDrawnInAnyMode) {
    const int image = Plain(4, 1, red);
    Put(image, 1, 0, Rgb(7, 7, 7));
    SetTransparentColor(7, 7, 7);
    for (const int mode : {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply, blendAlphaImage, blendSubtractPremultiplied}) {
        SCOPED_TRACE(mode);
        Paper(grey);
        SetBlend(mode, 200);
        DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
        EXPECT_EQ(PixelAt(1, 0), grey);
        EXPECT_NE(PixelAt(0, 0), grey);
        EXPECT_NE(PixelAt(2, 0), grey);
    }
}

TEST_F(ImageDrawing, WithoutTheFlagTheTransparentColourIsDrawn) {
    const int image = Plain(2, 1, Rgb(0, 0, 0));
    Paper(grey);
    DrawImageRotated(0, 0, 0, 0, image, 0, 1, 0);
    EXPECT_EQ(PixelAt(0, 0), 0u);
}

TEST_F(ImageDrawing, FilteredEdgesOfTransparentImagesHaveNoFringe) {
    // A white square on the transparent black, over white: whatever the edge's coverage is, the picture stays white.
    const int image = Make(6, 6);
    for (int y = 2; y < 4; ++y)
        for (int x = 2; x < 4; ++x) Put(image, x, y, white);
    for (const double angle : {0.0, 0.4}) {
        Paper(white);
        SetBlend(blendAlpha, 255);
        DrawImageRotated(30, 24, 3, 3, image, 1, 3.7, angle);
        for (const uint32_t pixel : Picture()) ASSERT_GE(pixel & 255, 254u);
    }
}

TEST_F(ImageDrawing, WithBlendingOffAFilteredTexelIsDrawnFromHalfItsCoverage) {
    const int image = Make(4, 1);
    for (int x = 2; x < 4; ++x) Put(image, x, 0, red);
    Paper(grey);
    DrawImageStretched(0, 0, 32, 1, image, 1);
    // the border lies at 16; every pixel is whole in its colour or is not there
    for (int x = 0; x < 32; ++x) EXPECT_EQ(PixelAt(x, 0), x < 16 ? grey : red) << x;
}

TEST_F(ImageDrawing, VisibleBoxLeavesOutOnlyWhatDoesNotShow) {
    Random random(31);
    const int image = Make(40, 30);
    for (int turn = 0; turn < 60; ++turn) {
        // the same picture with one lit texel in each corner, whose box is the whole image
        ClearImageBlack(image);
        const int left = random.Below(30), top = random.Below(20);
        for (int i = 0; i < 12; ++i) Put(image, left + random.Below(10), top + random.Below(10), random.Next() & 0xFFFFFF);
        const double angle = turn % 2 ? random.Between(1, 628) / 100.0 : 0, scale = random.Between(30, 300) / 100.0;
        Paper(grey);
        SetBlend(blendAlpha, 200);
        DrawImageRotated(30, 20, 20, 15, image, 1, scale, angle);
        const std::vector<uint32_t> boxed = Picture();
        Image& found = *FindImage(image);
        VisibleTexels(found);
        found.visible = {0, 0, 40, 30};
        Paper(grey);
        SetBlend(blendAlpha, 200);
        DrawImageRotated(30, 20, 20, 15, image, 1, scale, angle);
        ASSERT_EQ(Picture(), boxed);
    }
}

TEST_F(ImageDrawing, VisibleBitsLeaveOutOnlyWhatDoesNotShow) {
    constexpr int modes[] = {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply};
    Random random(32);
    for (int turn = 0; turn < 400; ++turn) {
        const int columns = random.Between(1, 300), rows = random.Between(1, 20);
        const int image = Make(columns, rows, random.Below(2) == 0);
        for (int i = random.Below(12); i > 0; --i) Put(image, random.Below(columns), random.Below(rows), random.Next() & 0xFFFFFF);
        const int left = random.Between(-200, 60), top = random.Between(-10, 40), mirrored = random.Below(4) == 0;
        const double scale = turn % 5 ? random.Between(20, 300) / 100.0 : 1.0;
        SetSmoothScaling(random.Below(4) != 0);
        const auto draw = [&] {
            Paper(grey);
            SetBlend(modes[turn % 5], 180);
            if (mirrored)
                DrawImageStretched(left + 200, top, left, top + 20, image, 1);
            else
                DrawImageRotated(static_cast<float>(left), static_cast<float>(top), 0, 0, image, 1, scale, 0);
            return Picture();
        };
        const std::vector<uint32_t> drawn = draw();
        Image& found  = *FindImage(image);
        found.visible = {0, 0, columns, rows};
        std::fill_n(found.visibleBits.get(), rows * MaskWords(found.surface), ~uint64_t{0});
        ASSERT_EQ(draw(), drawn) << turn;
        DeleteImage(image);
    }
}

// --- samples kept from draw to draw --------------------------------------------------------------------------------------------

struct KeptPicture : ImageDrawing {
    static KeptState StateOf(int image) { return FindImage(image)->kept.state; }
    // A few dots and lines with clear edges on a clear image.
    static int Sketch(int columns, int rows, Random& random) {
        const int image = Make(columns, rows, true);
        SetDrawTarget(image);
        for (int i = 0; i < 6; ++i) {
            SetBlend(blendAlphaImage, random.Below(256));
            DrawCircle(random.Below(columns), random.Below(rows), random.Below(4), random.Next() & 0xFFFFFF, 1, 1);
            DrawLineI(random.Below(columns), random.Below(rows), random.Below(columns), random.Below(rows), random.Next() & 0xFFFFFF);
        }
        SetBlend(blendNone, 255);
        SetDrawTarget(backBuffer);
        return image;
    }
    static std::vector<uint32_t> Drawn(int image, int mode, int x, int y, double scale) {
        Paper(grey);
        SetBlend(mode, 200);
        DrawImageRotated(static_cast<float>(x), static_cast<float>(y), 0, 0, image, 1, scale, 0);
        return Picture();
    }
    static std::vector<uint32_t> DrawnAnew(int image, int mode, int x, int y, double scale) {
        FindImage(image)->kept.state = KeptState::none;
        return Drawn(image, mode, x, y, scale);
    }
};

TEST_F(KeptPicture, DrawnAgainAtTheSameScaleIsTheSameEverywhereAndInEveryMode) {
    constexpr int modes[] = {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply};
    Random random(33);
    for (int turn = 0; turn < 300; ++turn) {
        const int columns = turn % 10 ? random.Between(20, 60) : random.Between(200, 400);  // also runs of several chunks
        const int image = Sketch(columns, random.Between(20, 60), random);
        const double scale = random.Between(20, 190) / 100.0;
        struct Place {
            int x, y, mode;
            std::vector<uint32_t> expected;
        } places[5];
        for (Place& place : places) {
            place.x = random.Between(-60, 60), place.y = random.Between(-60, 40), place.mode = modes[random.Below(5)];
            place.expected = DrawnAnew(image, place.mode, place.x, place.y, scale);
        }
        for (const Place& place : places) ASSERT_EQ(Drawn(image, place.mode, place.x, place.y, scale), place.expected) << turn;
        DeleteImage(image);
    }
}

TEST_F(KeptPicture, IsFilteredAtTheSecondDrawAndKeptUntilScaleOrImageChange) {
    Random random(34);
    const int image = Sketch(30, 30, random);
    Drawn(image, blendAlpha, 5, 5, 1.5);
    EXPECT_EQ(StateOf(image), KeptState::asked);
    Drawn(image, blendAlpha, 6, 7, 1.5);  // the place does not matter
    EXPECT_EQ(StateOf(image), KeptState::filled);
    Drawn(image, blendAdd, 5, 5, 1.25);
    EXPECT_EQ(StateOf(image), KeptState::asked);
    const std::vector<uint32_t> before = Drawn(image, blendAdd, 5, 5, 1.25);
    EXPECT_EQ(StateOf(image), KeptState::filled);
    Put(image, 3, 28, white);
    const std::vector<uint32_t> changed = Drawn(image, blendAdd, 5, 5, 1.25);
    EXPECT_EQ(StateOf(image), KeptState::asked);
    EXPECT_NE(changed, before);
    EXPECT_EQ(Drawn(image, blendAdd, 5, 5, 1.25), changed);
    ClearImageBlack(image);
    EXPECT_EQ(CountLit(Drawn(image, blendNone, 0, 0, 1.25)), width * height);  // nothing but the paper
}

TEST_F(KeptPicture, ATurnedOneIsFilteredEachTimeThoughWholeTurnsLookUnturned) {
    Random random(35);
    const int image = Sketch(40, 30, random);
    const double wholeTurn = 2 * std::acos(-1.0);
    const auto draw = [&](int x) {
        Paper(grey);
        SetBlend(blendAlpha, 255);
        DrawImageRotated(static_cast<float>(x), 5, 0, 0, image, 1, 1.5, wholeTurn);
        return Picture();
    };
    const std::vector<uint32_t> whole = draw(5);
    draw(width - 10);  // clipped
    draw(width - 10);
    EXPECT_EQ(StateOf(image), KeptState::none);
    EXPECT_EQ(draw(5), whole);
}

TEST_F(KeptPicture, OneThatTakesMoreRoomThanItsImageIsFilteredEachTime) {
    const int image = Make(20, 12, true);
    SetDrawTarget(image);
    FillRect(0, 0, 20, 12, red);
    SetDrawTarget(backBuffer);
    const std::vector<uint32_t> expected = DrawnAnew(image, blendAlpha, 3, 4, 1.5);
    for (int turn = 0; turn < 3; ++turn) {
        ASSERT_EQ(Drawn(image, blendAlpha, 3, 4, 1.5), expected);
        EXPECT_EQ(StateOf(image), KeptState::noRoom);
    }
    EXPECT_EQ(Drawn(image, blendAlpha, 3, 4, 0.5), DrawnAnew(image, blendAlpha, 3, 4, 0.5));
}

TEST_F(ImageDrawing, VisibleBoxFollowsWhatIsDrawnIntoTheImage) {
    const int image = Make(8, 8);
    SetBlend(blendAlpha, 255);
    DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
    EXPECT_EQ(CountLit(Picture()), 0);
    Put(image, 6, 6, white);
    DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
    EXPECT_EQ(CountLit(Picture()), 1);
    SetTransparentColor(255, 255, 255);  // now the black ones are those that show
    Paper(grey);
    DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
    EXPECT_EQ(PixelAt(6, 6), grey);
    EXPECT_EQ(PixelAt(0, 0), 0u);
}

TEST_F(ImageDrawing, AlphaImageIgnoresTheTransparentColour) {
    const int image = Make(2, 1, true);
    Put(image, 0, 0, Rgb(0, 0, 0));
    Paper(white);
    DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
    EXPECT_EQ(PixelAt(0, 0), 0u);  // black, and opaque
    EXPECT_EQ(PixelAt(1, 0), white);
}

// --- blends and brightness -----------------------------------------------------------------------------------------------------------

TEST_F(ImageDrawing, EveryModeBlendsAnImageAsItBlendsAColour) {
    Random random(41);
    for (const int mode : {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply, blendAlphaImage, blendSubtractPremultiplied})
        for (const int parameter : {0, 1, 96, 254, 255}) {
            SCOPED_TRACE(testing::Message() << mode << ' ' << parameter);
            const Color source = random.Next() & 0xFFFFFF, paper = random.Next() & 0xFFFFFF;
            const int image = Plain(4, 4, source);
            Paper(paper);
            SetBlend(mode, parameter);
            SetBrightness(200, 255, 96);
            FillRect(20, 0, 24, 4, source);
            DrawImageRotated(0, 0, 0, 0, image, 0, 1, 0);
            DrawImageStretched(30, 0, 60, 20, image, 0);
            SetBrightness(255, 255, 255);
            EXPECT_EQ(PixelAt(0, 0), PixelAt(20, 0));
            EXPECT_EQ(PixelAt(30, 0), PixelAt(20, 0));
            EXPECT_EQ(PixelAt(59, 19), PixelAt(20, 0));
            DeleteImage(image);
            SetBlend(blendNone, 255);
        }
}

TEST_F(ImageDrawing, PictureOnATargetWithoutAlphaKeepsTheTopByteClear) {
    const int image = Make(4, 4, true);
    Put(image, 0, 0, red);
    for (const int mode : {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply, blendAlphaImage})
        for (const int transparent : {0, 1}) {
            Paper(grey);
            SetBlend(mode, 200);
            DrawImageRotated(0, 0, 0, 0, image, transparent, 1, 0);
            DrawImageRotated(20, 20, 0, 0, image, transparent, 2.5, 0.3);
            for (const uint32_t pixel : Picture()) ASSERT_EQ(pixel >> 24, 0u);
        }
}

TEST_F(ImageDrawing, ImageDrawnOnItselfDrawsNothing) {
    const int image = Pattern(8, 8);
    const std::vector<uint32_t> before = PixelsOf(ImageSurface(image));
    SetDrawTarget(image);
    DrawImageStretched(0, 0, 4, 4, image, 0);
    EXPECT_EQ(PixelsOf(ImageSurface(image)), before);
}

// A small picture as a whole, pixel for pixel.
TEST_F(ImageDrawing, GoldenPictureOfTwoByTwoTexels) {
    const int image = Make(2, 2);
    Put(image, 0, 0, Rgb(0, 0, 0));
    Put(image, 1, 0, Rgb(0, 0, 200));
    Put(image, 0, 1, Rgb(0, 0, 100));
    Put(image, 1, 1, Rgb(0, 0, 40));
    DrawImageStretched(0, 0, 4, 4, image, 0);
    const uint32_t expected[4][4] = {{0, 50, 150, 200}, {25, 59, 126, 160}, {75, 76, 79, 80}, {100, 85, 55, 40}};
    for (int y = 0; y < 4; ++y)
        for (int x = 0; x < 4; ++x) EXPECT_EQ(PixelAt(x, y), expected[y][x]) << x << ' ' << y;
}

}  // namespace
