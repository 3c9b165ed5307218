// boxes.h -- message and confirmation boxes. Texts are ASCII with file names in UTF-8; texts and titles are exact.
#pragma once

enum class BoxOwner { none, mainWindow, toolbar, activeDialog };
// Shows `text` under `title` with OK.
void ShowBox(const char* text, const char* title, BoxOwner owner = BoxOwner::mainWindow);
// OK and Cancel, Cancel as default. 1 for OK.
int ConfirmBox(const char* text, const char* title, BoxOwner owner = BoxOwner::mainWindow);
