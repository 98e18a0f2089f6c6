// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <atomic>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A file of subtitles beside a movie.
struct SubtitleFile {
    std::string name;    ///< its own, without the folder
    std::string bytes;   ///< whole; empty when it is not shown
    std::string reason;  ///< why it is not, in words; empty when it is
};

inline constexpr std::size_t kMostSubtitleBytes = std::size_t{8} << 20U;

/// The files of the movie's name and folder that end in .srt, .ass or .vtt, in this order. What they are is asked of
/// their bytes as well: lists and movies that are named so are not shown. Reads whole files: call it in a worker.
std::vector<SubtitleFile> subtitlesBeside(const std::string& movie, const std::atomic<bool>& stop);

/// Whether the bytes are subtitles in text, of any of the three kinds, in any code of characters.
bool areSubtitles(std::string_view bytes);

}  // namespace corvane
