#include "draw/recorder.h"

#include "tests/draw/drawing.h"
#include "tests/test_folder.h"

namespace {

struct Recorder : Drawing {
    std::string lines;
    void SetUp() override {
        Drawing::SetUp();
        RecordOperations(&lines);
    }
    void TearDown() override {
        RecordOperations(nullptr);
        Drawing::TearDown();
    }
    // What was written since the last call.
    std::string Taken() {
        std::string taken = lines;
        lines.clear();
        return taken;
    }
};

TEST_F(Recorder, StateIsWrittenAsItWasAsked) {
    SetBlend(blendAdd, 300);
    SetBrightness(96, 96, 256);
    SetTransparentColor(255, 0, 0);
    SetBlend(blendNone, 255);
    SetBlend(blendNone, 255);
    EXPECT_EQ(Taken(), "SetBlend 2 300\nSetBrightness 96 96 256\nSetTransparentColor 255 0 0\nSetBlend 0 255\nSetBlend 0 255\n");
}

TEST_F(Recorder, ShapesNameTheirPlaceAndColour) {
    DrawLineF(0.5f, -1, 100.25f, 1e10f, Rgb(255, 0, 171), 2);
    DrawLineF(0.1f, 1.0f / 3, 2, 3, 0, 1);
    DrawLineI(1, -2, 3, 4, Rgb(1, 2, 3));
    FillRect(1, 2, 3, 4, Rgb(0, 200, 0));
    DrawBoxOutline(5, 6, 7, 8, Rgb(9, 9, 9));
    DrawCircle(1, 2, 3, Rgb(255, 255, 255), 1, 1);
    EXPECT_EQ(Taken(),
              "DrawLineF 0.5 -1 100.25 1e+10 #FF00AB 2\nDrawLineF 0.100000001 0.333333343 2 3 #000000 1\n"
              "DrawLineI 1 -2 3 4 #010203\nFillRect 1 2 3 4 #00C800\nDrawBoxOutline 5 6 7 8 #090909\n"
              "DrawCircle 1 2 3 #FFFFFF 1 1\n");
}

TEST_F(Recorder, ImagesAppearUnderTheirGlobalsNames) {
    const int strip = CreateDrawableImage(8, 4, 0), other = CreateDrawableImage(8, 4, 0);
    NameImage(strip, "gridStrip");
    SetDrawTarget(strip);
    ClearImageBlack(strip);
    SetDrawTarget(backBuffer);
    DrawImageStretched(0, 9, 8, 1, other, 1);
    DrawImageRotated(1, 2, 0.5f, 4, strip, 1, 0.25, -0.5);
    DrawImageScaledXY(0, -3, 0, 0, strip, 1024, 1);
    DrawImageStretched(0, 0, 1, 1, noHandle, 0);
    DeleteImage(strip);
    EXPECT_EQ(Taken(),
              "CreateDrawableImage 8 4 0\nCreateDrawableImage 8 4 0\nSetDrawTarget gridStrip\nClearImageBlack gridStrip\n"
              "SetDrawTarget -2\nDrawImageStretched 0 9 8 1 image1 1\nDrawImageRotated 1 2 0.5 4 gridStrip 1 0.25 -0.5\n"
              "DrawImageScaledXY 0 -3 0 0 gridStrip 1024 1\nDrawImageStretched 0 0 1 1 -1 0\nDeleteImage gridStrip\n");
}

TEST_F(Recorder, NameGoesWithItsImage) {
    const int image = CreateDrawableImage(8, 4, 0);
    NameImage(image, "gridStrip");
    DeleteImage(image);
    ASSERT_EQ(CreateDrawableImage(8, 4, 0), image);
    Taken();
    SetDrawTarget(image);
    EXPECT_EQ(Taken(), "SetDrawTarget image0\n");
}

TEST_F(Recorder, TextIsQuotedWithItsBytes) {
    const int font = CreateFontHandle("MS Gothic", 15, 1, 0), other = CreateFontHandle("Tahoma", 11, 1, 0);
    NameFont(font, "bigFont");
    DrawTextF(3, -4, Rgb(1, 2, 3), font, "%3d'%s", 7, "\x93\xFA");
    DrawTextAt(5, 6, "a \"b\" \\ \n\x7F", Rgb(0, 0, 255), other);
    DrawTextAt(5, 6, "", 0, noHandle);
    ResetFonts(0);
    EXPECT_EQ(Taken(),
              "CreateFontHandle \"MS Gothic\" 15 1 0\nCreateFontHandle \"Tahoma\" 11 1 0\n"
              "DrawTextF 3 -4 #010203 bigFont \"  7'\\x93\\xFA\"\n"
              "DrawTextAt 5 6 \"a \\x22b\\x22 \\x5C \\x0A\\x7F\" #0000FF font1\nDrawTextAt 5 6 \"\" #000000 -1\nResetFonts 0\n");
}

TEST_F(Recorder, FilesAndFrameAreWrittenToo) {
    TestFolder folder;
    EXPECT_EQ(LoadImageFile("No.BMP", 1), noHandle);
    std::string path = folder.Path("a.bmp");
    std::replace(path.begin(), path.end(), '\\', '/');  // a backslash would be written as an escape
    SaveDrawTargetBmp(path.c_str(), 4, 4);
    FlipScreen();
    DeleteAllImages();
    EXPECT_EQ(Taken(), "LoadImageFile \"No.BMP\" 1\nSaveDrawTargetBmp \"" + path + "\" 4 4\nFlipScreen\nDeleteAllImages\n");
}

TEST_F(Recorder, FramesAreCountedFromTheBeginning) {
    RecordFrame();
    RecordFrame();
    EXPECT_EQ(Taken(), "frame 1\nframe 2\n");
    RecordOperations(nullptr);
    EXPECT_FALSE(RecordingOperations());
    RecordFrame();
    RecordOperations(&lines);
    EXPECT_TRUE(RecordingOperations());
    RecordFrame();
    EXPECT_EQ(Taken(), "frame 1\n");
}

TEST_F(Recorder, DrawingGoesOnWhileRecording) {
    FillRect(0, 0, 1, 1, Rgb(255, 255, 255));
    EXPECT_EQ(PixelAt(0, 0), 0xFFFFFFu);
    RecordOperations(nullptr);
    FillRect(1, 0, 2, 1, Rgb(255, 255, 255));
    EXPECT_EQ(Taken(), "FillRect 0 0 1 1 #FFFFFF\n");
}

TEST_F(Recorder, WhatDrawsNothingIsWrittenAllTheSame) {
    FillRect(5, 5, 5, 9, 0);
    SetBlend(blendAlpha, 0);
    DrawLineF(0, 0, 9, 0, 0, 1);
    DrawCircle(0, 0, -1, 0, 1, 1);
    EXPECT_EQ(Taken(), "FillRect 5 5 5 9 #000000\nSetBlend 1 0\nDrawLineF 0 0 9 0 #000000 1\nDrawCircle 0 0 -1 #000000 1 1\n");
}

}  // namespace
