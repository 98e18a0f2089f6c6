// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

/// Characters of a tag's text that are kept.
inline constexpr std::size_t kMostTagCharacters = 300;

/// A tag as it is shown, in UTF-8 and one line. UTF-8 is kept; other bytes are read as Shift-JIS, Cyrillic
/// (code page 1251) or western letters (1252), by what they look like, and so is UTF-8 that some other program made of
/// such bytes, one character a byte. Line breaks and rows of blanks
/// are one blank, none stand at the ends; control characters and those that turn the direction of writing are left out;
/// a longer text ends with an ellipsis.
std::string tagText(std::string_view raw);

}  // namespace corvane
