// drawables.h -- off-screen images that views draw into.
#pragma once

// A black image, or a clear one with an alpha channel, that can be a draw target. Its handle, or noHandle.
int MakeDrawable(int width, int height, bool alpha = false);
