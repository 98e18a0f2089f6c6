// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <new>
#include <utility>

#include "platform/event_loop.h"

namespace corvane::test {

/// The end of a desktop's loop that workers post to: the test runs what came. Any thread posts.
class PostedEvents {
public:
    static constexpr std::chrono::milliseconds kDeadline{10'000};

    void post(EventLoop::Handler event) {
        const std::lock_guard lock(mutex_);
        if (refused_ > 0) {
            --refused_;
            throw std::bad_alloc();
        }
        events_.push_back(std::move(event));
        came_.notify_all();
    }
    /// There is no memory for so many of the next ones.
    void refuse(int times) {
        const std::lock_guard lock(mutex_);
        refused_ = times;
    }
    /// Runs the next one; false: none came.
    bool run(std::chrono::milliseconds patience = kDeadline) {
        EventLoop::Handler event;
        {
            std::unique_lock lock(mutex_);
            if (!came_.wait_for(lock, patience, [this] { return !events_.empty(); })) return false;
            event = std::move(events_.front());
            events_.pop_front();
        }
        event();
        return true;
    }

private:
    std::mutex mutex_;
    std::condition_variable came_;
    std::deque<EventLoop::Handler> events_;
    int refused_ = 0;
};

}  // namespace corvane::test
