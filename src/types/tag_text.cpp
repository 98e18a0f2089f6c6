// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/tag_text.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <utility>

#include "types/characters.h"
#include "types/text.h"
#include "types/text_encoding.h"

namespace corvane {

namespace {

constexpr std::size_t kMostBytes = 4 * kMostTagCharacters + 64;  ///< that are looked at

unsigned byteAt(std::string_view bytes, std::size_t at) { return static_cast<unsigned char>(bytes[at]); }
bool within(unsigned value, unsigned first, unsigned last) { return value >= first && value <= last; }

bool isAsciiLetter(unsigned byte) { return within(byte | 0x20U, 'a', 'z'); }

/// Pairs of bytes, of which the first one is in either of two ranges, and single bytes that are half-width signs. Signs
/// of the syllables, or pairs side by side whose first bytes are letters of no western language, are what tells it from
/// those.
bool looksJapanese(std::string_view bytes) {
    bool syllables = false, sideBySide = false;
    std::size_t pairs = 0, strange = 0, lastPair = std::string_view::npos;
    for (std::size_t at = 0; at < bytes.size();) {
        const unsigned first = byteAt(bytes, at);
        if (!within(first, 0x81, 0x9F) && !within(first, 0xE0, 0xFC)) {
            if (first == 0x80 || first == 0xA0 || first > 0xFC) return false;
            ++at;
            continue;
        }
        if (at + 1 >= bytes.size()) return false;
        const unsigned second = byteAt(bytes, at + 1);
        if (!within(second, 0x40, 0xFC) || second == 0x7F) return false;
        syllables =
            syllables || (first == 0x82 && within(second, 0x9F, 0xF1)) || (first == 0x83 && within(second, 0x40, 0x96));
        sideBySide = sideBySide || lastPair + 2 == at;
        ++pairs;
        if (first <= 0x9F) ++strange;
        lastPair = at;
        at += 2;
    }
    return syllables || (sideBySide && 2 * strange >= pairs);
}

/// Letters nearly all of which lie where the western code page has those with marks.
bool looksCyrillic(std::string_view bytes) {
    std::size_t high = 0, ascii = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = byteAt(bytes, at);
        if (byte >= 0xC0 || byte == 0xA8 || byte == 0xB8) {
            ++high;
        } else if (isAsciiLetter(byte)) {
            ++ascii;
        } else if (byte >= 0x80 && byte != 0xA0 && byte != 0xAB && byte != 0xBB && byte != 0xB9 &&
                   !within(byte, 0x91, 0x97) && byte != 0x85) {
            return false;
        }
    }
    return high >= 4 && high > 2 * ascii;
}

/// Code page 1251 has its letters in the alphabet's order, and the signs of the western one.
std::string fromCyrillic(std::string_view bytes) {
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = byteAt(bytes, at);
        if (byte >= 0xC0) {
            text::appendUtf8(text, 0x410 + (byte - 0xC0));
        } else if (byte == 0xA8 || byte == 0xB8) {
            text::appendUtf8(text, byte == 0xA8 ? 0x401 : 0x451);
        } else {
            text += byte == 0xB9 ? "\u2116" : text::fromWindowsLatin(bytes.substr(at, 1));
        }
    }
    return text;
}

std::string fromBytes(std::string_view bytes) {
    if (text::isUtf8(bytes)) return std::string(bytes);
    if (looksJapanese(bytes)) {
        if (auto japanese = text::fromShiftJis(bytes)) return std::move(*japanese);
    }
    return looksCyrillic(bytes) ? fromCyrillic(bytes) : text::fromWindowsLatin(bytes);
}

/// The bytes of a text in UTF-8 all of whose characters are single bytes, some of them of no plain ASCII.
std::optional<std::string> singleBytes(std::string_view text) {
    std::string bytes;
    bool high = false;
    while (!text.empty()) {
        const text::Character next = text::firstCharacter(text);
        if (next.bytes == 0 || next.code > 0xFF) return std::nullopt;
        high = high || next.code > 0x7F;
        bytes += static_cast<char>(static_cast<unsigned char>(next.code));
        text.remove_prefix(next.bytes);
    }
    return high ? std::optional(bytes) : std::nullopt;
}

/// Without half a character at the end.
std::string_view cut(std::string_view raw) {
    raw = raw.substr(0, raw.find('\0'));
    if (raw.size() <= kMostBytes) return raw;
    std::size_t end = kMostBytes;
    while (end > kMostBytes - 4 && (byteAt(raw, end) & 0xC0U) == 0x80U) --end;
    return raw.substr(0, end);
}

std::string inOneLine(std::string_view text) {
    std::string shown;
    bool blank = false;
    for (std::size_t count = 0; !text.empty();) {
        const text::Character next = text::firstCharacter(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(next.bytes, 1));
        text.remove_prefix(character.size());
        if (next.code == ' ' || within(next.code, '\t', '\r') || next.code == 0x85 || next.code == 0x2028 ||
            next.code == 0x2029) {
            blank = !shown.empty();
            continue;
        }
        const bool isMark = next.code == 0xFEFF || within(next.code, 0xFFFD, 0xFFFF);
        if (next.bytes == 0 || isMark || text::isControl(next.code) || text::turnsAround(next.code)) continue;
        if (++count > kMostTagCharacters) return shown + "\xE2\x80\xA6";
        if (std::exchange(blank, false)) shown += ' ';
        shown += character;
    }
    return shown;
}

}  // namespace

std::string tagText(std::string_view raw) {
    const std::string_view bytes = cut(text::withoutMark(raw));
    if (!text::isUtf8(bytes)) return inOneLine(fromBytes(bytes));
    if (const auto single = singleBytes(bytes)) return inOneLine(fromBytes(*single));
    return inOneLine(bytes);
}

}  // namespace corvane
