// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <map>

#include "platform/ports.h"

namespace corvane {

/// Timers over a system's own, which it tells by numbers. Ours are never given twice, so that who stops a timer that
/// has gone stops no other. A tick that comes late is not made up for.
class NumberedTimers : public Timers {
public:
    TimerId start(int intervalMs, std::function<void()> tick) override;
    void stop(TimerId timer) override;
    void stopAll();

protected:
    /// Begins a timer of the system, which calls ticked() again and again; its number, of none that runs.
    virtual std::uint64_t begin(int intervalMs) = 0;
    virtual void cease(std::uint64_t number) = 0;
    /// The timer of the system is due; one that has ceased does nothing.
    void ticked(std::uint64_t number);

private:
    struct Running {
        TimerId timer;
        std::function<void()> tick;
    };
    std::map<std::uint64_t, Running> running_;  ///< by the system's number
    TimerId last_ = 0;
};

}  // namespace corvane
