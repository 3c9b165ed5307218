#include "graph/drawables.h"

#include "draw/draw_layer.h"

int MakeDrawable(int width, int height, bool alpha) {
    ImageOptions options;
    GetImageOptions(&options);
    options.drawable = true;
    options.alpha = alpha;
    SetImageOptions(options);
    return CreateDrawableImage(width, height, 0);
}
