// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_time.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <utility>

namespace corvane {

void QtTimers::Later::operator()(QTimer* timer) const {
    timer->stop();
    timer->deleteLater();
}

TimerId QtTimers::start(int intervalMs, std::function<void()> tick) {
    const TimerId id = ++last_;
    std::unique_ptr<QTimer, Later> timer(new QTimer);
    timer->setTimerType(Qt::PreciseTimer);
    QObject::connect(timer.get(), &QTimer::timeout, [this, id, tick = std::move(tick)] {
        if (!running_.contains(id)) return;
        const auto running = tick;  // the tick may stop its timer
        running();
    });
    timer->start(std::max(intervalMs, 1));
    running_.emplace(id, std::move(timer));
    return id;
}

void QtTimers::stop(TimerId timer) { running_.erase(timer); }

void QtTimers::stopAll() { running_.clear(); }

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

void QtRandom::seedFromClock() {
    engine_.seed(static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

double QtRandom::next() { return static_cast<double>(engine_() >> 11U) * 0x1.0p-53; }

}  // namespace corvane
