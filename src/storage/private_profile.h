// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Reading and changing the text of a private-profile file: "[section]" lines and "key=value" lines. Names are found
/// without regard to case; of sections or keys of one name the first counts. Lines end with LF, CR or CR LF; a UTF-8
/// mark in front, lines that begin with ";" and lines of any other form are kept and mean nothing. Bytes are bytes.
namespace corvane {

/// Size of the buffer that a value is read into: at most 511 bytes of it arrive.
inline constexpr std::size_t kProfileBuffer = 512;

/// A key and its value.
using ProfileKey = std::pair<std::string, std::string>;

/// One section of a profile text, indexed for many look-ups. The text must outlive it.
class ProfileSection {
public:
    ProfileSection(std::string_view text, std::string_view section);

    /// The key's value without blanks around it and without one outer pair of equal quotes, at most bufferSize - 1
    /// bytes of it, up to its first NUL. The default when there is no such key.
    std::string get(std::string_view key, std::string_view byDefault = {},
                    std::size_t bufferSize = kProfileBuffer) const;

private:
    struct Entry {
        std::string_view key;
        std::string_view value;
    };
    std::vector<Entry> entries_;  ///< by key without case; in the text's order where keys are equal
};

/// The text with the keys set, as setting them one after the other would leave it. A key that exists keeps its line
/// and its spelling; others follow the section's last line, in their order; a missing section is put at the end. Every
/// line of the result ends with CR LF. Values end at their first NUL, line breaks in them become blanks, and a value
/// that reading would change (blanks or quotes around it) is put in quotes, which reading takes off again.
std::string withProfileKeys(std::string_view text, std::string_view section, const std::vector<ProfileKey>& keys);

/// The text without the lines of these keys in that section. All other lines stay to the byte.
std::string withoutProfileKeys(std::string_view text, std::string_view section, const std::vector<std::string>& keys);

}  // namespace corvane
