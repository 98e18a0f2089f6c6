// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>

/// What the bytes of a text that others wrote mean. Everything inside is UTF-8.
namespace corvane::text {

/// Adds a character; one that there cannot be is added as U+FFFD.
void appendUtf8(std::string& text, char32_t character);

/// Whether all of it is UTF-8 of the shortest form, without halves of pairs.
bool isUtf8(std::string_view text);

/// The text with U+FFFD for each byte that is no UTF-8.
std::string validUtf8(std::string_view text);

/// The text in UTF-8, by its mark (UTF-8, UTF-16), else as UTF-16 where every second byte is often 0, else as it is
/// when it is UTF-8, else as Shift-JIS when it reads like Japanese, else as the Windows form of Latin-1. What cannot be
/// read is U+FFFD. The longer the text, the better the guess.
std::string toUtf8(std::string_view bytes);

/// The bytes as the Windows form of Latin-1. What it has no character for is U+FFFD.
std::string fromWindowsLatin(std::string_view bytes);
/// The text, where its bytes are Shift-JIS and look like Japanese: accented letters of Latin-1 in a row, or one before
/// another letter, make pairs as well, but hardly any kana, and hardly any whose second byte is above ASCII.
std::optional<std::string> fromShiftJis(std::string_view bytes);

}  // namespace corvane::text
