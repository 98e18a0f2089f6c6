// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "controls/sound_axis.h"
#include "discs/cd_arithmetic.h"

namespace corvane {

/// The axis of a device that tells of itself: milliseconds, or the sectors of a disc from its first track on.
struct MciAxis : SoundAxis {
    MciAxis() = default;
    MciAxis(int unitsASecond, std::int64_t wholeLength, std::vector<CdTrack> discTracks)
        : perSecond(unitsASecond), length(wholeLength), tracks(std::move(discTracks)) {}

    bool isDisc() const { return !tracks.empty(); }
    int unitsPerSecond() const override { return perSecond; }
    std::int64_t units() const override { return length; }
    std::int64_t fromTmsf(std::int32_t packed) const override;
    std::int32_t toTmsf(std::int64_t units) const override;
    std::int32_t trackLength(int track) const override;

    int perSecond = 1000;
    std::int64_t length = 0;      ///< units; 0 unknown
    std::vector<CdTrack> tracks;  ///< of a disc; empty otherwise
};

}  // namespace corvane
