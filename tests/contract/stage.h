// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

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
    /// What of that time this program's threads waited for a processor; 0 where nobody counts it.
    virtual std::int64_t heldUp() { return 0; }
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

/// A clock that is followed: what it tells, and when, from some time on.
template <class Read>
class Pace {
public:
    using Value = decltype(std::declval<Read>()());

    Pace(Stage& stage, Read read) : stage_(stage), read_(std::move(read)), held_(stage.heldUp()) {
        stage_.pass(50);  // it may be late still for what held this program up before
        first_ = readingOf(stage_, read_);
    }
    struct Step {
        Value gone{};                ///< by the clock
        std::int64_t passed = 0;     ///< milliseconds of the stage
        std::int64_t mayBeLate = 0;  ///< of these: what nobody let it run
    };
    Step step() {
        const auto now = readingOf(stage_, read_);
        const std::int64_t passed = now.at - first_.at;
        return {now.value - first_.value, passed, std::clamp<std::int64_t>(stage_.heldUp() - held_, 0, passed + 50)};
    }

private:
    Stage& stage_;
    Read read_;
    std::int64_t held_;
    Reading<Value> first_;
};

/// A contract's parameter: makes the stage of one party.
template <class S>
using StageFactory = std::unique_ptr<S> (*)();

}  // namespace corvane
