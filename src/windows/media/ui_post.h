// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <mutex>

#include "windows/windows_loop.h"

namespace corvane {

/// The way of a worker thread to the one queue of events, also of a worker that outlives the loop. Copies share the
/// same end.
class UiPost {
public:
    explicit UiPost(WindowsLoop& loop) : end_(std::make_shared<End>()) { end_->loop = &loop; }

    /// Any thread: the event is queued in the loop soon.
    void operator()(EventLoop::Handler event) const {
        const std::lock_guard lock(end_->mutex);
        if (end_->loop != nullptr) end_->loop->postFromThread(std::move(event));
    }
    /// Nothing is queued any more, by any copy. Called before the loop goes.
    void stop() const {
        const std::lock_guard lock(end_->mutex);
        end_->loop = nullptr;
    }

private:
    struct End {
        std::mutex mutex;
        WindowsLoop* loop = nullptr;
    };
    std::shared_ptr<End> end_;
};

}  // namespace corvane
