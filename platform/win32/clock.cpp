#include "platform/clock.h"

#include "platform/win32/sleep_timer.h"

int64_t SteadyMs() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return count.QuadPart / frequency.QuadPart * 1000 + count.QuadPart % frequency.QuadPart * 1000 / frequency.QuadPart;
}

// Sleep() rounds up to the scheduler's tick of some 15 ms, a timer of high resolution does not. Systems before
// Windows 10 1803 have none; there the tick is what one gets.
HANDLE SleepTimer(int milliseconds) {
    constexpr DWORD highResolution = 2;  // CREATE_WAITABLE_TIMER_HIGH_RESOLUTION, not in every header
    constexpr DWORD access = SYNCHRONIZE | TIMER_MODIFY_STATE;
    static const HANDLE exact = CreateWaitableTimerExW(nullptr, nullptr, highResolution, access);
    static const HANDLE timer = exact ? exact : CreateWaitableTimerExW(nullptr, nullptr, 0, access);
    LARGE_INTEGER due;
    due.QuadPart = -10000LL * milliseconds;  // negative: from now, in 100 ns
    SetWaitableTimer(timer, &due, 0, nullptr, nullptr, FALSE);
    return timer;
}

void SleepMs(int milliseconds) {
    if (milliseconds > 0) WaitForSingleObject(SleepTimer(milliseconds), INFINITE);
}

void SpinUntil(int64_t steadyMs) {
    while (SteadyMs() < steadyMs) YieldProcessor();
}

LocalTime NowLocal() {
    SYSTEMTIME now;
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}
