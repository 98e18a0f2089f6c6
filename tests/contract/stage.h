// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

#include "platform/event_loop.h"

namespace corvane {

/// Where a contract is tried: one party that implements the ports, and its time.
class Stage {
public:
    Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    virtual ~Stage() = default;

    virtual EventLoop& loop() = 0;
    /// Lets time pass and events run until the condition holds; false: it did not within that time.
    virtual bool waitFor(const std::function<bool()>& condition, int atMostMs) = 0;
    /// Lets this much time pass and events run.
    void pass(int milliseconds) {
        (void)waitFor([] { return false; }, milliseconds);
    }
};

/// A contract's parameter: makes the stage of one party.
template <class S>
using StageFactory = std::unique_ptr<S> (*)();

}  // namespace corvane
