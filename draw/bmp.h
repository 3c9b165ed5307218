// bmp.h -- BMP pictures in memory: 8, 24 and 32 bits a pixel are read, 24 bits are written. Numbers are little-endian.
//
//   OFFSET SIZE MEANING
//    0     2    "BM"
//    10    4    where the pixels begin
//    14    4    size of the second header, 40 or more; the palette stands behind it, 4 bytes an entry: blue, green, red, 0
//    18    4    width, 1 or more
//    22    4    height; negative when the top row comes first, else the bottom row does
//    28    2    bits a pixel
//    30    4    compression: 0, or with 32 bits 3 (channel masks, which must be the ordinary ones)
//    46    4    palette entries, 0 for all
//   Each row is filled up to a multiple of 4 bytes.
#pragma once
#include <cstdint>
#include <vector>

// A picture whose pixels lie in a file's bytes.
struct BmpPicture {
    int width, height;
    bool topRowFirst;
    int bytesPerPixel;        // 1, 3, 4
    int64_t rowBytes;         // filled up
    const uint8_t* pixels;
    uint32_t palette[256];    // entries that the file does not have are black
};
// Looks at any bytes. 0 done; 1 when they are no picture of these kinds or are cut off. Refuses sides above imageSideLimit.
int OpenBmp(const uint8_t* bytes, int64_t length, BmpPicture* picture);
// Writes width x height pixels 0x00RRGGBB, top row first, pitch in pixels.
void ReadBmpPixels(const BmpPicture& picture, uint32_t* out, int pitch);
// A whole file; empty for a size below 1.
std::vector<uint8_t> EncodeBmp(const uint32_t* pixels, int width, int height, int pitch);
