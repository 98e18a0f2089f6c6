// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// A file, as somebody reads it for us.
struct TagSource {
    /// So many bytes from a place on; fewer where the file ends, none where it cannot be read.
    std::function<std::string(std::uint64_t from, std::size_t count)> read;
    std::uint64_t size = 0;
};

/// A tag: its name in lower case ("title", "artist", "album", "track", "replaygain_track_gain" and the like), and what
/// it says, as bytes or in UTF-8.
using TakeTag = std::function<void(std::string_view name, std::string_view value)>;

inline constexpr std::size_t kMostTagBytesRead = std::size_t{1} << 20U;  ///< of one tag that holds several

/// What a file says of itself: ID3, the comments of FLAC and Ogg, APE, the lists of MP4, ASF and RIFF. It may be
/// anything: what is damaged says what stands before the damage. Several may say the same thing, the best one first.
void readTags(const TagSource& file, const TakeTag& take);

/// "3", "03/12": 3; 0: it is no number.
int trackNumberOf(std::string_view text);

}  // namespace corvane
