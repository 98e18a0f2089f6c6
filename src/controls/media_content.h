// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// What a file is by its bytes, whatever its name.
enum class MediaContent {
    Missing,  ///< no file, or it cannot be read
    Text,     ///< a list or description that could lead elsewhere, to the network too: never handed to a player
    Picture,  ///< which the players of sounds and movies would decode without any bound
    Midi,
    Wave,
    Other
};

/// By the first bytes of a file. Asks nothing of the system.
MediaContent contentOf(std::string_view start);

/// Why a file of that content is not opened; empty: it can be tried.
std::string refusalOf(MediaContent content);

}  // namespace corvane
