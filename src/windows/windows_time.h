// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <random>

#include "platform/ports.h"
#include "windows/message_window.h"

namespace corvane {

/// Timers of the message queue: they also tick inside the system's own loops.
class WindowsTimers : public Timers {
public:
    WindowsTimers();
    TimerId start(int intervalMs, std::function<void()> tick) override;
    void stop(TimerId timer) override;
    void stopAll();

private:
    std::optional<LRESULT> handle(UINT message, WPARAM timer);

    MessageWindow window_;
    std::map<TimerId, std::function<void()>> running_;
    TimerId last_ = 0;
};

class WindowsClock : public Clock {
public:
    LocalTime localTime() override;
    std::int64_t milliseconds() override;
};

class WindowsRandom : public Random {
public:
    void seedFromClock() override;
    double next() override;

private:
    std::mt19937_64 engine_;
};

}  // namespace corvane
