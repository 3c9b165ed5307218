// Images: from the call to a mapped image inside the target.
#include <algorithm>
#include <cmath>

#include "draw/images.h"
#include "draw/raster.h"
#include "draw/recording.h"
#include "run_data/fixed_point.h"

// Where an image goes: pixel (x, y) of the whole target shows the texel (u, v) = start + x across + y down.
struct Destination {
    PixelRect area;  // not yet clipped
    Walk walk;       // at the centre of (area.left, area.top)
    int64_t uDown, vDown;
    bool isRect;     // area is just what the whole image covers; a turned image has a box around it, clipped already
};

static int64_t ToFixed(double texels) { return static_cast<int64_t>(std::clamp(texels, -1e9, 1e9) * oneTexel); }
// A pixel, held where sums of two still fit.
static int FloorToInt(double value) { return TruncToInt(std::clamp(std::floor(value), -1e9, 1e9)); }

// The samples that an image keeps of this destination, nullptr when there are none or it is drawn like this for the first time:
// while a picture grows it is filtered in each frame, and when it rests only once more. Up to the longest side each width and
// height has a step of its own, so that equal steps mean an equal size.
static KeptSamples* KeptFor(KeptSamples& kept, const Destination& to) {
    constexpr int longestSide = 8192;
    const bool fits = int64_t{to.area.right} - to.area.left <= longestSide &&
                      int64_t{to.area.bottom} - to.area.top <= longestSide;
    if (!kept.samples || !to.isRect || !fits || to.walk.uStep == oneTexel) return nullptr;
    const Walk &a = kept.walk, &b = to.walk;
    const bool same = a.u == b.u && a.v == b.v && a.uStep == b.uStep && kept.vDown == to.vDown;
    if (same && kept.state != KeptState::none) return &kept;
    kept.walk  = to.walk;
    kept.vDown = to.vDown;
    kept.state = KeptState::asked;
    return nullptr;
}

static void DrawMapped(Image& image, Destination to, bool transparent) {
    const Surface& source = image.surface;
    if (source.pixels == drawState.target.surface.pixels) return;  // an image drawn on itself draws nothing
    MappedImage mapped{};
    const bool clear = transparent && (image.options.alpha || image.keyable);
    mapped.texels = {source.pixels,     source.width, source.height, source.pitch, clear && !image.options.alpha,
                     TransparentColorOf(image), clear && image.options.alpha ? 0 : alphaBits};
    mapped.mix = PrepareMix();
    if (mapped.mix.kind == BlendKind::nothing) return;
    mapped.area = ClipToTarget(to.area);
    if (Empty(mapped.area)) return;
    const int64_t columns = int64_t{mapped.area.left} - to.area.left, rows = int64_t{mapped.area.top} - to.area.top;
    mapped.walk = {to.walk.u + to.walk.uStep * columns + to.uDown * rows, to.walk.v + to.walk.vStep * columns + to.vDown * rows,
                   to.walk.uStep, to.walk.vStep};
    mapped.uDown  = to.uDown;
    mapped.vDown  = to.vDown;
    mapped.smooth = drawState.smooth;
    // A transparent draw looks only where something shows; the filter reaches one texel further.
    const bool turned = to.walk.vStep != 0 || to.walk.uStep <= 0;
    mapped.visibleBits = clear && !turned ? image.visibleBits.get() : nullptr;
    mapped.maskWords   = MaskWords(source);
    const TexelBox box = clear ? VisibleTexels(image) : TexelBox{0, 0, source.width, source.height};
    mapped.uLow  = oneTexel * std::max(box.left - 1, 0);
    mapped.vLow  = oneTexel * std::max(box.top - 1, 0);
    mapped.uHigh = oneTexel * std::min(box.right + 1, source.width);
    mapped.vHigh = oneTexel * std::min(box.bottom + 1, source.height);
    if (box.left >= box.right) return;
    mapped.whole = to.area;
    mapped.kept  = mapped.visibleBits && mapped.smooth ? KeptFor(image.kept, to) : nullptr;
    backEnd->image(mapped);
}

// One axis of an unturned draw: texels from `low` to `high` pixels, mirrored when they are swapped.
static void MapAxis(int low, int high, int texels, int* first, int* end, int64_t* start, int64_t* step) {
    *first = std::min(low, high);
    *end   = std::max(low, high);
    if (*first == *end) return;
    *step  = oneTexel * texels / (int64_t{*end} - *first);
    *start = *step / 2;
    if (low < high) return;
    *start = oneTexel * texels - *start;
    *step  = -*step;
}

