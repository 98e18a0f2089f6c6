// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_time.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace corvane {

TimerId FakeTimers::start(int intervalMs, std::function<void()> tick) {
    if (intervalMs < 1) throw std::logic_error("a timer needs an interval of at least 1 ms");
    const TimerId timer = ++last_;
    log_.did("timers.start " + std::to_string(intervalMs));
    periods_[timer] = {intervalMs, std::move(tick), 0};
    plan(timer, schedule_.now() + intervalMs);
    return timer;
}

void FakeTimers::stop(TimerId timer) {
    const auto found = periods_.find(timer);
    if (found == periods_.end()) return;
    log_.did("timers.stop");
    schedule_.cancel(found->second.due);
    periods_.erase(found);
}

void FakeTimers::plan(TimerId timer, std::int64_t time) {
    periods_[timer].due = schedule_.at(time, [this, timer, time] {
        const auto found = periods_.find(timer);
        if (found == periods_.end()) return;
        const auto tick = found->second.tick;  // the tick may stop its own timer
        plan(timer, time + found->second.intervalMs);
        tick();
    });
}

LocalTime FakeClock::localTime() {
    constexpr int kSecondsADay = 24 * 60 * 60;
    LocalTime time = start;
    const std::int64_t passed = start.hour * 3600 + start.minute * 60 + start.second + schedule_.now() / 1000;
    const int second = static_cast<int>(passed % kSecondsADay);
    time.hour = second / 3600;
    time.minute = second / 60 % 60;
    time.second = second % 60;
    return time;
}

}  // namespace corvane
