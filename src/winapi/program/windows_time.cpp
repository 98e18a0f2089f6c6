// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/program/windows_time.h"

#include <chrono>

namespace corvane {

WindowsTimers::WindowsTimers()
    : window_([this](UINT message, WPARAM timer, LPARAM) -> std::optional<LRESULT> {
          if (message != WM_TIMER) return std::nullopt;
          ticked(timer);
          return 0;
      }) {}

std::uint64_t WindowsTimers::begin(int intervalMs) {
    SetTimer(window_.handle(), static_cast<UINT_PTR>(++last_), static_cast<UINT>(intervalMs), nullptr);
    return last_;
}

void WindowsTimers::cease(std::uint64_t number) { KillTimer(window_.handle(), static_cast<UINT_PTR>(number)); }

LocalTime WindowsClock::localTime() {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    return {now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute, now.wSecond};
}

std::int64_t WindowsClock::milliseconds() {
    LARGE_INTEGER ticks{};
    LARGE_INTEGER second{};
    QueryPerformanceCounter(&ticks);
    QueryPerformanceFrequency(&second);
    return ticks.QuadPart / second.QuadPart * 1000 + ticks.QuadPart % second.QuadPart * 1000 / second.QuadPart;
}

std::uint64_t finestTime() {
    return static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

}  // namespace corvane
