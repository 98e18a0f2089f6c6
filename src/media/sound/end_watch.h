// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <optional>

namespace corvane {

/// Tells when all that was given to a sink has been heard. What the sink says decides, but not for ever: a busy sound
/// server can let its last report stand at some 25 ms, behind which the end would never come. Then the clock decides.
class EndWatch {
public:
    using Time = std::chrono::steady_clock::time_point;
    /// How much later than first told an end may be before it is taken to have been heard.
    static constexpr std::chrono::milliseconds kPatience{200};

    /// Asked once all was given: are at most `early` of the `pending` frames left to be heard?
    bool heard(double pending, double early, double rate, Time now) {
        const auto left = std::chrono::duration<double>(pending / rate);
        if (!latest_) latest_ = now + std::chrono::duration_cast<Time::duration>(left) + kPatience;
        return pending <= early || now >= *latest_;
    }
    /// More was given, or the sink stood still: the clock begins afresh.
    void reset() { latest_.reset(); }

private:
    std::optional<Time> latest_;
};

}  // namespace corvane
