// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// The way of a worker thread to the one queue of events. Copies share the same receiver.
class UiPost {
public:
    /// Made on the user-interface thread; the loop outlives every copy's use.
    explicit UiPost(EventLoop& loop);

    /// Any thread: the event is queued in the EventLoop soon.
    void operator()(EventLoop::Handler event) const;

private:
    EventLoop* loop_;
    std::shared_ptr<QObject> receiver_;
};

}  // namespace corvane
