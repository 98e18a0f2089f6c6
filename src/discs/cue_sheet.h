// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "discs/cd_arithmetic.h"

namespace corvane {

/// The sheet (.cue) of a disc image: which files hold the disc, and where its tracks begin in them. Anybody may have
/// written it: what it says is bounded here, and it names files of its own folder alone.

inline constexpr std::size_t kMostCueBytes = std::size_t{64} * 1024;
inline constexpr std::int64_t kMostDiscSectors = std::int64_t{1000} * kCdSectorsPerMinute;  ///< of a whole image

/// A file of the image.
struct CueFile {
    enum class Kind {
        Raw,         ///< sectors one after the other, samples with the low byte first
        RawSwapped,  ///< the same, the high byte first
        Sound        ///< a sound file
    };
    std::string name;  ///< in the sheet's folder: what a path before it said does not count; never "", "." or ".."
    Kind kind = Kind::Raw;
};

/// A place that the sheet names.
struct CueIndex {
    int number = 1;           ///< 0 to 99; 1 is where the track begins
    std::size_t file = 0;     ///< which of the sheet's files
    std::int64_t sector = 0;  ///< from that file's begin
};

struct CueTrack {
    int number = 1;  ///< 1 to 99
    bool audio = true;
    int sectorBytes = kCdBytesPerSector;  ///< as a raw file holds them
    std::int64_t pregap = 0;              ///< sectors of silence before it that no file holds
    std::int64_t postgap = 0;             ///< the same behind it
    std::vector<CueIndex> indexes;        ///< upward; one of them has number 1
    std::string title, performer;
};

struct CueSheet {
    std::vector<CueFile> files;    ///< each holds a part of a track
    std::vector<CueTrack> tracks;  ///< at least one; numbered upward
    std::string title, performer;
};

struct ReadCueSheet {
    std::optional<CueSheet> sheet;
    std::string reason;  ///< why there is none, in words
};

/// Reads a sheet with lines that end in any way. Words that are not known are passed over; what is known and makes no
/// sense refuses the whole.
ReadCueSheet readCueSheet(std::string_view text);

/// A stretch of the disc that lies in one piece.
struct DiscPiece {
    std::int64_t start = 0;   ///< the disc's sector
    std::int64_t length = 0;  ///< sectors, at least 1
    std::size_t file = 0;     ///< which of the sheet's files; kNoFile: silence
    std::int64_t from = 0;    ///< where it begins in that file: bytes of a raw file, sectors of a sound file
    int sectorBytes = kCdBytesPerSector;
};
inline constexpr std::size_t kNoFile = static_cast<std::size_t>(-1);

struct DiscLayout {
    std::vector<CdTrack> tracks;    ///< as many as the sheet has; a track that its file does not reach has length 0
    std::vector<DiscPiece> pieces;  ///< one after the other from sector 0 on
};

/// Where everything lies. `lengths`: of each file of the sheet, bytes of a raw file, sectors of a sound file; at least
/// 0. Empty when the disc would be longer than kMostDiscSectors.
std::optional<DiscLayout> layOut(const CueSheet& sheet, const std::vector<std::int64_t>& lengths);

/// The piece with a sector; null when the disc has none.
const DiscPiece* pieceAt(const DiscLayout& layout, std::int64_t sector);

}  // namespace corvane
