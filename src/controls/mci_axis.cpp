// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/mci_axis.h"

#include <algorithm>

namespace corvane {

namespace {

std::int64_t scaled(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
    return (value * numerator + denominator / 2) / denominator;
}

}  // namespace

std::int64_t MciAxis::fromTmsf(std::int32_t packed) const {
    if (isDisc()) return sectorOf(tracks, packed) - tracks.front().start;
    return scaled(unpackTmsf(packed).sectors, perSecond, kCdSectorsPerSecond);
}

std::int32_t MciAxis::toTmsf(std::int64_t units) const {
    if (isDisc()) return tmsfOf(tracks, tracks.front().start + units);
    return packTmsf(1, scaled(units, kCdSectorsPerSecond, perSecond));
}

std::int32_t MciAxis::trackLength(int track) const {
    if (!isDisc()) return track == 1 ? packLength(scaled(length, kCdSectorsPerSecond, perSecond)) : 0;
    const auto found =
        std::find_if(tracks.begin(), tracks.end(), [&](const CdTrack& it) { return it.number == track; });
    return found != tracks.end() ? packLength(found->length) : 0;
}

}  // namespace corvane
