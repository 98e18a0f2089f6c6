// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// Small readers of text that files give: bytes, letters without case only in ASCII (but see capitals()).
namespace corvane::text {

inline constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }
inline std::string upper(std::string text) {
    for (char& c : text) c = upper(c);
    return text;
}
inline std::string lower(std::string text) {
    for (char& c : text) c = lower(c);
    return text;
}
/// The text in capitals, as the platform makes them: ASCII, and in UTF-8 the letters of Latin, Greek, Cyrillic and
/// Armenian that have one capital letter each. No other letter becomes an ASCII one; bytes that are no UTF-8 stay.
std::string capitals(std::string_view text);
constexpr bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\v' || c == '\f'; }

inline std::string_view trimmed(std::string_view text) {
    while (!text.empty() && isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back())) text.remove_suffix(1);
    return text;
}

inline std::string_view withoutMark(std::string_view text) {
    if (text.substr(0, kUtf8Mark.size()) == kUtf8Mark) text.remove_prefix(kUtf8Mark.size());
    return text;
}

/// Takes the next line off the text, without its end: LF, CR, CR LF or the text's end.
inline std::string_view takeLine(std::string_view& text) {
    std::size_t length = 0;
    while (length < text.size() && text[length] != '\r' && text[length] != '\n') ++length;
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(line.size());
    if (!text.empty()) text.remove_prefix(text.substr(0, 2) == "\r\n" ? 2 : 1);
    return line;
}

inline bool sameWithoutCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return upper(x) == upper(y); });
}

/// The path of a name in a folder, which ends with a separator where it is a root.
inline std::string joinPath(std::string folder, std::string_view name, char separator) {
    if (folder.empty() || folder.back() != separator) folder += separator;
    return folder.append(name);
}

/// A name as it stands inside a longer text, such as a message box's: the line breaks that it holds are blanks, so that
/// all lines of that text are its own.
std::string onOneLine(std::string name);

/// Order without case, for maps that are searched by std::string_view.
struct LessWithoutCase {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const {
        return std::lexicographical_compare(a.begin(), a.end(), b.begin(), b.end(),
                                            [](char x, char y) { return upper(x) < upper(y); });
    }
};

}  // namespace corvane::text
