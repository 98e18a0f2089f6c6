// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "program/numbered_timers.h"
#include "winapi/message_window.h"

namespace corvane {

/// Timers of the message queue: they also tick inside the system's own loops.
class WindowsTimers : public NumberedTimers {
public:
    WindowsTimers();

protected:
    std::uint64_t begin(int intervalMs) override;
    void cease(std::uint64_t number) override;

private:
    MessageWindow window_;
    std::uint64_t last_ = 0;  ///< never given again: a message of a timer that was stopped may still be in the queue
};

class WindowsClock : public Clock {
public:
    LocalTime localTime() override;
    std::int64_t milliseconds() override;
};

/// The system's time in its finest unit.
std::uint64_t finestTime();

}  // namespace corvane
