// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "fake/call_log.h"
#include "fake/schedule.h"
#include "platform/ports.h"

namespace corvane {

/// Periodic timers on the virtual time.
class FakeTimers : public Timers {
public:
    FakeTimers(Schedule& schedule, CallLog& log) : schedule_(schedule), log_(log) {}

    TimerId start(int intervalMs, std::function<void()> tick) override;
    void stop(TimerId timer) override;

    int running() const { return static_cast<int>(periods_.size()); }

private:
    struct Period {
        int intervalMs;
        std::function<void()> tick;
        Schedule::Id due;
    };
    void plan(TimerId timer, std::int64_t time);

    Schedule& schedule_;
    CallLog& log_;
    TimerId last_ = 0;
    std::map<TimerId, Period> periods_;
};

/// The virtual time; the local time starts where a test sets it and goes on with it.
class FakeClock : public Clock {
public:
    explicit FakeClock(const Schedule& schedule) : schedule_(schedule) {}

    LocalTime localTime() override;
    std::int64_t milliseconds() override { return schedule_.now(); }

    /// The local time at virtual time 0. The date does not change with the hours.
    LocalTime start{2001, 2, 3, 0, 0, 0};

private:
    const Schedule& schedule_;
};

}  // namespace corvane
