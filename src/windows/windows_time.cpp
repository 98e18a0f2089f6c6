// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windows_time.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace corvane {

WindowsTimers::WindowsTimers()
    : window_([this](UINT message, WPARAM first, LPARAM) { return handle(message, first); }) {}

TimerId WindowsTimers::start(int intervalMs, std::function<void()> tick) {
    const TimerId id = ++last_;
    running_.emplace(id, std::move(tick));
    SetTimer(window_.handle(), static_cast<UINT_PTR>(id), static_cast<UINT>(std::max(intervalMs, 1)), nullptr);
    return id;
}

void WindowsTimers::stop(TimerId timer) {
    if (running_.erase(timer) > 0) KillTimer(window_.handle(), static_cast<UINT_PTR>(timer));
}

void WindowsTimers::stopAll() {
    while (!running_.empty()) stop(running_.begin()->first);
}

std::optional<LRESULT> WindowsTimers::handle(UINT message, WPARAM timer) {
    if (message != WM_TIMER) return std::nullopt;
    const auto found = running_.find(static_cast<TimerId>(timer));
    if (found == running_.end()) return 0;  // it was in the queue when it was stopped
    const auto tick = found->second;        // the tick may stop its timer
    tick();
    return 0;
}

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

void WindowsRandom::seedFromClock() {
    engine_.seed(static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

double WindowsRandom::next() { return static_cast<double>(engine_() >> 11U) * 0x1.0p-53; }

}  // namespace corvane
