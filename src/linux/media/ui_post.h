// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// The way of a worker thread to the user-interface thread, in order, also of a worker that outlives the loop: Qt's
/// queue carries a call for each event, and the events stand in a queue under a mutex of our own, where the thread
/// sanitizer sees who hands them to whom. Copies share the same end. Made on the user-interface thread.
class UiPost {
public:
    /// Its events are queued in that loop.
    explicit UiPost(EventLoop& loop);
    /// Its events run as they come, also while a Hold lives.
    UiPost();

    /// Any thread: the event runs on the user-interface thread soon.
    void operator()(EventLoop::Handler event) const;
    /// On the user-interface thread: nothing runs or is queued any more, by any copy. Called before the loop and the
    /// last copy go.
    void stop();

private:
    struct End;
    std::shared_ptr<End> end_;
};

}  // namespace corvane
