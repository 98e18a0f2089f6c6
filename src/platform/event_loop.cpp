// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/event_loop.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {
/// Events before the desktop's own get their turn: another program may send them by the thousand.
constexpr std::size_t kMostInATurn = 64;
}  // namespace

void EventLoop::post(Handler event) {
    queue_.push_back(std::move(event));
    if (!held()) wake();
}

void EventLoop::enter(const Handler& handler) {
    struct Depth {
        EventLoop& loop;
        explicit Depth(EventLoop& entered) : loop(entered) { ++loop.depth_; }
        ~Depth() {
            if (--loop.depth_ > 0) return;
            loop.tell(When::Quiet);
            loop.tell(When::Still);
        }
    } const depth(*this);
    handler();
}

void EventLoop::runPending() {
    for (std::size_t left = std::min(queue_.size(), kMostInATurn); left > 0 && !queue_.empty() && !held(); --left) {
        const Handler event = std::move(queue_.front());
        queue_.pop_front();
        enter(event);
    }
    if (!queue_.empty() && !held()) wake();
}

/// A handler may end its own watch, or another's.
void EventLoop::tell(When when) {
    const std::vector<Watch*> all = watches_;
    for (Watch* const each : all) {
        if (std::find(watches_.begin(), watches_.end(), each) == watches_.end() || each->when_ != when) continue;
        const Handler handler = each->handler_;
        handler();
    }
}

EventLoop::Watch::Watch(EventLoop& loop, When when, Handler handler)
    : loop_(loop), when_(when), handler_(std::move(handler)) {
    loop_.watches_.push_back(this);
}

EventLoop::Watch::~Watch() { std::erase(loop_.watches_, this); }

EventLoop::Hold::Hold(EventLoop& loop) : loop_(loop) {
    if (++loop_.holds_ == 1) loop_.tell(When::Still);
}

EventLoop::Hold::~Hold() {
    if (--loop_.holds_ == 0 && !loop_.queue_.empty()) loop_.wake();
}

}  // namespace corvane
