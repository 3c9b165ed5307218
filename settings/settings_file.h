// settings_file.h -- "ZRKA.ini" and "csvlabel.ini" in the program's folder.
//
// Read     once, before the window exists; what is missing takes its default and nothing is reported.
// Written  once, at the end of the run.
#pragma once
#include "settings/profile_file.h"

// Reads every setting, the graph layout among them, and "csvlabel.ini" last.
void LoadSettings();
// Writes the keys that are kept. Failures are silent: a read-only program folder must not disturb the end of a run.
void SaveSettings();
// A value in place of the file's, for every LoadSettings until DefaultSettingsFile. 0 done, 1 no such key.
int OverrideSetting(const char* section, const char* key, const char* value);
// The whole path of a file in the program's folder.
std::string ProgramFile(const char* name);
// All settings but the layout, from a profile that may be empty.
void ReadSettingKeys(const ProfileText& profile);
void DefaultSettingsFile();
