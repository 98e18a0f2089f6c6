// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvane {

/// Where a playing device stands between two of its reports. Devices differ: some tell their place exactly, some in
/// steps of a third of a second that count what is queued, not what is heard. While the reports come in steps the clock
/// counts; once they are fine they are believed. Places are in the device's unit, times in milliseconds of any steady
/// clock.
class MciClock {
public:
    explicit MciClock(int unitsPerSecond = 1000) : perSecond_(unitsPerSecond) {}

    void start(std::int64_t place, std::int64_t now);  ///< plays from there
    void hold(std::int64_t place);                     ///< stands there
    /// What the device says of itself while it plays.
    void report(std::int64_t place, std::int64_t now);
    /// Never goes back while playing, other than where the device itself has jumped back.
    std::int64_t place(std::int64_t now) const;

private:
    std::int64_t units(std::int64_t milliseconds) const { return milliseconds * perSecond_ / 1000; }

    int perSecond_;
    bool runs_ = false;
    std::int64_t place_ = 0;     ///< at since_
    std::int64_t since_ = 0;     ///< milliseconds
    std::int64_t reported_ = 0;  ///< the device's last word
    bool heard_ = false;         ///< it has said something since the start
    int changes_ = 0;            ///< reports in a row of which each was another place
};

}  // namespace corvane
