// Any bytes as a picture file: a picture inside its limits, or a refusal.
#include <cstdlib>
#include <vector>

#include "draw/bmp.h"
#include "draw/images.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::vector<uint8_t> file(data, data + size);  // a copy of its own, so that every read past the end shows
    BmpPicture picture;
    if (OpenBmp(file.data(), static_cast<int64_t>(file.size()), &picture) != 0) return 0;
    if (picture.width < 1 || picture.width > imageSideLimit || picture.height < 1 || picture.height > imageSideLimit) std::abort();
    std::vector<uint32_t> pixels(size_t(picture.width) * picture.height);
    ReadBmpPixels(picture, pixels.data(), picture.width);
    for (const uint32_t pixel : pixels)
        if (pixel >> 24) std::abort();
    const std::vector<uint8_t> again = EncodeBmp(pixels.data(), picture.width, picture.height, picture.width);
    BmpPicture copy;
    if (OpenBmp(again.data(), static_cast<int64_t>(again.size()), &copy) != 0) std::abort();
    std::vector<uint32_t> same(pixels.size());
    ReadBmpPixels(copy, same.data(), copy.width);
    if (same != pixels) std::abort();
    return 0;
}
