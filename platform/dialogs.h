// dialogs.h -- opens the dialog with a resource id. The Windows half runs it; the headless half records it.
#pragma once

// Runs a modal dialog until it closes; returns its result. `argument` is the dialog's own (a channel, a mode).
int OpenDialog(int id, int argument = 0);
// A *_dialog.cpp registers its procedure with the Windows half here (a DLGPROC behind void*).
void RegisterDialog(int id, void* procedure);
// The argument of the OpenDialog that runs.
int DialogArgument();
