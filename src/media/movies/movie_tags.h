// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>

namespace corvane {

// What a reply answers stands in the high half of its tag, the number of the open or turn in the low half.
enum MovieTag : std::uint64_t {
    kLoad = 1,
    kSeek,
    kEnd,
    kTracks,
    kTurned,
    kWidth,
    kHeight,
    kDuration,
    kSampleRate,
    kInterlaced,
    kChapters,
    kLight,
    kFormat,
    kWhole
};

constexpr std::uint64_t tagged(MovieTag tag, std::uint32_t number) { return std::uint64_t{tag} << 32 | number; }

}  // namespace corvane
