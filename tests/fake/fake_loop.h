// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/event_loop.h"

namespace corvane {

/// The event loop of the machine in memory: runs when a test lets it run.
class FakeLoop : public EventLoop {
public:
    /// Runs posted events until none is left or they are held. Throws when they never end.
    void drain();
    int wakes() const { return wakes_; }  ///< how often the loop asked to be run

protected:
    void wake() override {
        woken_ = true;
        ++wakes_;
    }

private:
    bool woken_ = false;
    int wakes_ = 0;
};

}  // namespace corvane
