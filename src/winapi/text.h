// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// Texts and paths are UTF-8 inside and UTF-16 for the system. Names from the system come back the same, also those
/// that are not valid UTF-16 (a lone surrogate becomes three bytes of its own). Bytes from a file that are no UTF-8 are
/// read in the code page that the system was set up with, so that lists written by older programs find their files.
std::wstring toWide(std::string_view text);
std::string fromWide(std::wstring_view text);

/// Whether the bytes are UTF-8, lone surrogates allowed.
bool isUtf8(std::string_view text);

}  // namespace corvane
