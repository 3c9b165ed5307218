#include <climits>
#include <cstring>

#include "draw/glyphs.h"
#include "tests/draw/drawing.h"

namespace {

constexpr Color white = Rgb(255, 255, 255);
constexpr char japanese[] = "\x93\xFA\x96\x7B";  // two kanji

struct Text : Drawing {
    int gothic = noHandle, tahoma = noHandle;
    void SetUp() override {
        Drawing::SetUp();
        gothic = CreateFontHandle("MS Gothic", 15, 1, 0);
        tahoma = CreateFontHandle("Tahoma", 11, 1, 0);
        ASSERT_GE(gothic, 0);
        ASSERT_GE(tahoma, 0);
    }
    static int LitBy(const char* text, int font, int x = 0, int y = 0) {
        Paper(0);
        DrawTextAt(x, y, text, white, font);
        return CountLit(Picture());
    }
};

TEST_F(Text, StandsInItsCell) {
    for (const int font : {gothic, tahoma}) {
        const int cell = font == gothic ? 15 : 11;
        ASSERT_GT(LitBy("gjM8", font, 10, 20), 20);
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                if (PixelAt(x, y)) {
                    EXPECT_GE(y, 20);
                    EXPECT_LT(y, 20 + cell);
                    EXPECT_GE(x, 9);
                    EXPECT_LE(x, 10 + TextWidth("gjM8", 4, font));
                }
    }
}

TEST_F(Text, GothicIsHalfAnEmForAsciiAndAnEmForKanji) {
    EXPECT_EQ(TextWidth("0", 1, gothic), 8);
    EXPECT_EQ(TextWidth("iW.0", 4, gothic), 32);
    EXPECT_EQ(TextWidth("\xB1", 1, gothic), 8);  // half-width kana
    EXPECT_NEAR(TextWidth(japanese, 2, gothic), 15, 1);
    EXPECT_EQ(TextWidth(japanese, 4, gothic), 2 * TextWidth(japanese, 2, gothic));
}

TEST_F(Text, TahomaIsProportional) { EXPECT_LT(TextWidth("iiii", 4, tahoma), TextWidth("WWWW", 4, tahoma)); }

TEST_F(Text, WidthIsThatOfTheCharactersDrawn) {
    EXPECT_EQ(TextWidthF(gothic, "%d km/h", 123), TextWidth("123 km/h", 8, gothic));
    EXPECT_EQ(TextWidth("123 km/h", 3, gothic), TextWidthF(gothic, "%d", 123));
    EXPECT_EQ(TextWidth("12", 99, gothic), TextWidth("12", 2, gothic));  // the text's own end counts
    EXPECT_EQ(TextWidth("12", 0, gothic), 0);
    EXPECT_EQ(TextWidth("12", -5, gothic), 0);
    EXPECT_GT(TextWidthDefaultF("%s", "abc"), TextWidthDefaultF("%s", "a"));
}

TEST_F(Text, EmptyTextDrawsNothing) {
    EXPECT_EQ(LitBy("", gothic), 0);
    DrawTextF(0, 0, white, gothic, "%s", "");
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Text, BadFontDrawsNothing) {
    for (const int bad : {-1, -2, 99}) {
        EXPECT_EQ(LitBy("abc", bad), 0);
        EXPECT_EQ(TextWidth("abc", 3, bad), 0);
    }
    ResetFonts(0);
    EXPECT_EQ(LitBy("abc", gothic), 0);
}

TEST_F(Text, FontOfNoSizeOrTooLargeIsRefused) {
    for (const int size : {0, -15, 257, INT_MAX, INT_MIN}) EXPECT_EQ(CreateFontHandle("MS Gothic", size, 1, 0), noHandle);
}

TEST_F(Text, UnknownFaceIsReplaced) {
    const int other = CreateFontHandle("No Such Face", 11, 1, 0);
    ASSERT_GE(other, 0);
    EXPECT_GT(LitBy("abc", other), 5);
}

TEST_F(Text, FormattedAndPlainTextAreTheSame) {
    DrawTextF(3, 4, white, gothic, "%02d'%05.2f", 1, 2.5);
    const std::vector<uint32_t> formatted = Picture();
    Paper(0);
    DrawTextAt(3, 4, "01'02.50", white, gothic);
    EXPECT_EQ(Picture(), formatted);
}

TEST_F(Text, ShiftJisIsDrawnInEveryFace) {
    for (const int font : {gothic, tahoma}) {
        const int kanji = LitBy(japanese, font), dots = LitBy("\x85\x40\x85\x40", font);
        EXPECT_GT(kanji, 30);
        EXPECT_GT(kanji, 3 * dots);  // not the sign for what is unknown
    }
    // a missing glyph would be the same box for both
    DrawTextAt(0, 0, "\x93\xFA", white, tahoma);
    const std::vector<uint32_t> first = Picture();
    Paper(0);
    DrawTextAt(0, 0, "\x96\x7B", white, tahoma);
    EXPECT_NE(Picture(), first);
}

TEST_F(Text, BackslashInTheSecondByteIsNoCharacterOfItsOwn) {
    EXPECT_EQ(TextWidth("\x83\x5C", 2, gothic), TextWidth("\x82\xA0", 2, gothic));
}

TEST_F(Text, ControlCharactersTakeNoRoom) {
    EXPECT_EQ(TextWidth("a\nb\r\tc", 6, gothic), TextWidth("abc", 3, gothic));
    EXPECT_EQ(LitBy("a\nb", gothic), LitBy("ab", gothic));
}

TEST_F(Text, ClippedTextIsPartOfTheWholeOne) {
    const int image = CreateDrawableImage(160, 120, 0);
    SetDrawTarget(image);
    DrawTextAt(40, 40, "Mg8 \x93\xFA", white, gothic);
    SetDrawTarget(backBuffer);
    for (const auto& [x, y] : {std::pair{-20, 10}, {50, 10}, {10, -7}, {10, 40}, {-5, -5}}) {
        Paper(0);
        DrawTextAt(x, y, "Mg8 \x93\xFA", white, gothic);
        for (int row = 0; row < height; ++row)
            for (int column = 0; column < width; ++column)
                ASSERT_EQ(PixelAt(column, row), PixelOf(ImageSurface(image), column - x + 40, row - y + 40)) << column << ' ' << row;
    }
}

TEST_F(Text, FarPlacesDrawNothing) {
    for (const int far : {INT_MIN, INT_MAX, 1 << 30})
        for (const int near : {0, far}) {
            DrawTextAt(far, near, "abc", white, gothic);
            DrawTextAt(near, far, "abc", white, gothic);
        }
    EXPECT_EQ(LitBy("", gothic), 0);
    DrawTextAt(INT_MIN, 0, "abc", white, gothic);
    DrawTextAt(0, INT_MAX, "abc", white, gothic);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Text, LongFormattedTextIsCutAt1023Bytes) {
    const std::string text(3000, '8');
    EXPECT_EQ(TextWidthF(gothic, "%s", text.c_str()), 1023 * 8);
    DrawTextF(0, 0, white, gothic, "%s", text.c_str());
    EXPECT_GT(CountLit(Picture()), 0);
}

// Blends: coverage scales the parameter, and full coverage is the blend of a rectangle.
TEST_F(Text, FullCoverageBlendsAsARectangle) {
    const int big = CreateFontHandle("MS Gothic", 48, 1, 0);
    DrawTextAt(8, 0, "I", white, big);
    int x = -1, y = -1;
    for (int row = 0; row < height; ++row)
        for (int column = 0; column < width; ++column)
            if (PixelAt(column, row) == white) x = column, y = row;
    ASSERT_GE(x, 0);
    for (const int mode : {blendNone, blendAlpha, blendAdd, blendSubtract, blendMultiply}) {
        Paper(Rgb(100, 90, 80));
        SetBlend(mode, 77);
        DrawTextAt(8, 0, "I", Rgb(200, 10, 60), big);
        FillRect(0, 47, 1, 48, Rgb(200, 10, 60));
        EXPECT_EQ(PixelAt(x, y), PixelAt(0, 47)) << mode;
    }
}

TEST_F(Text, TextInTheColourOfThePaperLeavesNoTrace) {
    for (const int mode : {blendNone, blendAlpha}) {
        Paper(Rgb(100, 90, 80));
        SetBlend(mode, 77);
        DrawTextAt(0, 0, "Mg8", Rgb(100, 90, 80), gothic);
        for (const uint32_t pixel : Picture()) ASSERT_EQ(pixel, Rgb(100, 90, 80));
    }
}

TEST_F(Text, TextOnAnAlphaImageCoversIt) {
    SetImageOptions({true, true});
    const int image = CreateDrawableImage(32, 16, 0);
    SetDrawTarget(image);
    DrawTextAt(0, 0, "8", Rgb(255, 0, 0), gothic);
    int covered = 0;
    for (const uint32_t pixel : PixelsOf(ImageSurface(image))) {
        EXPECT_EQ(pixel >> 24, pixel >> 16 & 255);  // red at full strength: as strong as its coverage
        covered += pixel >> 24 > 0;
    }
    EXPECT_GT(covered, 10);
}

TEST_F(Text, NullBackEndStillMeasures) {
    SelectBackEnd(DrawBackEnd::none);
    DrawTextAt(0, 0, "abc", white, gothic);
    EXPECT_EQ(TextWidth("abc", 3, gothic), 24);
    SelectBackEnd(DrawBackEnd::software);
    EXPECT_EQ(CountLit(Picture()), 0);
}

}  // namespace
