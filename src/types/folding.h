// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane::text {

/// The text as it is looked for: without case and without accents in Latin, Greek and Cyrillic, without the points of
/// Hebrew, the vowels and the widening of Arabic, whose forms of a letter are one; letters that are written as one are
/// the letters; wide letters are narrow ones, katakana (narrow ones too) are hiragana and without voicing marks, parts
/// of a Korean syllable are the syllable. Whether a letter and its accent are one character or two is the same. Any
/// other character, and bytes that are no UTF-8, stay. Never longer than the text.
std::string folded(std::string_view text);

/// Characters that a field takes of what is looked for: each of its words is looked for in each text of a long list.
inline constexpr int kMostToFind = 200;

/// The words between the blanks of what is looked for, folded.
std::vector<std::string> wordsToFind(std::string_view wanted);

/// Every word stands somewhere in the folded text; no word: true.
bool holdsAll(std::string_view foldedText, const std::vector<std::string>& words);

}  // namespace corvane::text
