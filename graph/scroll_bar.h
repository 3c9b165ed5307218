// scroll_bar.h -- the bar at the bottom: where in File 1 the view stands.
#pragma once

void DrawScrollBar();
