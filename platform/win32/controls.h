// controls.h -- texts, ticks and visibility of a dialog's controls, for the *_dialog.cpp files.
#pragma once
#include <windows.h>

#include <string>

// In UTF-8.
std::string ControlText(HWND dialog, int id);
void SetControlText(HWND dialog, int id, const char* text);
bool ControlChecked(HWND dialog, int id);
void CheckControl(HWND dialog, int id, bool on);
void ShowControl(HWND dialog, int id, bool shown);
