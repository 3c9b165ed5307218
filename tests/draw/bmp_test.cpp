#include "draw/bmp.h"

#include "draw/images.h"
#include "tests/draw/drawing.h"
#include "tests/test_folder.h"

namespace {

void Write(std::vector<uint8_t>& file, size_t at, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) file[at + i] = static_cast<uint8_t>(value >> 8 * i);
}

// A file with a header of 40 bytes, `extra` bytes behind it and the pixels.
std::vector<uint8_t> MakeBmp(int width, int height, int bits, size_t extra, const std::vector<uint8_t>& pixels) {
    std::vector<uint8_t> file(54 + extra);
    file[0] = 'B';
    file[1] = 'M';
    Write(file, 10, static_cast<uint32_t>(file.size()), 4);
    Write(file, 14, 40, 4);
    Write(file, 18, static_cast<uint32_t>(width), 4);
    Write(file, 22, static_cast<uint32_t>(height), 4);
    Write(file, 26, 1, 2);
    Write(file, 28, static_cast<uint32_t>(bits), 2);
    file.insert(file.end(), pixels.begin(), pixels.end());
    return file;
}

// The pixels of a file, row after row; empty when it is refused.
std::vector<uint32_t> Decoded(const std::vector<uint8_t>& file) {
    BmpPicture picture;
    if (OpenBmp(file.data(), static_cast<int64_t>(file.size()), &picture) != 0) return {};
    std::vector<uint32_t> pixels(size_t(picture.width) * picture.height);
    ReadBmpPixels(picture, pixels.data(), picture.width);
    return pixels;
}

const std::vector<uint8_t> twoRows24 = {1, 2, 3, 4, 5, 6, 0, 0, 7, 8, 9, 10, 11, 12, 0, 0};  // rows filled up to 8 bytes

TEST(Bmp, BottomRowComesFirst) {
    EXPECT_EQ(Decoded(MakeBmp(2, 2, 24, 0, twoRows24)), (std::vector<uint32_t>{0x090807, 0x0C0B0A, 0x030201, 0x060504}));
}

TEST(Bmp, NegativeHeightPutsTheTopRowFirst) {
    EXPECT_EQ(Decoded(MakeBmp(2, -2, 24, 0, twoRows24)), (std::vector<uint32_t>{0x030201, 0x060504, 0x090807, 0x0C0B0A}));
}

TEST(Bmp, FourthByteOf32BitPixelsIsIgnored) {
    EXPECT_EQ(Decoded(MakeBmp(2, 1, 32, 0, {1, 2, 3, 0, 4, 5, 6, 255})), (std::vector<uint32_t>{0x030201, 0x060504}));
}

TEST(Bmp, OrdinaryMasksAreTakenAndOthersRefused) {
    std::vector<uint8_t> file = MakeBmp(1, 1, 32, 12, {1, 2, 3, 0});
    Write(file, 30, 3, 4);
    Write(file, 54, 0xFF0000, 4);
    Write(file, 58, 0xFF00, 4);
    Write(file, 62, 0xFF, 4);
    EXPECT_EQ(Decoded(file), std::vector<uint32_t>{0x030201});
    Write(file, 54, 0xFF, 4);
    EXPECT_TRUE(Decoded(file).empty());
}

TEST(Bmp, EightBitPixelsGoThroughThePalette) {
    std::vector<uint8_t> file = MakeBmp(3, 1, 8, 8, {1, 0, 2, 0});
    Write(file, 46, 2, 4);
    Write(file, 54, 0xFF112233, 4);
    Write(file, 58, 0x00445566, 4);
    EXPECT_EQ(Decoded(file), (std::vector<uint32_t>{0x445566, 0x112233, 0}));  // the third entry does not exist
}

TEST(Bmp, WholePaletteIsReadWhenNoCountIsGiven) {
    std::vector<uint8_t> file = MakeBmp(1, 1, 8, 1024, {255, 0, 0, 0});
    Write(file, 54 + 255 * 4, 0x0000ABCD, 4);
    EXPECT_EQ(Decoded(file), std::vector<uint32_t>{0xABCD});
}

