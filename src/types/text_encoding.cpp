// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "types/characters.h"
#include "types/shift_jis.h"
#include "types/text.h"

namespace corvane::text {

namespace {

constexpr char32_t kNoCharacter = 0xFFFD;

unsigned byteAt(std::string_view text, std::size_t at) { return static_cast<unsigned char>(text[at]); }

/// Bytes of the character that begins here; 0: none does.
std::size_t utf8Length(std::string_view text, std::size_t at) { return firstCharacter(text.substr(at)).bytes; }

/// What Windows has where Latin-1 has controls.
constexpr std::array<char16_t, 32> kWindowsLatin = {0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                                    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD,
                                                    0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                                    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

bool isKana(char32_t character) { return character >= 0x3041 && character <= 0x30FE; }

std::string fromUtf16(std::string_view bytes, bool highFirst) {
    std::string result;
    result.reserve(bytes.size());
    const auto unitAt = [&](std::size_t at) {
        const unsigned first = byteAt(bytes, at);
        const unsigned second = byteAt(bytes, at + 1);
        return static_cast<char32_t>(highFirst ? first << 8U | second : second << 8U | first);
    };
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        char32_t character = unitAt(at);
        if (character >= 0xD800 && character < 0xDC00 && at + 3 < bytes.size()) {
            const char32_t low = unitAt(at + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                character = 0x10000 + ((character - 0xD800) << 10U) + (low - 0xDC00);
                at += 2;
            }
        }
        appendUtf8(result, character);
    }
    return result;
}

/// Whether it is UTF-16 without a mark, and whether the high byte comes first.
std::optional<bool> highFirstUtf16(std::string_view bytes) {
    constexpr std::size_t kLooked = 512;
    std::array<std::size_t, 2> zeros{};
    const std::size_t size = std::min(bytes.size(), kLooked);
    for (std::size_t at = 0; at < size; ++at) zeros[at % 2] += bytes[at] == '\0' ? 1 : 0;
    const std::size_t many = size / 8;
    if (many == 0 || std::max(zeros[0], zeros[1]) < many || std::min(zeros[0], zeros[1]) > many / 8)
        return std::nullopt;
    return zeros[0] > zeros[1];
}

}  // namespace

void appendUtf8(std::string& text, char32_t character) {
    if (character > 0x10FFFF || (character >= 0xD800 && character < 0xE000)) character = kNoCharacter;
    const auto add = [&text](char32_t byte) { text += static_cast<char>(static_cast<unsigned char>(byte)); };
    const auto rest = [&](unsigned shift) { add(0x80U | (character >> shift & 0x3FU)); };
    if (character < 0x80) {
        add(character);
    } else if (character < 0x800) {
        add(0xC0U | character >> 6U);
        rest(0);
    } else if (character < 0x10000) {
        add(0xE0U | character >> 12U);
        rest(6);
        rest(0);
    } else {
        add(0xF0U | character >> 18U);
        rest(12);
        rest(6);
        rest(0);
    }
}

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text, at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

std::string validUtf8(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t length = utf8Length(text, at);
        if (length == 0) {
            appendUtf8(result, kNoCharacter);
        } else {
            result.append(text.substr(at, length));
        }
        at += std::max<std::size_t>(length, 1);
    }
    return result;
}

std::string fromWindowsLatin(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() + bytes.size() / 8);
    for (const char each : bytes) {
        const unsigned byte = static_cast<unsigned char>(each);
        appendUtf8(result, byte >= 0x80 && byte < 0xA0 ? kWindowsLatin[byte - 0x80] : byte);
    }
    return result;
}

std::optional<std::string> fromShiftJis(std::string_view bytes) {
    std::string result;
    result.reserve(bytes.size() * 3 / 2);
    std::size_t pairs = 0, likely = 0, halves = 0;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const unsigned byte = byteAt(bytes, at);
        if (byte < 0x80) {
            appendUtf8(result, byte);
        } else if (byte >= 0xA1 && byte <= 0xDF) {
            appendUtf8(result, 0xFF61 + (byte - 0xA1));
            ++halves;
        } else {
            const char32_t character = at + 1 < bytes.size() ? shiftJis(byte, byteAt(bytes, at + 1)) : 0;
            if (character == 0) return std::nullopt;
            appendUtf8(result, character);
            ++pairs;
            ++at;
            if (isKana(character) || byteAt(bytes, at) >= 0x80) ++likely;
        }
    }
    if (pairs == 0 || likely * 3 < pairs || halves > pairs) return std::nullopt;
    return result;
}

std::string toUtf8(std::string_view bytes) {
    if (bytes.substr(0, kUtf8Mark.size()) == kUtf8Mark) return validUtf8(bytes.substr(kUtf8Mark.size()));
    if (bytes.substr(0, 2) == "\xFF\xFE") return fromUtf16(bytes.substr(2), false);
    if (bytes.substr(0, 2) == "\xFE\xFF") return fromUtf16(bytes.substr(2), true);
    if (const auto highFirst = highFirstUtf16(bytes)) return fromUtf16(bytes, *highFirst);
    if (isUtf8(bytes)) return std::string(bytes);
    if (auto japanese = fromShiftJis(bytes)) return std::move(*japanese);
    return fromWindowsLatin(bytes);
}

}  // namespace corvane::text
