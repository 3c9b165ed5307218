#include "draw/images.h"

#include "tests/draw/drawing.h"
#include "tests/test_folder.h"

namespace {

constexpr Color white = Rgb(255, 255, 255);

int MakeImage(int width, int height, bool alpha) {
    SetImageOptions({true, alpha});
    return CreateDrawableImage(width, height, 0);
}

TEST_F(Drawing, NewImageIsBlackAndDrawable) {
    const int image = CreateDrawableImage(8, 4, 0);
    ASSERT_GE(image, 0);
    EXPECT_EQ(CountLit(PixelsOf(ImageSurface(image))), 0);
    SetDrawTarget(image);
    FillRect(0, 0, 100, 100, white);
    EXPECT_EQ(CountLit(PixelsOf(ImageSurface(image))), 32);
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Drawing, DrawingIsClippedToTheImage) {
    const int image = CreateDrawableImage(8, 4, 0);
    SetDrawTarget(image);
    DrawLineF(-5, 2, 50, 2, white, 9);
    DrawCircle(4, 2, 100, white, 1, 1);
    EXPECT_EQ(CountLit(PixelsOf(ImageSurface(image))), 32);
}

TEST_F(Drawing, ImageOfNoSizeOrTooLargeIsRefused) {
    for (const int side : {0, -1, imageSideLimit + 1}) {
        EXPECT_EQ(CreateDrawableImage(side, 4, 0), noHandle);
        EXPECT_EQ(CreateDrawableImage(4, side, 0), noHandle);
    }
}

TEST_F(Drawing, RowsOfAnImageLieAnOddMultipleOf64BytesApart) {
    for (const int side : {1, 8, 16, 17, 32, 512, 1920}) {
        const Surface s = ImageSurface(CreateDrawableImage(side, 2, 0));
        EXPECT_GE(s.pitch, side);
        EXPECT_EQ(s.pitch % 32, 16) << side;
    }
}

TEST_F(Drawing, OptionsAreThoseLastSet) {
    ImageOptions options;
    GetImageOptions(&options);
    EXPECT_TRUE(options.drawable);
    EXPECT_FALSE(options.alpha);
    SetImageOptions({true, true});
    GetImageOptions(&options);
    EXPECT_TRUE(options.alpha);
}

TEST_F(Drawing, ImageThatIsNotDrawableIsNoTarget) {
    SetImageOptions({false, false});
    SetDrawTarget(CreateDrawableImage(4, 4, 0));
    FillRect(0, 0, 1, 1, white);
    EXPECT_EQ(PixelAt(0, 0), white);
}

TEST_F(Drawing, AlphaImagesCanBeSwitchedOff) {
    EXPECT_TRUE(CanMakeAlphaImages());
    AllowAlphaImages(false);
    EXPECT_FALSE(CanMakeAlphaImages());
    EXPECT_EQ(MakeImage(4, 4, true), noHandle);
    EXPECT_GE(MakeImage(4, 4, false), 0);
    AllowAlphaImages(true);
    EXPECT_GE(MakeImage(4, 4, true), 0);
}

TEST_F(Drawing, BadHandleLeavesTheTarget) {
    const int image = CreateDrawableImage(4, 4, 0);
    SetDrawTarget(image);
    for (const int bad : {-1, -3, 99}) SetDrawTarget(bad);
    FillRect(0, 0, 1, 1, white);
    EXPECT_EQ(CountLit(PixelsOf(ImageSurface(image))), 1);
}

TEST_F(Drawing, BadHandlesDrawNothing) {
    for (const int bad : {-1, -2, 99}) {
        EXPECT_EQ(DrawImageStretched(0, 0, 9, 9, bad, 0), -1);
        EXPECT_EQ(DrawImageRotated(0, 0, 0, 0, bad, 0, 1, 0), -1);
        EXPECT_EQ(DrawImageScaledXY(0, 0, 0, 0, bad, 1, 1), -1);
        DeleteImage(bad);
        ClearImageBlack(bad);
    }
    EXPECT_EQ(CountLit(Picture()), 0);
}

TEST_F(Drawing, DeletedImageIsABadHandleAndItsNumberIsUsedAgain) {
    const int first = CreateDrawableImage(4, 4, 0), second = CreateDrawableImage(4, 4, 0);
    DeleteImage(first);
    EXPECT_EQ(DrawImageStretched(0, 0, 9, 9, first, 0), -1);
    EXPECT_EQ(DrawImageStretched(0, 0, 9, 9, second, 0), 0);
    EXPECT_EQ(CreateDrawableImage(4, 4, 0), first);
    DeleteAllImages();
    EXPECT_EQ(DrawImageStretched(0, 0, 9, 9, second, 0), -1);
}

TEST_F(Drawing, DeletingTheTargetMakesTheBackBufferTheTarget) {
    for (const bool all : {false, true}) {
        Paper(0);
        const int image = CreateDrawableImage(4, 4, 0);
        SetDrawTarget(image);
        all ? DeleteAllImages() : DeleteImage(image);
        FillRect(0, 0, 1, 1, white);
        EXPECT_EQ(PixelAt(0, 0), white);
    }
}

TEST_F(Drawing, ClearImageBlackClearsAlphaToo) {
    for (const bool alpha : {false, true}) {
        const int image = MakeImage(4, 4, alpha);
        SetDrawTarget(image);
        FillRect(0, 0, 4, 4, white);
        EXPECT_EQ(PixelOf(ImageSurface(image), 0, 0), alpha ? 0xFFFFFFFFu : white);
        ClearImageBlack(image);
        EXPECT_EQ(CountLit(PixelsOf(ImageSurface(image))), 0);
        SetDrawTarget(backBuffer);
    }
}

// --- targets with an alpha channel -----------------------------------------------------------------------------------------

struct AlphaTarget : Drawing {
    int image = noHandle;
    void SetUp() override {
        Drawing::SetUp();
        image = MakeImage(4, 4, true);
        SetDrawTarget(image);
    }
    uint32_t Pixel() { return PixelOf(ImageSurface(image), 0, 0); }
    void Dot(int mode, int parameter, Color color) {
        SetBlend(mode, parameter);
        FillRect(0, 0, 1, 1, color);
    }
};

TEST_F(AlphaTarget, AlphaImageModeCoversColourAndChannelAlike) {
    Dot(blendAlphaImage, 127, Rgb(200, 0, 100));
    EXPECT_EQ(Pixel(), 0x7F630031u);  // coverage 127, colours 200 x 127 / 255 and 100 x 127 / 255
    Dot(blendAlphaImage, 127, Rgb(200, 0, 100));
    EXPECT_EQ(Pixel() >> 24, 127u + 127 * 128 / 255);
    Dot(blendAlphaImage, 255, Rgb(1, 2, 3));
    EXPECT_EQ(Pixel(), 0xFF010203u);
}

TEST_F(AlphaTarget, BlendingOffDrawsOpaque) {
    Dot(blendNone, 255, Rgb(1, 2, 3));
    EXPECT_EQ(Pixel(), 0xFF010203u);
}

TEST_F(AlphaTarget, OtherModesKeepTheChannel) {
    struct Row {
        int mode;
        uint32_t expected;
    };
    // red 99 and 100, blue 49 and 200
    const Row rows[] = {{blendAlpha, 0x7F6400C8}, {blendAdd, 0x7FC700F9}, {blendSubtract, 0x7F000000}, {blendMultiply, 0x7F260026}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.mode);
        ClearImageBlack(image);
        Dot(blendAlphaImage, 127, Rgb(200, 0, 100));
        Dot(row.mode, 255, Rgb(100, 0, 200));
        EXPECT_EQ(Pixel(), row.expected);
    }
}

