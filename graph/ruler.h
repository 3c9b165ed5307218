// ruler.h -- the distance between the cursor line and the mouse, in time and metres.
#pragma once

void DrawRuler();
