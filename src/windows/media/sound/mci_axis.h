// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "discs/cd_arithmetic.h"

namespace corvane {

/// The places of an open device, counted in its own unit from 0: milliseconds, or the sectors of a disc.
struct MciAxis {
    int perSecond = 1000;
    std::int64_t length = 0;      ///< units; 0 unknown
    std::vector<CdTrack> tracks;  ///< of a disc; empty otherwise

    bool isDisc() const { return !tracks.empty(); }
    /// A place in a control's time format, held inside the length.
    std::int64_t fromPlace(std::int32_t place, int timeFormat) const;
    std::int32_t toPlace(std::int64_t units, int timeFormat) const;
    /// Packed: minutes in the lowest byte, then seconds, frames; 0 when there is no such track. Anything but a disc is
    /// one track.
    std::int32_t trackLength(int track) const;
    /// Where a play to this place ends. On a disc the beginning of the track that it plays from stands for that track's
    /// end: who asks did not know its length yet.
    std::int64_t endOf(std::int32_t to, std::int64_t from, int timeFormat) const;
};

}  // namespace corvane
