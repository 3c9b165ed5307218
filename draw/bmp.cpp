#include "draw/bmp.h"

#include <cstddef>

#include "draw/images.h"

constexpr int dataStartAt = 10, headerSizeAt = 14, widthAt = 18, heightAt = 22, planesAt = 26, bitsAt = 28,
              compressionAt = 30, dataSizeAt = 34, paletteCountAt = 46, headersEnd = 54, redMaskAt = 54;

static uint32_t ReadU32Le(const uint8_t* p) { return p[0] | p[1] << 8 | p[2] << 16 | static_cast<uint32_t>(p[3]) << 24; }
static uint32_t ReadU16Le(const uint8_t* p) { return static_cast<uint32_t>(p[0] | p[1] << 8); }

static bool OrdinaryMasks(const uint8_t* bytes, int64_t length) {
    return length >= redMaskAt + 12 && ReadU32Le(bytes + redMaskAt) == 0xFF0000 &&
           ReadU32Le(bytes + redMaskAt + 4) == 0xFF00 && ReadU32Le(bytes + redMaskAt + 8) == 0xFF;
}

static void ReadPalette(const uint8_t* bytes, int64_t length, BmpPicture* picture) {
    const uint32_t stated  = ReadU32Le(bytes + paletteCountAt);
    const uint32_t entries = stated == 0 || stated > 256 ? 256 : stated;
    int64_t at = headerSizeAt + int64_t{ReadU32Le(bytes + headerSizeAt)};
    for (uint32_t i = 0; i < entries && at + 4 <= length; ++i, at += 4)
        picture->palette[i] = ReadU32Le(bytes + at) & 0xFFFFFF;
}

int OpenBmp(const uint8_t* bytes, int64_t length, BmpPicture* picture) {
    *picture = BmpPicture{};
    if (length < headersEnd || bytes[0] != 'B' || bytes[1] != 'M' || ReadU32Le(bytes + headerSizeAt) < 40) return 1;
    const int64_t width  = static_cast<int32_t>(ReadU32Le(bytes + widthAt));
    const int64_t height = static_cast<int32_t>(ReadU32Le(bytes + heightAt));
    picture->topRowFirst = height < 0;
    const int64_t rows   = height < 0 ? -height : height;
    if (width < 1 || rows < 1 || width > imageSideLimit || rows > imageSideLimit) return 1;

    const uint32_t bits = ReadU16Le(bytes + bitsAt), compression = ReadU32Le(bytes + compressionAt);
    if (bits != 8 && bits != 24 && bits != 32) return 1;
    if (compression != 0 && !(compression == 3 && bits == 32 && OrdinaryMasks(bytes, length))) return 1;

    picture->width         = static_cast<int>(width);
    picture->height        = static_cast<int>(rows);
    picture->bytesPerPixel = static_cast<int>(bits / 8);
    picture->rowBytes      = (width * picture->bytesPerPixel + 3) / 4 * 4;
    const int64_t start    = ReadU32Le(bytes + dataStartAt);
    if (start < headersEnd || start + picture->rowBytes * rows > length) return 1;
    picture->pixels = bytes + start;
    if (bits == 8) ReadPalette(bytes, length, picture);
    return 0;
}

void ReadBmpPixels(const BmpPicture& picture, uint32_t* out, int pitch) {
    for (int y = 0; y < picture.height; ++y, out += pitch) {
        const uint8_t* p = picture.pixels + picture.rowBytes * (picture.topRowFirst ? y : picture.height - 1 - y);
        for (int x = 0; x < picture.width; ++x, p += picture.bytesPerPixel)
            out[x] = picture.bytesPerPixel == 1 ? picture.palette[*p] : p[0] | p[1] << 8 | static_cast<uint32_t>(p[2]) << 16;
    }
}

static void WriteLe(uint8_t* at, uint32_t value, int bytes) {
    for (; bytes > 0; --bytes, value >>= 8) *at++ = static_cast<uint8_t>(value);
}

std::vector<uint8_t> EncodeBmp(const uint32_t* pixels, int width, int height, int pitch) {
    if (!pixels || width < 1 || height < 1) return {};
    const size_t rowBytes = (size_t(width) * 3 + 3) / 4 * 4;
    std::vector<uint8_t> file(headersEnd + rowBytes * height);
    file[0] = 'B';
    file[1] = 'M';
    WriteLe(&file[2], static_cast<uint32_t>(file.size()), 4);
    WriteLe(&file[dataStartAt], headersEnd, 4);
    WriteLe(&file[headerSizeAt], 40, 4);
    WriteLe(&file[widthAt], static_cast<uint32_t>(width), 4);
    WriteLe(&file[heightAt], static_cast<uint32_t>(height), 4);
    WriteLe(&file[planesAt], 1, 2);
    WriteLe(&file[bitsAt], 24, 2);
    WriteLe(&file[dataSizeAt], static_cast<uint32_t>(rowBytes * height), 4);
    for (int y = 0; y < height; ++y) {
        const uint32_t* row = pixels + ptrdiff_t{pitch} * (height - 1 - y);
        uint8_t* p = &file[headersEnd + rowBytes * y];
        for (int x = 0; x < width; ++x, p += 3) WriteLe(p, row[x], 3);
    }
    return file;
}
