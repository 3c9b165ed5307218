#include "draw/blend.h"

#include <cstring>

#include "draw/draw_state.h"
#include "draw/fill_sse2.h"
#include "tests/draw/drawing.h"

namespace {

constexpr BlendKind kinds[] = {BlendKind::nothing,  BlendKind::copy,     BlendKind::alpha,
                               BlendKind::add,      BlendKind::subtract, BlendKind::multiply};

std::vector<uint32_t> RandomPixels(Random& random, int count) {
    std::vector<uint32_t> pixels(count);
    for (uint32_t& pixel : pixels) pixel = random.Next();
    return pixels;
}
// As an image holds them: no channel above the coverage. Full and empty coverage are as frequent as all else together.
std::vector<uint32_t> RandomPremultiplied(Random& random, int count) {
    std::vector<uint32_t> pixels = RandomPixels(random, count);
    for (uint32_t& pixel : pixels) {
        const uint32_t coverage = random.Below(2) ? random.Next() & 255 : random.Below(2) * 255u;
        pixel = MultiplyChannels(pixel | alphaBits, coverage * 0x01010101u);
    }
    return pixels;
}
Paint RandomPaint(Random& random, BlendKind kind) { return {kind, random.Next(), random.Next()}; }
uint32_t RandomFactor(Random& random) { return random.Below(3) ? 255 : random.Next() & 255; }

// --- both versions of each operation -------------------------------------------------------------------------------------

void ExpectSameBytes(const std::vector<uint32_t>& a, const std::vector<uint32_t>& b) {
    ASSERT_EQ(a.size(), b.size());
    EXPECT_TRUE(a.empty() || std::memcmp(a.data(), b.data(), a.size() * sizeof a[0]) == 0);
}

TEST(BlendVersions, FillPixelsAgree) {
    Random random(1);
    for (int turn = 0; turn < 3000; ++turn) {
        const int width = turn % 10 ? random.Between(0, 21) : random.Between(100, 300);  // short and long rows
        const int height = random.Between(0, 5), pitch = width + random.Below(4);
        const Paint paint = RandomPaint(random, kinds[turn % 6]);
        std::vector<uint32_t> a = RandomPixels(random, pitch * height + 1), b = a;
        plain::FillPixels(a.data(), pitch, width, height, paint);
        sse2::FillPixels(b.data(), pitch, width, height, paint);
        ExpectSameBytes(a, b);
    }
}

// In one piece and with gaps between the rows, fewer rows and more than are fetched ahead.
TEST(BlendVersions, FillOfLongRowsAgrees) {
    Random random(8);
    for (int turn = 0; turn < 300; ++turn) {
        const int width = random.Between(100, 300), height = random.Between(0, 8);
        const int pitch = width + (random.Below(2) ? random.Below(4) : random.Between(500, 530));
        const Paint paint = RandomPaint(random, kinds[turn % 6]);
        std::vector<uint32_t> a = RandomPixels(random, pitch * height + 1), b = a;
        plain::FillPixels(a.data(), pitch, width, height, paint);
        sse2::FillLongRows(b.data(), pitch, width, height, paint);
        ExpectSameBytes(a, b);
    }
}

TEST(BlendVersions, CoverRowsAgree) {
    Random random(2);
    for (int turn = 0; turn < 3000; ++turn) {
        const int count = random.Between(0, 40);
        std::vector<uint8_t> coverage(count);
        for (uint8_t& c : coverage) c = static_cast<uint8_t>(RandomFactor(random) * random.Below(2));
        const Paint paint = RandomPaint(random, kinds[turn % 6]);
        std::vector<uint32_t> a = RandomPixels(random, count), b = a;
        plain::CoverRow(a.data(), coverage.data(), count, paint);
        sse2::CoverRow(b.data(), coverage.data(), count, paint);
        ExpectSameBytes(a, b);
    }
}

// Premultiplied pixels as they should be, and pixels that are brighter than their coverage, as adding light makes them.
TEST(BlendVersions, MixRowsAgree) {
    Random random(3);
    for (int turn = 0; turn < 6000; ++turn) {
        const int count = random.Between(0, 40);
        const std::vector<uint32_t> source = turn % 4 ? RandomPremultiplied(random, count) : RandomPixels(random, count);
        const Mix mix{kinds[turn % 6], RandomFactor(random), alphaBits | (random.Below(2) ? 0xFFFFFFu : random.Next()),
                      random.Below(2) ? alphaBits : 0, random.Below(2) ? alphaBits : 0};
        std::vector<uint32_t> a = RandomPixels(random, count), b = a;
        plain::MixRow(a.data(), source.data(), count, mix);
        sse2::MixRow(b.data(), source.data(), count, mix);
        ExpectSameBytes(a, b);
    }
}

Texels RandomTexels(Random& random, const std::vector<uint32_t>& pixels, int width, int height, int pitch) {
    return {pixels.data(), width, height, pitch, random.Below(2) == 0, pixels[0], random.Below(2) ? alphaBits : 0};
}

TEST(BlendVersions, ReadTexelsAgree) {
    Random random(4);
    for (int turn = 0; turn < 1000; ++turn) {
        const int count = random.Between(1, 40);
        const std::vector<uint32_t> row = RandomPixels(random, count);
        const Texels texels = RandomTexels(random, row, count, 1, count);
        std::vector<uint32_t> a(count), b(count);
        plain::ReadTexels(a.data(), row.data(), count, texels);
        sse2::ReadTexels(b.data(), row.data(), count, texels);
        ExpectSameBytes(a, b);
    }
}

TEST(BlendVersions, LerpRowsAgree) {
    Random random(5);
    for (int turn = 0; turn < 1000; ++turn) {
        const int count = random.Between(0, 40), weight = random.Below(256);
        const std::vector<uint32_t> top = RandomPixels(random, count), bottom = RandomPixels(random, count);
        std::vector<uint32_t> a(count), b(count);
        plain::LerpRows(a.data(), top.data(), bottom.data(), count, weight);
        sse2::LerpRows(b.data(), top.data(), bottom.data(), count, weight);
        ExpectSameBytes(a, b);
    }
}

// From before the image to behind it, in both directions.
Walk RandomWalk(Random& random, int width, int height) {
    const auto place = [&random](int size) { return (random.Between(-2, size + 2) * oneTexel) + random.Next(); };
    const auto step = [&random] { return static_cast<int64_t>(random.Next()) * 2 - oneTexel; };
    return {place(width), place(height), step(), step()};
}

TEST(BlendVersions, LerpAlongAgrees) {
    Random random(6);
    for (int turn = 0; turn < 3000; ++turn) {
        const int width = random.Between(1, 20), count = random.Between(0, 30);
        const std::vector<uint32_t> row = RandomPixels(random, width);
        const Walk walk = RandomWalk(random, width, 1);
        std::vector<uint32_t> a(count), b(count);
        plain::LerpAlong(a.data(), row.data(), count, walk, 0, width - 1);
        sse2::LerpAlong(b.data(), row.data(), count, walk, 0, width - 1);
        ExpectSameBytes(a, b);
    }
}

// Rows in which most taps lie inside, read from a part of the image.
TEST(BlendVersions, LerpAlongAgreesOverLongRows) {
    Random random(9);
    for (int turn = 0; turn < 1000; ++turn) {
        const int width = random.Between(40, 90), base = random.Below(2) ? random.Below(30) : 0, count = random.Between(20, 60);
        const int last = base + width - 1 - (base ? random.Below(2) : 0);
        const std::vector<uint32_t> row = RandomPixels(random, width);
        const int64_t step = static_cast<int64_t>(random.Next()) * (random.Below(2) ? 1 : -1);
        // from the left end on, or backwards from the right one; a row that begins inside the image has all its taps inside
        const int64_t low = oneTexel * (base ? base + 1 : -1), high = oneTexel * (base + width - 1);
        const int64_t room = std::min<int64_t>(oneTexel * (width - 3) / count, step < 0 ? -step : step) * (step < 0 ? -1 : 1);
        const Walk walk{step < 0 ? high : low, 0, base ? room : step, 0};
        std::vector<uint32_t> a(count), b(count);
        plain::LerpAlong(a.data(), row.data(), count, walk, base, last);
        sse2::LerpAlong(b.data(), row.data(), count, walk, base, last);
        ExpectSameBytes(a, b);
    }
}

TEST(BlendVersions, LerpTexelsAgree) {
    Random random(7);
    for (int turn = 0; turn < 3000; ++turn) {
        const int width = random.Between(1, 20), height = random.Between(1, 9), pitch = width + random.Below(3);
        const int count = random.Between(0, 30);
        const std::vector<uint32_t> pixels = RandomPixels(random, pitch * height);
        const Texels texels = RandomTexels(random, pixels, width, height, pitch);
        const Walk walk = RandomWalk(random, width, height);
        std::vector<uint32_t> a(count), b(count);
        plain::LerpTexels(a.data(), count, walk, texels);
        sse2::LerpTexels(b.data(), count, walk, texels);
        ExpectSameBytes(a, b);
    }
}

// --- the arithmetic --------------------------------------------------------------------------------------------------------

TEST(Blend, Div255IsExactForAll16Bits) {
    for (uint32_t x = 0; x < 65536; ++x) ASSERT_EQ(Div255(x), x / 255) << x;
}

// Every source, target and parameter of one channel: mode, parameter and colour in, pixel out.
struct OneChannel : Drawing {
    uint32_t Blended(int mode, int parameter, int source, int target) {
        SetBlend(blendNone, 255);
        FillRect(0, 0, 1, 1, Rgb(0, target, 0));
        SetBlend(mode, parameter);
        FillRect(0, 0, 1, 1, Rgb(0, source, 0));
        EXPECT_EQ(PixelAt(0, 0) & 0xFFFF00FF, 0u);
        return PixelAt(0, 0) >> 8;
    }
};

TEST_F(OneChannel, EveryModeIsExactAndTruncatesOnce) {
    struct Row {
        int mode;
        int (*expected)(int s, int d, int p);
    };
    const Row rows[] = {
        {blendNone, [](int s, int, int) { return s; }},
        {blendAlpha, [](int s, int d, int p) { return (s * p + d * (255 - p)) / 255; }},
        {blendAdd, [](int s, int d, int p) { return std::min(d + s * p / 255, 255); }},
        {blendSubtract, [](int s, int d, int p) { return std::max(d - s * p / 255, 0); }},
        {blendMultiply, [](int s, int d, int) { return d * s / 255; }},
        {blendAlphaImage, [](int s, int d, int p) { return (s * p + d * (255 - p)) / 255; }},
        {blendSubtractPremultiplied, [](int s, int d, int p) { return std::max(d - s * p / 255, 0); }},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.mode);
        for (int p = 0; p <= 255; p += 15)
            for (int s = 0; s <= 255; s += 5)
                for (int d = 0; d <= 255; d += 17)
                    ASSERT_EQ(static_cast<int>(Blended(row.mode, p, s, d)), row.expected(s, d, p)) << p << ' ' << s << ' ' << d;
    }
}

