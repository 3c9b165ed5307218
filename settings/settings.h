// settings.h -- the values of "ZRKA.ini" that no other module owns, and the graph layout.
//
// Written  by LoadSettings and LoadGraphLayout (settings_file.h, graph_layout.h), the dialogs and keys. A leaf: it
//          includes nothing of the house. The keys, start values and limits stand in settings_file.cpp and graph_layout.cpp.
#pragma once

constexpr int layoutChannels = 14;  // channelTotal of run_data/channels.h
constexpr int layoutFiles    = 3;
constexpr int colorRowSize   = 15;  // one more than there are channels

// Folders, UTF-8.
extern char dataFolder[261];  // shown first by the dialogs for logs and set-up files
extern char bmpFolder[261];   // for saved course images

// Window, in screen pixels.
extern int windowX, windowY;            // keys x, y
extern int windowWidth, windowHeight;   // client size, keys x2, y2
extern int zoomed;                      // 1: maximised

// A/F map.
extern int AFmap_YCH, AFmap_AFCH, AFmap_SWCH;
extern float AFmap_SWTHS;               // switch threshold, shown units

// Modes.
extern int CursolValueMode;    // bit 0 tags, bit 1 hides the panels, bit 2 hides the times at the top
extern int smoothingNE, smoothingVW;
extern int SmoothingSample;    // half width for Ne, VFW, VRW, 0..8
extern int CoursePosSource;    // 0 VFW, 1 VRW
extern int colortype;          // 0 dark, 1 light
extern int CourseLayout_on;
extern int GridFill;
extern int AnimeMode;
extern int BodyDisplay;
extern int SusgramDisplay;
extern int ExpertMode;         // 0 "Easy Mode", 1 "Standard", 2 "Expert "
extern int BaseLinePos;        // pixels
extern int AutoOnOffLoad;
extern int VFWCopyVRW;
extern int ModifyFileName;
extern int CslValWidth;        // pixels
extern int SusFilter_n;        // half width of the display filter, samples
extern int ExclusiveF1Color;
extern int HD_Display;
extern char CourseFile_name[257];

// Hidden switches.
extern int VSync, Memo_view, Blend_mode, Color_body, Debug, AWC, LC, Finalchg, VBerrexp;
extern int CompressFile, CompressFileVer, AllowCompressMode;
extern int SusVSampleNum;      // samples at the end of a log with suspension speed 0, 0..20
extern int SmoothingSTD;       // half width for the other channels, 0 off
extern int Lastcono, Maxcono;  // serial port numbers
extern int ColorMap, RTM, Shifter, SPLT;

// Graph layout: [channel] of run_data/channels.h.
extern int    channelPosition[layoutChannels];  // pixel row of value 0 at viewZoom 1
extern double channelZoom[layoutChannels];      // value units per pixel, above 0
extern int    GraphGrid_min[layoutChannels];    // stored units of the channel; TH in percent
extern int    GraphGrid_max[layoutChannels];
extern int    GraphGrid_step[layoutChannels];
extern int    GraphGrid_disp[layoutChannels];   // 0 or 1

// Colour indices, 0..8. File 1 has two stored rows and the current one.
extern int colorStored[2][colorRowSize];   // row 0 Color_Green, row 1 Color_Gonly
extern int colorCurrent[colorRowSize];     // what File 1 wears
extern int Color_Red[colorRowSize];        // File 2
extern int Color_White[colorRowSize];      // File 3

// Puts every value that a settings file can hold into its start state, which is what an empty file gives: the above, and
// those that graph/view_state.h and run_data/run_store.h own.
void DefaultSettings();
