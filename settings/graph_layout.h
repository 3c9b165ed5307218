// graph_layout.h -- positions, zooms, grids, colours and show flags of the 14 channels: the section "GraphSetting" of
// "ZRKA.ini", or a ".cfg" file of the user's.
#pragma once

// Reads the layout. showDialog 0: from "ZRKA.ini"; 1: asks for a ".cfg" file, guarded by loadBusy; a cancel changes
// nothing. Missing keys take their defaults.
void LoadGraphLayout(int showDialog);
// The same for writing.
void SaveGraphLayout(int showDialog);
// Copies the current row's entry of the channel to the stored row Color_Green.
void StoreColorIndex(int channel);
