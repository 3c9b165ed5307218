#include "platform/clock.h"

#include <algorithm>
#include <ctime>
#include <thread>

#include "platform/headless/script_state.h"

namespace chrono = std::chrono;

int64_t SteadyMs() {
    if (script.virtualClock) return script.virtualMs;
    return chrono::duration_cast<chrono::milliseconds>(chrono::steady_clock::now().time_since_epoch()).count();
}

void SleepMs(int milliseconds) {
    if (script.virtualClock)
        script.virtualMs += milliseconds > 0 ? milliseconds : 0;
    else
        std::this_thread::sleep_for(chrono::milliseconds{milliseconds});
}

void SpinUntil(int64_t steadyMs) {
    if (script.virtualClock) script.virtualMs = std::max<int64_t>(script.virtualMs, steadyMs);
    while (SteadyMs() < steadyMs) {
    }
}

LocalTime NowLocal() {
    if (script.virtualClock) {
        const auto now   = script.virtualStart + chrono::seconds{script.virtualMs / 1000};
        const auto today = chrono::floor<chrono::days>(now);
        const chrono::year_month_day date{today};
        const chrono::hh_mm_ss time{now - today};
        return {int{date.year()},
                static_cast<int>(unsigned{date.month()}),
                static_cast<int>(unsigned{date.day()}),
                static_cast<int>(time.hours().count()),
                static_cast<int>(time.minutes().count()),
                static_cast<int>(time.seconds().count())};
    }
    const std::time_t now = std::time(nullptr);
    const std::tm* local  = std::localtime(&now);
    return {local->tm_year + 1900, local->tm_mon + 1, local->tm_mday, local->tm_hour, local->tm_min, local->tm_sec};
}