TEST_F(OneChannel, ParameterIsHeldTo0And255) {
    EXPECT_EQ(Blended(blendAlpha, 300, 200, 10), Blended(blendAlpha, 255, 200, 10));
    EXPECT_EQ(Blended(blendAlpha, 300, 200, 10), 200u);
    EXPECT_EQ(Blended(blendAlpha, -5, 200, 10), Blended(blendAlpha, 0, 200, 10));
    EXPECT_EQ(Blended(blendAlpha, -5, 200, 10), 10u);
}

TEST_F(OneChannel, ParameterOfNoneAndMultiplyHasNoEffect) {
    EXPECT_EQ(Blended(blendNone, 64, 200, 10), 200u);
    EXPECT_EQ(Blended(blendMultiply, 0, 100, 200), 78u);
    EXPECT_EQ(Blended(blendMultiply, 255, 100, 200), 78u);
}

TEST_F(OneChannel, AlphaOverTheSameColourNeverDarkens) {
    for (int d = 0; d <= 255; ++d)
        for (const int p : {1, 30, 127, 254}) ASSERT_EQ(static_cast<int>(Blended(blendAlpha, p, d, d)), d);
}

TEST_F(OneChannel, BrightnessScalesTheSourceBeforeTheParameter) {
    SetBrightness(255, 96, 255);
    EXPECT_EQ(Blended(blendNone, 255, 200, 0), 0u + 200 * 96 / 255);
    // 201 x 96 / 255 is 75, and 75 x 100 / 255 is 29; the other way round it would be 29 of 78
    EXPECT_EQ(Blended(blendAdd, 100, 201, 0), 29u);
    SetBrightness(255, 255, 255);
    EXPECT_EQ(Blended(blendNone, 255, 200, 0), 200u);
}

