// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace corvane {

// Names of files, folders, lists and skins are made by strangers: what of them a desktop gives to its system to be
// seen. In the UTF-16 units in which systems take texts.

/// One line of text: line breaks and tabs are blanks; other control characters, and those that turn the direction of
/// writing around, are seen as a replacement mark.
std::u16string shownLine(std::u16string text);

/// At most so many units, shortened in the middle; a pair of surrogates is not taken apart.
std::u16string cutInMiddle(const std::u16string& text, std::size_t most);

/// As shownLine(), with the line breaks kept and a text that would not fit a box shortened: words that do not fit in
/// their middle, very long lines in their middle, lines at the end.
std::u16string shownLines(std::u16string_view text, const std::function<bool(const std::u16string& word)>& fits);

/// As shownLine(), for a row of a list: shortened in its middle where it is longer than a list is ever wide. Desktops
/// shape the whole of a row before they cut it to what is seen, and each sign of some fonts is a picture of its own.
std::u16string shownRow(std::u16string text);

/// As shownLine(), shortened in its middle where it would fill the screen.
std::u16string shownTip(std::u16string text);

}  // namespace corvane
