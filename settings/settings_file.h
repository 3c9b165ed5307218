// settings_file.h -- "ZRKA.ini" and "csvlabel.ini" in the program's folder.
#pragma once

constexpr int csvLabelSections = 13;  // Time, Ne, TH, VFW, VRW, FRSUS, RRSUS, LAF1, LAF2, VB, AUX1, AUX2, LAP
constexpr int csvLabelKeys     = 16;
extern char csvLabel[csvLabelSections][csvLabelKeys][64];  // column titles a CSV file may carry, default "No data"

// Reads every setting; what is missing takes its default, nothing is reported. Reads the section GraphSetting through
// LoadGraphLayout(0), and "csvlabel.ini" last.
void LoadSettings();
// Writes the keys that are kept. Failures are silent: a read-only program folder must not disturb the end of a run.
void SaveSettings();
// One key of the profile at hand (profilePath): "%d" and "%s".
void WriteIntKey(int value, const char* section, const char* key);
void WriteStringKey(const char* text, const char* section, const char* key);
// A value in place of the file's, for the run: applied by LoadSettings after reading. 0 done, 1 no such key.
int OverrideSetting(const char* section, const char* key, const char* value);
void DefaultSettingsFile();
