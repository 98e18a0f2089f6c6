// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "controls/media_content.h"

namespace corvane {

MediaContent contentOfFile(const std::wstring& path);

/// Its first bytes; fewer where it ends, none where it cannot be read.
std::string startOfFile(const std::wstring& path);

/// Why a file is handed to none of the system's players; empty: it can be tried.
std::string refusalOfFile(const std::wstring& path);

/// A path for system parts that take 127 characters at most: the short form of a longer one, where there is one.
std::wstring pathForMci(const std::wstring& path);

/// The disc drive ("D:") on which a file lies; else the first drive, and "" where there is none.
std::wstring discDriveOf(const std::wstring& path);

}  // namespace corvane
