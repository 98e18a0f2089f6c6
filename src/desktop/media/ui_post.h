// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// The way of a worker thread to the one queue of events. Copies share the same end.
class UiPost {
public:
    /// Made on the user-interface thread.
    explicit UiPost(EventLoop& loop);

    /// Any thread: the event is queued in the EventLoop soon.
    void operator()(EventLoop::Handler event) const;
    /// On the user-interface thread: nothing is queued any more, by any copy. Called before the loop goes.
    void stop();

private:
    struct End {
        QObject receiver;
        EventLoop* loop = nullptr;
    };
    std::shared_ptr<End> end_;
};

}  // namespace corvane