TEST_F(OneChannel, BrightnessIsHeldTo0And255) {
    SetBrightness(255, 999, 255);
    EXPECT_EQ(Blended(blendNone, 255, 200, 0), 200u);
    SetBrightness(255, -1, 255);
    EXPECT_EQ(Blended(blendNone, 255, 200, 50), 0u);
}

TEST_F(Drawing, MakeColorHoldsEachChannel) {
    EXPECT_EQ(MakeColor(1, 2, 3), 0x010203u);
    EXPECT_EQ(MakeColor(-1, 256, 1000), 0x00FFFFu);
}

// The masks that lighten a trace colour are OR-ed to it.
TEST_F(Drawing, OrOfTwoColoursIsAColour) {
    FillRect(0, 0, 1, 1, MakeColor(0, 255, 192) | MakeColor(128, 128, 128));
    EXPECT_EQ(PixelAt(0, 0), 0x80FFC0u);
}

TEST_F(Drawing, SettingTheBlendThatIsSetAlreadyCostsNothing) {
    const PaintRule rule = paintRule;
    paintRule.setBits    = 0x123456;  // would be worked out anew
    SetBlend(blendNone, 255);
    SetBlend(blendNone, 300);
    EXPECT_EQ(paintRule.setBits, 0x123456u);
    paintRule = rule;
}

TEST_F(Drawing, SettingTheRestingBlendAgainChangesNothing) {
    FillRect(0, 0, 8, 8, Rgb(9, 8, 7));
    const std::vector<uint32_t> before = Picture();
    SetBlend(blendNone, 255);
    SetBlend(blendNone, 255);
    EXPECT_EQ(Picture(), before);
    FillRect(0, 0, 1, 1, Rgb(1, 1, 1));
    EXPECT_EQ(PixelAt(0, 0), 0x010101u);
}

}  // namespace
