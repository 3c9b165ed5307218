#include "draw/images.h"

#include <algorithm>
#include <new>
#include <vector>

#include "draw/bmp.h"
#include "draw/draw_state.h"
#include "draw/recording.h"
#include "platform/files.h"

constexpr int64_t bmpFileLimit = int64_t{256} << 20;  // bytes; more than the largest image takes

static std::vector<Image> images;
static ImageOptions creationOptions;
static bool alphaAllowed = true, allowed = true;

void DefaultImages() {
    images.clear();
    creationOptions = {true, false};
}

Image* FindImage(int handle) {
    if (handle < 0 || handle >= static_cast<int>(images.size()) || !images[handle].surface.pixels) return nullptr;
    return &images[handle];
}

Surface ImageSurface(int image) {
    const Image* found = FindImage(image);
    return found ? found->surface : Surface{nullptr, 0, 0, 0};
}

void GetImageOptions(ImageOptions* options) { *options = creationOptions; }
void SetImageOptions(const ImageOptions& options) { creationOptions = options; }
bool CanMakeAlphaImages() { return alphaAllowed; }
void AllowAlphaImages(bool allow) { alphaAllowed = allow; }
void AllowImages(bool allow) { allowed = allow; }

// The lowest free handle.
static int FreeHandle() {
    const auto free = std::find_if(images.begin(), images.end(), [](const Image& image) { return !image.surface.pixels; });
    if (free == images.end()) {
        images.emplace_back();
        return static_cast<int>(images.size()) - 1;
    }
    return static_cast<int>(free - images.begin());
}

// Room for what an image shows at one scale: as many samples as it has texels, since most of it is clear, up to those of the
// course picture, the largest that is drawn so, and 32 runs for each of its rows. Without it, or when an image shows more, it
// is filtered whenever it is drawn.
static KeptSamples ReserveSamples(int width, int height) {
    constexpr int mostSamples = 1 << 18, mostRuns = 1 << 14;
    KeptSamples kept{};
    kept.sampleRoom = std::min(width * height, mostSamples);
    kept.runRoom    = mostRuns;
    kept.samples.reset(new (std::nothrow) uint32_t[kept.sampleRoom]);
    kept.runs.reset(new (std::nothrow) SampleRun[mostRuns]);
    if (!kept.runs) kept.samples.reset();
    return kept;
}

int AddImage(int width, int height, const ImageOptions& options) {
    if (!allowed || width < 1 || height < 1 || width > imageSideLimit || height > imageSideLimit) return noHandle;
    const int pitch = ((width + 15) / 16 | 1) * 16;
    std::unique_ptr<uint32_t[]> memory{new (std::nothrow) uint32_t[size_t(pitch) * height]()};
    const Surface surface{memory.get(), width, height, pitch};
    std::unique_ptr<uint64_t[]> bits{new (std::nothrow) uint64_t[size_t(height) * MaskWords(surface)]};
    if (!memory || !bits) return noHandle;
    const int handle = FreeHandle();
    images[handle]   = Image{};
    images[handle].surface = surface;
    images[handle].memory  = std::move(memory);
    images[handle].visibleBits = std::move(bits);
    images[handle].options = options;
    images[handle].keyable = !options.alpha;
    if (options.alpha) images[handle].kept = ReserveSamples(width, height);
    return handle;
}

int CreateDrawableImage(int width, int height, int unused) {
    Record("CreateDrawableImage", width, height, unused);
    if (creationOptions.alpha && !alphaAllowed) return noHandle;
    return AddImage(width, height, creationOptions);
}

int LoadImageFile(const char* fileName, int transparent) {
    Record("LoadImageFile", fileName, transparent);
    FileBytes file;
    if (ReadWholeFile(fileName, bmpFileLimit, 0, file) != 0) return noHandle;
    BmpPicture picture;
    if (OpenBmp(file.data.get(), file.length, &picture) != 0) return noHandle;
    const int handle = AddImage(picture.width, picture.height, {false, false});
    if (handle == noHandle) return noHandle;
    Image& image = images[handle];
    ReadBmpPixels(picture, image.surface.pixels, image.surface.pitch);
    image.keyable = image.keyed = transparent == 1;
    image.key = drawState.transparentColor;
    return handle;
}

