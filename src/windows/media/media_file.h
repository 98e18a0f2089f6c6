// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// What a file is by its bytes, whatever its name.
enum class MediaContent {
    Missing,  ///< no file, or it cannot be read
    Text,     ///< a list or description that could lead elsewhere, to the network too: never handed to a player
    Midi,
    Wave,
    Other
};

/// By the first bytes of a file.
MediaContent contentOf(std::string_view start);
MediaContent contentOfFile(const std::wstring& path);

/// Why a file of that content is not opened; empty: it can be tried.
std::string refusalOf(MediaContent content);

/// A path for system parts that take 127 characters at most: the short form of a longer one, where there is one.
std::wstring pathForMci(const std::wstring& path);

/// The disc drive ("D:") on which a file lies; else the first drive, and "" where there is none.
std::wstring discDriveOf(const std::wstring& path);

}  // namespace corvane
