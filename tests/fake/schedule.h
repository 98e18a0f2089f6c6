// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace corvane {

/// Virtual time: what is to happen when, in milliseconds from 0. Same time: in the order it was asked for.
class Schedule {
public:
    using Id = std::uint64_t;

    std::int64_t now() const { return now_; }
    /// Runs the action once at that time (not before now).
    Id at(std::int64_t time, std::function<void()> action);
    void cancel(Id id);
    /// Time of the next action, if any.
    std::optional<std::int64_t> next() const;
    /// Sets the time to the next action's and runs that.
    void runNext();
    /// Sets the time; never goes back, and nothing is run.
    void passTo(std::int64_t time);

private:
    using Key = std::pair<std::int64_t, Id>;
    std::int64_t now_ = 0;
    Id last_ = 0;
    std::map<Key, std::function<void()>> actions_;
    std::map<Id, std::int64_t> times_;
};

}  // namespace corvane
