// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/media/sound/mci_axis.h"

#include <algorithm>
#include <limits>

#include "platform/mci_control.h"

namespace corvane {

namespace {

std::int64_t scaled(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
    return (value * numerator + denominator / 2) / denominator;
}

constexpr std::int64_t kMsPerSecond = 1000;

}  // namespace

std::int64_t MciAxis::fromPlace(std::int32_t place, int timeFormat) const {
    const std::int64_t most = length > 0 ? length : std::numeric_limits<std::int64_t>::max();
    std::int64_t units = 0;
    if (timeFormat != kFormatTmsf) {
        units = scaled(place, perSecond, kMsPerSecond);
    } else if (isDisc()) {
        units = sectorOf(tracks, place) - tracks.front().start;
    } else {
        units = scaled(unpackTmsf(place).sectors, perSecond, kCdSectorsPerSecond);
    }
    return std::clamp<std::int64_t>(units, 0, most);
}

std::int32_t MciAxis::toPlace(std::int64_t units, int timeFormat) const {
    if (timeFormat != kFormatTmsf) return static_cast<std::int32_t>(scaled(units, kMsPerSecond, perSecond));
    if (isDisc()) return tmsfOf(tracks, tracks.front().start + units);
    return packTmsf(1, scaled(units, kCdSectorsPerSecond, perSecond));
}

std::int32_t MciAxis::trackLength(int track) const {
    if (!isDisc()) return track == 1 ? packLength(scaled(length, kCdSectorsPerSecond, perSecond)) : 0;
    const auto found =
        std::find_if(tracks.begin(), tracks.end(), [&](const CdTrack& it) { return it.number == track; });
    return found != tracks.end() ? packLength(found->length) : 0;
}

std::int64_t MciAxis::endOf(std::int32_t to, std::int64_t from, int timeFormat) const {
    const std::int64_t end = fromPlace(to, timeFormat);
    if (!isDisc() || timeFormat != kFormatTmsf || unpackTmsf(to).sectors != 0) return end;
    const CdTrack* const track = trackAt(tracks, tracks.front().start + from);
    if (track->number != unpackTmsf(to).track) return end;
    return track->start + track->length - tracks.front().start;
}

}  // namespace corvane
