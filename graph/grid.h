// grid.h -- the grid and its numbers, drawn once into two narrow strips that each frame stretches over the client area.
#pragma once

// Draws gridStrip and labelStrip; after any change of grid, zoom, position, colours, visibility or load. Leaves the back
// buffer as draw target.
void BuildGrid();
