// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

#include "winapi/program/windows_loop.h"

namespace corvane {

/// What the system tells its windows of the machine's sleep (WM_POWERBROADCAST), which each of them hears, as one sleep
/// and one awakening. What is to be done before the sleep has been done when the system is answered: it waits for two
/// seconds.
class SleepWatch {
public:
    /// told: in a posted event. The loop outlives it.
    SleepWatch(WindowsLoop& loop, std::function<void(bool sleeps)> told) : loop_(loop), told_(std::move(told)) {}

    /// What such a message says first.
    void heard(WPARAM what);

private:
    WindowsLoop& loop_;
    std::function<void(bool)> told_;
    bool sleeps_ = false;
};

}  // namespace corvane
