// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <vector>

namespace corvane {

/// The one queue of events on the user-interface thread. Timers, media events, drops and media-key commands
/// come through post(); mouse and keyboard come through enter(). All calls are made on that thread; a desktop's
/// worker threads marshal to it by their own means first.
class EventLoop {
public:
    using Handler = std::function<void()>;

    EventLoop() = default;
    EventLoop(const EventLoop&) = delete;
    EventLoop& operator=(const EventLoop&) = delete;
    virtual ~EventLoop() = default;

    /// Runs the event later, in order, never from inside this call; not while a Hold lives.
    void post(Handler event);
    /// Runs a handler now and counts it as running (depth); used by binders for mouse and keyboard.
    void enter(const Handler& handler);
    /// Runs the first of what was queued when called, and wakes for the rest. Called by the desktop after wake().
    void runPending();

    /// Handlers that are running now, nested loops included.
    int depth() const { return depth_; }
    bool idle() const { return queue_.empty(); }
    bool held() const { return holds_ > 0; }
    enum class When {
        Quiet,  ///< each time no handler is running any more
        Still   ///< each time the player stands still: behind Quiet, and when the first Hold begins
    };
    /// Calls a handler as long as it lives, in the order in which such watches were made. It goes before the loop.
    class Watch {
    public:
        Watch(EventLoop& loop, When when, Handler handler);
        ~Watch();
        Watch(const Watch&) = delete;
        Watch& operator=(const Watch&) = delete;

    private:
        friend class EventLoop;
        EventLoop& loop_;
        When when_;
        Handler handler_;
    };

    /// While one lives (a box is up), posted events wait.
    class Hold {
    public:
        explicit Hold(EventLoop& loop);
        ~Hold();
        Hold(const Hold&) = delete;
        Hold& operator=(const Hold&) = delete;

    private:
        EventLoop& loop_;
    };

protected:
    /// Asks the desktop to call runPending() soon.
    virtual void wake() = 0;

private:
    void tell(When when);

    std::deque<Handler> queue_;
    std::vector<Watch*> watches_;
    int depth_ = 0;
    int holds_ = 0;
};

}  // namespace corvane
