// color_scheme.h -- colours of the two schemes, colour ramps, and which row of colours File 1 wears.
#pragma once
#include "draw/draw_layer.h"
#include "run_data/channels.h"

extern Color channelColor[channelTotal][fileSlots];
extern Color backColor, panelBackColor, cursorColor, gridMajorColor, gridMinorColor, lapHoverColor;
extern Color lapBarColor[fileSlots];
extern Color scrollTrackColor, scrollThumbColor, scrollEdgeColor;
extern Color debugColor[3];
extern Color fileTextColor[fileSlots], lapTextColor[fileSlots], lapLineColor[fileSlots];
extern Color panelMask[fileSlots], tagMask[fileSlots];  // OR-ed into a channel colour to lighten it
extern Color whiteColor;
extern Color speedRamp[40], coolRamp[41], ColorRamp[256];

// Palette entry of a colour index in the scheme at hand; an index outside 0..7 gives the last row.
Color PaletteColor(int index);
// Fills all roles and tables from colortype; another colortype leaves them.
void BuildColors();
void BuildColorRamp();
// Chooses File 1's current row, then BuildColors. forceNormal keeps Color_Green.
void ApplyColorSet(int forceNormal);
// The dark scheme, whatever colortype says; the settings at hand give the channel colours.
void DefaultColorScheme();