static void DrawOnRect(Image& image, int x1, int y1, int x2, int y2, bool transparent) {
    Destination to{};
    MapAxis(x1, x2, image.surface.width, &to.area.left, &to.area.right, &to.walk.u, &to.walk.uStep);
    MapAxis(y1, y2, image.surface.height, &to.area.top, &to.area.bottom, &to.walk.v, &to.vDown);
    to.isRect = true;
    DrawMapped(image, to, transparent);
}

static void DrawScaled(Image& image, float x, float y, float pivotX, float pivotY, double xScale, double yScale,
                       bool transparent) {
    const double left = x - pivotX * xScale, top = y - pivotY * yScale;
    const int x1 = FloorToInt(left), y1 = FloorToInt(top);
    const bool plainCopy = xScale == 1 && yScale == 1;
    const auto end = [plainCopy](double low, double start, double size) {
        if (plainCopy) return TruncToInt(low + size);
        return FloorToInt(start + size);
    };
    DrawOnRect(image, x1, y1, end(x1, left, image.surface.width * xScale), end(y1, top, image.surface.height * yScale),
               transparent);
}

// Steps above this shrink any image to less than a pixel.
constexpr double largestStep = imageSideLimit * 2.0;

static void DrawTurned(Image& image, float x, float y, float pivotX, float pivotY, double scale, double angle,
                       bool transparent) {
    const double c = std::cos(angle), s = std::sin(angle);
    const double uStep = c / scale, vStep = -s / scale;
    if (!(std::fabs(uStep) < largestStep && std::fabs(vStep) < largestStep)) return;
    // The box around the four turned corners.
    double left = 1e9, top = 1e9, right = -1e9, bottom = -1e9;
    for (int corner = 0; corner < 4; ++corner) {
        const double dx = ((corner & 1 ? image.surface.width : 0) - pivotX) * scale;
        const double dy = ((corner & 2 ? image.surface.height : 0) - pivotY) * scale;
        left   = std::min(left, x + dx * c - dy * s);
        right  = std::max(right, x + dx * c - dy * s);
        top    = std::min(top, y + dx * s + dy * c);
        bottom = std::max(bottom, y + dx * s + dy * c);
    }
    Destination to{};
    to.area = ClipToTarget({FloorToInt(left), FloorToInt(top), FloorToInt(right) + 1, FloorToInt(bottom) + 1});
    if (Empty(to.area)) return;
    const double dx = to.area.left + 0.5 - x, dy = to.area.top + 0.5 - y;
    to.walk  = {ToFixed(pivotX + dx * uStep - dy * vStep), ToFixed(pivotY + dx * vStep + dy * uStep), ToFixed(uStep),
                ToFixed(vStep)};
    to.uDown = -to.walk.vStep;
    to.vDown = to.walk.uStep;
    DrawMapped(image, to, transparent);
}

int DrawImageStretched(int x1, int y1, int x2, int y2, int image, int transparent) {
    Record("DrawImageStretched", x1, y1, x2, y2, ImageArgument{image}, transparent);
    Image* found = FindImage(image);
    if (!found) return -1;
    DrawOnRect(*found, x1, y1, x2, y2, transparent == 1);
    return 0;
}

int DrawImageRotated(float x, float y, float pivotX, float pivotY, int image, int transparent, double scale, double angle) {
    Record("DrawImageRotated", x, y, pivotX, pivotY, ImageArgument{image}, transparent, scale, angle);
    Image* found = FindImage(image);
    if (!found) return -1;
    if (!(scale > 0)) return 0;
    if (angle == 0)
        DrawScaled(*found, x, y, pivotX, pivotY, scale, scale, transparent == 1);
    else
        DrawTurned(*found, x, y, pivotX, pivotY, scale, angle, transparent == 1);
    return 0;
}

int DrawImageScaledXY(float x, float y, float pivotX, float pivotY, int image, double xScale, double yScale) {
    Record("DrawImageScaledXY", x, y, pivotX, pivotY, ImageArgument{image}, xScale, yScale);
    Image* found = FindImage(image);
    if (!found) return -1;
    DrawScaled(*found, x, y, pivotX, pivotY, xScale, yScale, false);
    return 0;
}
