// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// The way of a worker thread to the user-interface thread, in order, also of a worker that outlives the loop. The
/// events stand in a queue under a mutex of our own, and a call of the system's queue is made for each. Copies share
/// the same end. Made on the user-interface thread.
class UiPost {
public:
    /// What a system's queue calls the user-interface thread by.
    class Door {
    public:
        Door() = default;
        Door(const Door&) = delete;
        Door& operator=(const Door&) = delete;
        virtual ~Door() = default;  ///< on any thread, the system's queue may be gone

        /// Any thread, one at a time, not after shut(): that call is made on the user-interface thread soon, in order,
        /// never from inside this one.
        virtual void ask(EventLoop::Handler call) = 0;
        /// On the user-interface thread, once: what was asked for is not called any more. May be inside such a call.
        virtual void shut() = 0;
    };
    using MakeDoor = std::function<std::unique_ptr<Door>()>;

    /// Its events run as they come, also while a Hold lives.
    explicit UiPost(MakeDoor make);
    /// Its events are queued in that loop.
    UiPost(MakeDoor make, EventLoop& loop);
    /// One over the same queue of the system, with an end of its own, whose events run as they come.
    UiPost another() const;

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
