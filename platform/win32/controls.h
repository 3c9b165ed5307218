// controls.h -- texts, numbers, ticks, lists and visibility of a dialog's controls, for the *_dialog.cpp files.
#pragma once
#include <windows.h>

#include <string>

// In UTF-8.
std::string ControlText(HWND dialog, int id);
void SetControlText(HWND dialog, int id, const char* text);
void SetControlNumber(HWND dialog, int id, int number);
bool ControlChecked(HWND dialog, int id);
void CheckControl(HWND dialog, int id, bool on);
// Lists: an item at the end; the selected one, from 0, -1 for none.
void AddListItem(HWND dialog, int id, const std::wstring& text);
void SelectListItem(HWND dialog, int id, int item);
int SelectedListItem(HWND dialog, int id);
void ShowControl(HWND dialog, int id, bool shown);
