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
            if (loop.quiet_) loop.quiet_();
            if (loop.still_) loop.still_();
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

EventLoop::Hold::Hold(EventLoop& loop) : loop_(loop) {
    if (++loop_.holds_ == 1 && loop_.still_) loop_.still_();
}

EventLoop::Hold::~Hold() {
    if (--loop_.holds_ == 0 && !loop_.queue_.empty()) loop_.wake();
}

}  // namespace corvane
