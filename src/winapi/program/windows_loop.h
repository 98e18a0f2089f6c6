// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <mutex>
#include <optional>
#include <vector>

#include "program/woken_loop.h"
#include "winapi/message_window.h"
#include "workers/ui_post.h"

namespace corvane {

/// The event loop over the thread's message queue: posted events run from a posted message, so they also run inside the
/// system's own loops (a menu, a window being moved), and input comes between the batches.
class WindowsLoop : public WokenLoop {
public:
    WindowsLoop();

    /// Handles messages until quit().
    void run();
    /// Handles messages until the condition holds; false: it did not within that time.
    bool runUntil(const std::function<bool()>& condition, int atMostMs);
    /// As runUntil(), inside the handling of a message: what waits for its end still waits.
    bool pumpInside(const std::function<bool()>& condition, int atMostMs);
    void quit();

    /// As post(), from any thread. What is sent after stop() is dropped.
    void postFromThread(Handler event);
    /// A way for workers; stopped before the loop goes.
    UiPost uiPost();
    /// Runs a handler when no message is being handled any more: for what must not go while its own code runs.
    void afterMessage(Handler handler);
    /// Looks at each message of the thread before it is dispatched; true: it was handled (dialog keys).
    void onMessage(std::function<bool(MSG&)> filter) { filter_ = std::move(filter); }

protected:
    bool callSoon() override;

private:
    std::optional<LRESULT> handle(UINT message);
    void takeSent();
    void deliver(MSG& message);
    void dispatch(MSG& message);
    bool handleUntil(const std::function<bool()>& condition, int atMostMs, void (WindowsLoop::*each)(MSG&));
    void runAfter();

    MessageWindow window_;
    std::function<bool(MSG&)> filter_;
    std::vector<Handler> after_;
    bool quitting_ = false;

    std::mutex mutex_;  ///< guards what follows
    std::vector<Handler> sent_;
};

}  // namespace corvane
