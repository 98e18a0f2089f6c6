// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
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
    /// The stage's time, milliseconds from any start.
    virtual std::int64_t now() {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now().time_since_epoch())
            .count();
    }
    /// Lets this much time pass and events run.
    void pass(int milliseconds) {
        (void)waitFor([] { return false; }, milliseconds);
    }
};

/// What a clock read and when.
template <class T>
struct Reading {
    std::int64_t at = 0;  ///< stage's milliseconds
    T value{};
};

/// Reads a clock at a time that is known: again where this program was held up meanwhile.
template <class Read>
auto readingOf(Stage& stage, Read read) {
    Reading<decltype(read())> reading;
    for (int tries = 0; tries < 50; ++tries) {
        reading.at = stage.now();
        reading.value = read();
        if (stage.now() - reading.at <= 2) break;
    }
    return reading;
}

/// A contract's parameter: makes the stage of one party.
template <class S>
using StageFactory = std::unique_ptr<S> (*)();

}  // namespace corvane