TEST(Bmp, PaletteThatIsCutOffEndsBlack) {
    std::vector<uint8_t> file = MakeBmp(4, 1, 8, 0, {0, 0, 0, 200});
    EXPECT_EQ(Decoded(file)[3], 0u);
}

TEST(Bmp, WhatIsNoPictureIsRefused) {
    const std::vector<uint8_t> good = MakeBmp(2, 2, 24, 0, twoRows24);
    struct Row {
        const char* what;
        size_t at;
        uint32_t value;
        int bytes;
    };
    const Row rows[] = {
        {"other mark", 0, 'X', 1},        {"small header", 14, 12, 4},       {"no width", 18, 0, 4},
        {"negative width", 18, ~0u, 4},   {"no height", 22, 0, 4},           {"least height", 22, 0x80000000, 4},
        {"too wide", 18, 16385, 4},       {"too high", 22, 16385, 4},        {"16 bits", 28, 16, 2},
        {"1 bit", 28, 1, 2},              {"run length code", 30, 1, 4},     {"masks with 24 bits", 30, 3, 4},
        {"pixels in the header", 10, 53, 4}, {"pixels behind the end", 10, 0xFFFFFFFF, 4}, {"one row too many", 22, 3, 4},
    };
    EXPECT_FALSE(Decoded(good).empty());
    for (const Row& row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<uint8_t> bad = good;
        Write(bad, row.at, row.value, row.bytes);
        EXPECT_TRUE(Decoded(bad).empty());
    }
}

TEST(Bmp, EveryShorterFileIsRefused) {
    const std::vector<uint8_t> good = MakeBmp(2, 2, 24, 0, twoRows24);
    for (size_t length = 0; length < good.size(); ++length)
        EXPECT_TRUE(Decoded({good.begin(), good.begin() + static_cast<ptrdiff_t>(length)}).empty()) << length;
}

TEST(Bmp, EncodedFileIsTheOneThatIsKnown) {
    const uint32_t pixels[] = {0x090807, 0x0C0B0A, 99, 0x030201, 0x060504, 99};  // a pitch of three
    std::vector<uint8_t> expected = MakeBmp(2, 2, 24, 0, twoRows24);
    Write(expected, 2, static_cast<uint32_t>(expected.size()), 4);
    Write(expected, 34, 16, 4);
    EXPECT_EQ(EncodeBmp(pixels, 2, 2, 3), expected);
}

TEST(Bmp, NothingIsEncodedOfNoPicture) {
    const uint32_t pixel = 0;
    EXPECT_TRUE(EncodeBmp(nullptr, 2, 2, 2).empty());
    EXPECT_TRUE(EncodeBmp(&pixel, 0, 1, 1).empty());
    EXPECT_TRUE(EncodeBmp(&pixel, 1, -1, 1).empty());
}

TEST_F(Drawing, LoadedPictureKeepsTheTransparentColourOfItsTime) {
    TestFolder folder;
    const std::vector<uint8_t> file = MakeBmp(2, 1, 24, 0, {7, 7, 7, 200, 100, 50, 0, 0});
    const std::string path = folder.Write("Needle.BMP", std::string(file.begin(), file.end()));
    SetTransparentColor(7, 7, 7);
    const int keyed = LoadImageFile(path.c_str(), 1), whole = LoadImageFile(path.c_str(), 0);
    SetTransparentColor(50, 100, 200);
    Paper(Rgb(1, 2, 3));
    DrawImageRotated(0, 0, 0, 0, keyed, 1, 1, 0);
    DrawImageRotated(0, 1, 0, 0, whole, 1, 1, 0);
    EXPECT_EQ(PixelAt(0, 0), Rgb(1, 2, 3));
    EXPECT_EQ(PixelAt(1, 0), Rgb(50, 100, 200));
    EXPECT_EQ(PixelAt(0, 1), Rgb(7, 7, 7));
    EXPECT_EQ(PixelAt(1, 1), Rgb(50, 100, 200));
}

}  // namespace
