// harmonize.h -- two logs taken with different tyres, made comparable.
#pragma once

// Turns File 1's wheel speeds into those that File 2's tyres would have given, and tells so. Only with File 2 in use and both
// of File 1's circumferences 100 mm or more; nothing happens otherwise, and nothing a second time. Distances and laps keep the
// old tyres' values until the file is loaded again.
void HarmonizeTyreLength();
