// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

// Names of files, folders, lists and skins are made by strangers. None of their characters changes what stands beside
// them: `shell/shown_text.h` decides what is seen of them, here in the form that the system takes.

/// One line of text, of whatever is seen: labels, rows, fields, titles, what screen readers say.
std::wstring shownText(std::string_view text);

/// For a box of the system, which makes no word shorter and can be wider than its screen.
std::wstring shownLines(std::string_view text);

/// For a tip.
std::wstring shownTip(std::string_view text);

}  // namespace corvane
