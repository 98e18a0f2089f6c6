// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/cd_arithmetic.h"

#include <algorithm>

namespace corvane {

CdPosition unpackTmsf(std::int32_t packed) {
    const auto bits = static_cast<std::uint32_t>(packed);
    const std::int64_t minute = bits >> 8 & 0xFF;
    std::int64_t second = bits >> 16 & 0xFF;
    std::int64_t frame = bits >> 24;
    if (second >= 0x80) {
        second -= 0x100;
        frame = (frame + 1) & 0xFF;
    }
    return {static_cast<int>(bits & 0xFF), minute * kCdSectorsPerMinute + second * kCdSectorsPerSecond + frame};
}

std::int32_t packLength(std::int64_t sectors) {
    const std::int64_t held = std::max<std::int64_t>(sectors, 0);
    const std::int64_t minute = std::min<std::int64_t>(held / kCdSectorsPerMinute, 0xFF);
    const std::int64_t second = held / kCdSectorsPerSecond % 60;
    const std::int64_t frame = held % kCdSectorsPerSecond;
    return static_cast<std::int32_t>(minute | second << 8 | frame << 16);
}

std::int32_t packTmsf(int track, std::int64_t sectors) {
    const auto length = static_cast<std::uint32_t>(packLength(sectors));
    return static_cast<std::int32_t>(length << 8 | (static_cast<std::uint32_t>(track) & 0xFF));
}

const CdTrack* trackAt(const std::vector<CdTrack>& tracks, std::int64_t sector) {
    if (tracks.empty()) return nullptr;
    const CdTrack* found = &tracks.front();
    for (const CdTrack& track : tracks) {
        if (track.start <= sector) found = &track;
    }
    return found;
}

std::int64_t sectorOf(const std::vector<CdTrack>& tracks, std::int32_t packed) {
    if (tracks.empty()) return 0;
    const CdPosition position = unpackTmsf(packed);
    if (position.track < tracks.front().number) return tracks.front().start;
    for (const CdTrack& track : tracks) {
        if (track.number == position.track)
            return track.start + std::clamp<std::int64_t>(position.sectors, 0, track.length);
    }
    return tracks.back().start + tracks.back().length;
}

std::int32_t tmsfOf(const std::vector<CdTrack>& tracks, std::int64_t sector) {
    const CdTrack* const track = trackAt(tracks, sector);
    if (track == nullptr) return 0;
    return packTmsf(track->number, std::clamp<std::int64_t>(sector - track->start, 0, track->length));
}

}  // namespace corvane
