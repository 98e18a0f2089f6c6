// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/text.h"

#include <cstdint>
#include <optional>

#include "winapi/api.h"

namespace corvane {

namespace {

constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;
constexpr char32_t kAfterSurrogates = 0xE000;
constexpr char32_t kFirstPair = 0x10000;
constexpr char32_t kLastCharacter = 0x10FFFF;

/// The code page of the system's language. The program's own is UTF-8 by its manifest, which says nothing of old files.
UINT systemCodePage() {
    DWORD page = 0;
    const int read = GetLocaleInfoEx(LOCALE_NAME_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                                     reinterpret_cast<wchar_t*>(&page), sizeof page / sizeof(wchar_t));
    constexpr UINT kWestern = 1252;
    return read != 0 && page != 0 && page != CP_UTF8 ? page : kWestern;
}

/// The character at a place and how many bytes it takes; empty: no UTF-8.
std::optional<char32_t> decode(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t place) { return static_cast<std::uint8_t>(text[place]); };
    const std::uint8_t first = byte(at++);
    if (first < 0x80) return first;
    const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : 1;
    if (first < 0xC2 || first > 0xF4 || at + more > text.size()) return std::nullopt;
    char32_t character = first & (0x3FU >> more);
    for (std::size_t i = 0; i < more; ++i, ++at) {
        if ((byte(at) & 0xC0U) != 0x80U) return std::nullopt;
        character = (character << 6U) | (byte(at) & 0x3FU);
    }
    constexpr char32_t kLeast[] = {0, 0x80, 0x800, kFirstPair};
    if (character < kLeast[more] || character > kLastCharacter) return std::nullopt;
    return character;
}

void encode(char32_t character, std::string& text) {
    const auto put = [&](char32_t bits) { text += static_cast<char>(bits); };
    const auto rest = [&](unsigned shift) { put(0x80U | ((character >> shift) & 0x3FU)); };
    if (character < 0x80) return put(character);
    if (character < 0x800) {
        put(0xC0U | (character >> 6U));
    } else if (character < kFirstPair) {
        put(0xE0U | (character >> 12U));
        rest(6);
    } else {
        put(0xF0U | (character >> 18U));
        rest(12);
        rest(6);
    }
    rest(0);
}

std::wstring inSystemCodePage(std::string_view text) {
    const UINT page = systemCodePage();
    const int bytes = static_cast<int>(text.size());
    const int length = MultiByteToWideChar(page, 0, text.data(), bytes, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(page, 0, text.data(), bytes, wide.data(), length);
    return wide;
}

}  // namespace

bool isUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (!decode(text, at)) return false;
    }
    return true;
}

std::wstring toWide(std::string_view text) {
    std::wstring wide;
    wide.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const auto character = decode(text, at);
        if (!character) return inSystemCodePage(text);
        if (*character < kFirstPair) {
            wide += static_cast<wchar_t>(*character);
        } else {
            const char32_t offset = *character - kFirstPair;
            wide += static_cast<wchar_t>(kHighSurrogate + (offset >> 10U));
            wide += static_cast<wchar_t>(kLowSurrogate + (offset & 0x3FFU));
        }
    }
    return wide;
}

std::string fromWide(std::wstring_view wide) {
    std::string text;
    text.reserve(wide.size());
    for (std::size_t i = 0; i < wide.size(); ++i) {
        char32_t character = static_cast<std::uint16_t>(wide[i]);
        const bool high = character >= kHighSurrogate && character < kLowSurrogate;
        if (high && i + 1 < wide.size()) {
            const char32_t low = static_cast<std::uint16_t>(wide[i + 1]);
            if (low >= kLowSurrogate && low < kAfterSurrogates) {
                character = kFirstPair + ((character - kHighSurrogate) << 10U) + (low - kLowSurrogate);
                ++i;
            }
        }
        encode(character, text);
    }
    return text;
}

}  // namespace corvane
