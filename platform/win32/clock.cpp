#include "platform/clock.h"

#include <windows.h>

int64_t SteadyMs() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return count.QuadPart / frequency.QuadPart * 1000 + count.QuadPart % frequency.QuadPart * 1000 / frequency.QuadPart;
}

// Sleep() rounds up to the scheduler's tick of some 15 ms, a timer of high resolution does not. Systems before
// Windows 10 1803 have none; there the tick is what one gets.
static HANDLE SleepTimer() {
#ifndef CREATE_WAITABLE_TIMER_HIGH_RESOLUTION
    constexpr DWORD CREATE_WAITABLE_TIMER_HIGH_RESOLUTION = 2;
#endif
    static HANDLE timer =
        CreateWaitableTimerExW(nullptr, nullptr, CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, SYNCHRONIZE | TIMER_MODIFY_STATE);
    return timer;
}

void SleepMs(int milliseconds) {
    if (milliseconds <= 0) return;
    LARGE_INTEGER due;
    due.QuadPart = -10000LL * milliseconds;  // negative: from now, in 100 ns
    if (SleepTimer() && SetWaitableTimer(SleepTimer(), &due, 0, nullptr, nullptr, FALSE))
        WaitForSingleObject(SleepTimer(), INFINITE);
    else
        Sleep(static_cast<DWORD>(milliseconds));
}

void SpinUntil(int64_t steadyMs) {
    while (SteadyMs() < steadyMs) YieldProcessor();
}

LocalTime NowLocal() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}
