// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

namespace corvane {

inline constexpr int kCdSectorsPerSecond = 75;
inline constexpr int kCdSectorsPerMinute = 60 * kCdSectorsPerSecond;
inline constexpr int kCdFramesPerSector = 588;  ///< stereo sample frames
inline constexpr int kCdBytesPerSector = kCdFramesPerSector * 4;
inline constexpr int kCdSampleRate = 44100;

/// One track of a disc. Sectors of 1/75 s, counted as the disc counts them.
struct CdTrack {
    int number = 1;           ///< 1 to 99
    std::int64_t start = 0;   ///< first sector
    std::int64_t length = 0;  ///< sectors, at least 0
    bool audio = true;
};

/// A packed position taken apart: the track, and sectors from the track's start (negative: before it).
/// A second of 60 and more goes on into the next minutes; a second that was taken below 0 (its byte wrapped, with a
/// borrow from the frame) means second 59 of the minute before.
struct CdPosition {
    int track = 0;  ///< 0 to 255, as packed
    std::int64_t sectors = 0;
};
CdPosition unpackTmsf(std::int32_t packed);

/// Track in the lowest byte, then minutes, seconds and frames (1/75 s). Sectors of at least 0.
std::int32_t packTmsf(int track, std::int64_t sectors);

/// A length: minutes in the lowest byte, then seconds, frames.
std::int32_t packLength(std::int64_t sectors);

/// The track that sounds at a sector of the disc: the last one that has begun, the first one before all.
/// Null without tracks.
const CdTrack* trackAt(const std::vector<CdTrack>& tracks, std::int64_t sector);

/// The disc's sector of a packed position, held inside its track; a track that the disc lacks gives the nearest one's
/// start or end. 0 without tracks.
std::int64_t sectorOf(const std::vector<CdTrack>& tracks, std::int32_t packed);

/// The packed position of a sector. 0 without tracks.
std::int32_t tmsfOf(const std::vector<CdTrack>& tracks, std::int64_t sector);

}  // namespace corvane
