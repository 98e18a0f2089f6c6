// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvane {

/// The places of an open device, counted in a unit of its own from 0, and what they are in the time formats of the
/// multimedia control (platform/mci_control.h).
class SoundAxis {
public:
    virtual ~SoundAxis() = default;

    virtual int unitsPerSecond() const = 0;
    virtual std::int64_t units() const = 0;  ///< the length; 0 unknown
    /// Packed positions: track, minute, second, frame (1/75 s), lowest byte first. Anything but a disc is one track,
    /// numbered 1.
    virtual std::int64_t fromTmsf(std::int32_t packed) const = 0;
    virtual std::int32_t toTmsf(std::int64_t units) const = 0;
    /// Minutes in the lowest byte, then seconds, frames; 0 when there is no such track.
    virtual std::int32_t trackLength(int track) const = 0;

    /// A place in a time format, held inside the length.
    std::int64_t fromPlace(std::int32_t place, int timeFormat) const;
    std::int32_t toPlace(std::int64_t units, int timeFormat) const;
    /// Where a play from `start` to this place ends. A track's own place as the end of its play is that of a disc whose
    /// lengths were not known yet: the track's end is meant.
    std::int64_t endOf(std::int32_t to, std::int64_t start, int timeFormat) const;
};

}  // namespace corvane
