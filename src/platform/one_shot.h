// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

#include "platform/ports.h"

namespace corvane {

/// Something that is done once, later, unless it is stopped before or this goes. On the user-interface thread.
class OneShot {
public:
    /// The timers outlive it.
    OneShot(Timers& timers, std::function<void()> due) : timers_(timers), due_(std::move(due)) {}
    OneShot(const OneShot&) = delete;
    OneShot& operator=(const OneShot&) = delete;
    ~OneShot() { stop(); }

    /// In place of a start before.
    void start(int milliseconds) {
        stop();
        runs_ = true;
        timer_ = timers_.start(milliseconds, [this] {
            stop();
            const auto due = due_;  // this may go in it
            due();
        });
    }
    void stop() {
        if (std::exchange(runs_, false)) timers_.stop(timer_);
    }
    bool runs() const { return runs_; }

private:
    Timers& timers_;
    std::function<void()> due_;
    TimerId timer_{};
    bool runs_ = false;
};

}  // namespace corvane
