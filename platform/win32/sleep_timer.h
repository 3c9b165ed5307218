// sleep_timer.h -- the one timer that all waits share.
#pragma once
#include <windows.h>

// Set to go off once, after so many milliseconds.
HANDLE SleepTimer(int milliseconds);
