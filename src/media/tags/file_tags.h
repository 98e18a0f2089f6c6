// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <string>

namespace corvane {

/// What a file says of itself, in the bytes that it has; "" and 0: nothing.
struct FileTags {
    std::string title, artist, album;
    int track = 0;
    std::string cover;      ///< the bytes of a JPEG or PNG picture inside the file; "": none
    std::string coverPath;  ///< of a picture beside the file; "": none, or there is one inside
};

/// Reads a sound's or a movie's tags, or those that the sheet of an image has for a disc's track. For workers: reads so
/// many bytes and for so long at most, and comes back early once the flag was set. What cannot be read has none. A
/// cover is looked for where one is wanted.
FileTags readFileTags(const std::string& path, const std::atomic<bool>& givenUp, bool withCover = true);

inline constexpr std::size_t kMostTagBytes = 4096;                     ///< of one text
inline constexpr std::size_t kMostCoverBytes = std::size_t{4} << 20U;  ///< of a picture, inside or beside

}  // namespace corvane
