// graph_setting.h -- the thinking of dialog 1022, "Graph Setting": one channel's grid and colours.
//
// Writes   the channel's GraphGrid_..., colour indices and ExclusiveF1Color (settings.h), at once.
// Range    channel 0..13; colour index 0..8.
#pragma once
#include <cstdint>

#include "settings/settings.h"

// The edits of the group "Grid". What they hold is the stored value in the channel's display units.
enum class GridField { min, max, step };
constexpr int gridFields    = 3;
constexpr int gridTextSize  = 32;
void ShowGridField(int channel, GridField field, char text[gridTextSize]);
// The field has been left: the typed number is limited and stored. The caller shows the field again.
void LeaveGridField(int channel, GridField field, const char* typed);

// The columns of radios: "File1", "File2", "File3" and "onlyF1".
enum class ColorColumn { file1, file2, file3, onlyFile1 };
constexpr int colorColumns = 4;
constexpr int colorChoices = 9;
// Colour index of a column's radio that is on, as it is stored; outside 0..8 none is.
int ColorChoice(int channel, ColorColumn column);
void SetColorChoice(int channel, ColorColumn column, int index);

// The samples beside the radios and what they stand on. Kept: a table of the dialog's own, which differs from the plot's
// palette in rows 7 and 8 of the light scheme.
struct SampleColor { uint8_t red, green, blue; };
SampleColor ColorSample(int index);
SampleColor SampleBackground();

// "color of  only File1" is offered at level Expert only; there it shows and hides the column "onlyF1" and its samples.
bool OnlyFile1Offered();
bool OnlyFile1Shown();

// To be called as the dialog opens: below Expert, File 1 loses the colours that it wears alone.
void OpenGraphSetting();
// The button "Close" keeps File 1's colour of the channel. Kept: the window's close button does not, so that a radio of
// "File1" clicked before is undone.
enum class GraphSettingEnd { button, window };
void CloseGraphSetting(int channel, GraphSettingEnd end);
