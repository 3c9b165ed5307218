// graph_layout.h -- positions, zooms, grids, colours and show flags of the 14 channels: the section "GraphSetting" of
// "ZRKA.ini", or a ".cfg" file of the user's.
//
// Values   in settings/settings.h, but for showChannel and MarksPerLap of run_data/run_store.h.
#pragma once
#include "settings/profile_file.h"
#include "settings/settings.h"

// A channel's words in the key names, and what a missing key reads as, in the file's form.
struct ChannelLayout {
    const char *positionKey, *zoomKey, *viewWord;
    int position, zoom;         // zoom times 1000
    int min, max, step, disp;   // grid
    int file1, file2, file3;    // colour indices; File 1's also when it is alone
    int view;                   // shown, in every file
};
extern const ChannelLayout channelLayout[layoutChannels];

// Reads the layout. showDialog 0: from "ZRKA.ini"; 1: asks for a ".cfg" file, guarded by loadBusy; a cancel changes
// nothing. Missing keys take their defaults.
void LoadGraphLayout(int showDialog);
// The same for writing.
void SaveGraphLayout(int showDialog);
// Copies the current row's entry of the channel to the stored row Color_Green, also when the current one is the lone
// file's.
void StoreColorIndex(int channel);

// The section from and into a profile at hand.
void ReadLayoutKeys(const ProfileText& profile);
void WriteLayoutKeys(ProfileText& profile);
