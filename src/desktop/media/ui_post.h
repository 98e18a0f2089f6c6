// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// The way of a worker thread to the user-interface thread: a queue under a mutex of its own, in order; Qt's loop is
/// only woken. Copies share the same end. Made on the user-interface thread; the system's error is thrown when it
/// has no descriptor left.
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
