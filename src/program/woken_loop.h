// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "platform/event_loop.h"

namespace corvane {

/// The event loop over a system's own: one call of the system's queue runs a batch of posted events, so that painting
/// and input come between the batches.
class WokenLoop : public EventLoop {
public:
    /// No posted event runs after this.
    void stop();
    bool stopped() const { return stopped_; }

protected:
    /// Asks the system for a call of called(), later. False: it refuses; it is asked again with the next event.
    virtual bool callSoon() = 0;
    void called();

private:
    void wake() final;

    bool woken_ = false;
    bool stopped_ = false;
    std::optional<Hold> end_;  ///< breaks off the batch that is running
};

}  // namespace corvane
