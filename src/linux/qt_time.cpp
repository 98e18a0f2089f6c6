// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_time.h"

#include <QTimerEvent>
#include <chrono>
#include <ctime>

namespace corvane {

std::uint64_t QtTimers::begin(int intervalMs) {
    return static_cast<std::uint64_t>(startTimer(intervalMs, Qt::PreciseTimer));
}

void QtTimers::cease(std::uint64_t number) { killTimer(static_cast<int>(number)); }

void QtTimers::timerEvent(QTimerEvent* event) { ticked(static_cast<std::uint64_t>(event->timerId())); }

LocalTime QtClock::localTime() {
    const std::time_t now = std::time(nullptr);
    std::tm parts{};
    localtime_r(&now, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

std::int64_t QtClock::milliseconds() {
    const auto since = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration_cast<std::chrono::milliseconds>(since).count();
}

std::uint64_t finestTime() {
    return static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count());
}

}  // namespace corvane
