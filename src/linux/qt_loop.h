// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <optional>

#include "platform/event_loop.h"

namespace corvane {

/// The event loop over Qt's: posted events run from a queued call, so painting and input come between the batches.
class QtLoop : public EventLoop {
public:
    /// No posted event runs after this.
    void stop();

protected:
    void wake() override;

private:
    QObject target_;
    bool woken_ = false;
    bool stopped_ = false;
    std::optional<Hold> end_;  ///< breaks off the batch that is running
};

}  // namespace corvane
