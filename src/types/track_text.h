// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What a movie says of one of its tracks, harmless or not.
struct TrackName {
    std::string title;     ///< "" none
    std::string language;  ///< "" none
};

/// Which one of a movie's tracks comes behind the present one: the first behind none; behind the last one none where
/// that is a choice, else the first.
std::optional<std::size_t> trackBehind(std::size_t tracks, std::optional<std::size_t> present, bool noneIsAChoice);

/// What is said on the picture of subtitles, or sounds, of which one or none was chosen.
std::string subtitlesText(const std::vector<TrackName>& tracks, std::optional<std::size_t> chosen);
std::string soundsText(const std::vector<TrackName>& tracks, std::optional<std::size_t> chosen);

}  // namespace corvane