TEST_F(AlphaTarget, ParameterZeroDrawsNothing) {
    for (const int mode : {blendAlpha, blendAlphaImage, blendAdd, blendSubtract}) Dot(mode, 0, white);
    EXPECT_EQ(Pixel(), 0u);
}

TEST_F(AlphaTarget, WithoutAChannelAlphaImageModeActsAsAlpha) {
    SetDrawTarget(backBuffer);
    Dot(blendAlphaImage, 127, Rgb(200, 0, 100));
    EXPECT_EQ(PixelAt(0, 0), 0x00630031u);
}

TEST_F(AlphaTarget, DrawnOnTheScreenItCoversWhatWasDrawn) {
    Dot(blendNone, 255, Rgb(10, 20, 30));
    SetBlend(blendAlphaImage, 128);
    FillRect(1, 0, 2, 1, white);
    SetDrawTarget(backBuffer);
    Paper(Rgb(100, 100, 100));
    SetBlend(blendAlpha, 255);
    DrawImageRotated(0, 0, 0, 0, image, 1, 1, 0);
    EXPECT_EQ(PixelAt(0, 0), Rgb(10, 20, 30));
    EXPECT_EQ(PixelAt(1, 0), Rgb(177, 177, 177));  // 128 + 100 x 127 / 255
    EXPECT_EQ(PixelAt(2, 0), Rgb(100, 100, 100));
}

