// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/sound_axis.h"

#include <algorithm>
#include <limits>

#include "discs/cd_arithmetic.h"
#include "platform/mci_control.h"

namespace corvane {

namespace {

constexpr std::int64_t kMsPerSecond = 1000;
constexpr std::int64_t kMostSeconds = 2'000'000;  ///< whose milliseconds fit into 32 bits

}  // namespace

std::int64_t SoundAxis::fromPlace(std::int32_t place, int timeFormat) const {
    const std::int64_t at = timeFormat == kFormatTmsf
                                ? fromTmsf(place)
                                : (std::int64_t{place} * unitsPerSecond() + kMsPerSecond / 2) / kMsPerSecond;
    return std::clamp<std::int64_t>(at, 0, units() > 0 ? units() : std::numeric_limits<std::int64_t>::max());
}

std::int32_t SoundAxis::toPlace(std::int64_t at, int timeFormat) const {
    if (timeFormat == kFormatTmsf) return toTmsf(at);
    const std::int64_t rate = unitsPerSecond();
    return static_cast<std::int32_t>((std::min(at, kMostSeconds * rate) * kMsPerSecond + rate / 2) / rate);
}

std::int64_t SoundAxis::endOf(std::int32_t to, std::int64_t start, int timeFormat) const {
    const CdPosition wanted = unpackTmsf(to);
    const bool isTracksOwn =
        timeFormat == kFormatTmsf && wanted.sectors == 0 && unpackTmsf(toTmsf(start)).track == wanted.track;
    if (!isTracksOwn) return fromPlace(to, timeFormat);
    const auto length = static_cast<std::uint32_t>(trackLength(wanted.track));
    return fromPlace(static_cast<std::int32_t>(length << 8U) + wanted.track, timeFormat);
}

}  // namespace corvane