static void TakeTarget(const DrawTarget& target) {
    drawState.target = target;
    UpdatePaintRule();
}
void TargetBackBuffer() { TakeTarget({backBuffer, BackBufferSurface(), false}); }

static void FreeImage(int handle) {
    images[handle] = Image{};
    ForgetImageName(handle);
    if (drawState.target.handle == handle) TargetBackBuffer();
}

void DeleteImage(int image) {
    Record("DeleteImage", ImageArgument{image});
    if (FindImage(image)) FreeImage(image);
}

void DeleteAllImages() {
    Record("DeleteAllImages");
    for (int handle = 0; handle < static_cast<int>(images.size()); ++handle) FreeImage(handle);
    images.clear();
}

void SetDrawTarget(int image) {
    Record("SetDrawTarget", ImageArgument{image});
    if (image == backBuffer) return TargetBackBuffer();
    Image* found = FindImage(image);
    if (!found || !found->options.drawable) return;
    found->visibleKnown = false;
    TakeTarget({image, found->surface, found->options.alpha});
}

void ClearImageBlack(int image) {
    Record("ClearImageBlack", ImageArgument{image});
    Image* found = FindImage(image);
    if (!found) return;
    found->visibleKnown = false;
    const Surface& surface = found->surface;
    std::fill_n(surface.pixels, size_t(surface.pitch) * surface.height, 0u);
}

int SaveDrawTargetBmp(const char* fileName, int width, int height) {
    Record("SaveDrawTargetBmp", fileName, width, height);
    const Surface& surface = drawState.target.surface;
    const std::vector<uint8_t> file =
        EncodeBmp(surface.pixels, std::min(width, surface.width), std::min(height, surface.height), surface.pitch);
    return file.empty() ? 1 : ReplaceFile(fileName, file.data(), file.size());
}

Color TransparentColorOf(const Image& image) { return image.keyed ? image.key : drawState.transparentColor; }

// Whether a transparent draw shows nothing of a texel.
static bool IsClear(const Image& image, uint32_t texel, Color key) {
    if (image.options.alpha) return texel == 0;
    return image.keyable && texel == key;
}

constexpr int shortGap = 4;  // texels; to leave out fewer costs more than to draw them

static void FindVisibleBits(const Image& image, const uint32_t* row, Color key, uint64_t* bits) {
    std::fill_n(bits, MaskWords(image.surface), uint64_t{0});
    int next = image.surface.width;  // behind the last visible texel, where a gap begins; none yet
    for (int x = 0; x < image.surface.width; ++x) {
        if (IsClear(image, row[x], key)) continue;
        for (int at = x - next < shortGap ? std::min(next, x) : x; at <= x; ++at) bits[at / 64] |= uint64_t{1} << at % 64;
        next = x + 1;
    }
}

const TexelBox& VisibleTexels(Image& image) {
    const Color key = TransparentColorOf(image);
    if (image.visibleKnown && image.visibleKey == key) return image.visible;
    const Surface& s = image.surface;
    TexelBox box{s.width, s.height, 0, 0};
    for (int y = 0; y < s.height; ++y) {
        const uint32_t* row = s.pixels + ptrdiff_t{s.pitch} * y;
        FindVisibleBits(image, row, key, &image.visibleBits[size_t(y) * MaskWords(s)]);
        int left = 0, right = s.width;
        while (left < right && IsClear(image, row[left], key)) ++left;
        while (right > left && IsClear(image, row[right - 1], key)) --right;
        if (left == right) continue;
        box = {std::min(box.left, left), std::min(box.top, y), std::max(box.right, right), y + 1};
    }
    image.kept.state   = KeptState::none;
    image.visible      = box;
    image.visibleKey   = key;
    image.visibleKnown = drawState.target.surface.pixels != s.pixels;  // it still changes while it is the target
    return image.visible;
}