// --- saving ------------------------------------------------------------------------------------------------------------------

TEST_F(Drawing, SavedPictureLoadsAgain) {
    TestFolder folder;
    for (int i = 0; i < 7; ++i) FillRect(i, 0, i + 1, 5, Rgb(i * 30, 255 - i, i));
    ASSERT_EQ(SaveDrawTargetBmp(folder.Path("a.bmp").c_str(), 7, 5), 0);
    const int image = LoadImageFile(folder.Path("a.bmp").c_str(), 1);
    ASSERT_GE(image, 0);
    const Surface s = ImageSurface(image);
    ASSERT_EQ(s.width, 7);
    ASSERT_EQ(s.height, 5);
    for (int y = 0; y < 5; ++y)
        for (int x = 0; x < 7; ++x) EXPECT_EQ(PixelOf(s, x, y), PixelAt(x, y));
}

TEST_F(Drawing, SavingTakesTheTargetAndHoldsTheSize) {
    TestFolder folder;
    const int image = CreateDrawableImage(3, 2, 0);
    SetDrawTarget(image);
    FillRect(0, 0, 3, 2, white);
    ASSERT_EQ(SaveDrawTargetBmp(folder.Path("a.bmp").c_str(), 512, 512), 0);
    const Surface s = ImageSurface(LoadImageFile(folder.Path("a.bmp").c_str(), 1));
    EXPECT_EQ(s.width, 3);
    EXPECT_EQ(s.height, 2);
    EXPECT_EQ(CountLit(PixelsOf(s)), 6);
}

TEST_F(Drawing, SavingReportsWhatItCannotWrite) {
    TestFolder folder;
    EXPECT_NE(SaveDrawTargetBmp(folder.Path("no/such/folder.bmp").c_str(), 4, 4), 0);
    EXPECT_NE(SaveDrawTargetBmp(folder.Path("a.bmp").c_str(), 0, 4), 0);
    EXPECT_NE(SaveDrawTargetBmp(folder.Path("a.bmp").c_str(), 4, -1), 0);
    EXPECT_EQ(LoadImageFile(folder.Path("a.bmp").c_str(), 1), noHandle);
    ShutDownDrawing();
    EXPECT_NE(SaveDrawTargetBmp(folder.Path("a.bmp").c_str(), 4, 4), 0);
}

TEST_F(Drawing, MissingPictureFileGivesNoHandle) {
    TestFolder folder;
    EXPECT_EQ(LoadImageFile(folder.Path("missing.BMP").c_str(), 1), noHandle);
    EXPECT_EQ(LoadImageFile(folder.Write("bad.BMP", "BM no picture").c_str(), 1), noHandle);
}

}  // namespace
