// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/frame_name.h"

#include <algorithm>
#include <string_view>

#include "types/numbers.h"
#include "types/tag_text.h"

namespace corvane {

namespace {

constexpr std::size_t kMostTitle = 120;  // bytes: some file systems take no more than 143 for a whole name
constexpr const char* kUntitled = "Movie";

constexpr bool isInsideCharacter(char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; }

std::string plainTitle(const std::string& title) {
    constexpr std::string_view kRefused = "/\\:*?\"<>|";
    std::string plain = tagText(title);
    for (char& letter : plain) {
        if (kRefused.find(letter) != std::string_view::npos) letter = '_';
    }
    if (plain.size() > kMostTitle) {
        std::size_t end = kMostTitle;
        while (end > 0 && isInsideCharacter(plain[end])) --end;
        plain.resize(end);
    }
    constexpr std::string_view kAtNoEnd = " .";
    plain.erase(0, std::min(plain.find_first_not_of(kAtNoEnd), plain.size()));
    plain.erase(plain.find_last_not_of(kAtNoEnd) + 1);
    return plain.empty() ? kUntitled : plain;
}

}  // namespace

std::string frameName(const std::string& title, std::int64_t us) {
    constexpr std::int64_t kMs = 1000;
    constexpr std::int64_t kSecond = 1000, kMinute = 60 * kSecond, kHour = 60 * kMinute;
    const std::int64_t ms = std::max<std::int64_t>(us, 0) / kMs;
    const auto part = [ms](std::int64_t unit, std::int64_t next, int digits) {
        return zeroPadded(ms % next / unit, digits);
    };
    constexpr std::int64_t kMostHours = 100'000;
    return plainTitle(title) + " " + part(kHour, kMostHours * kHour, 2) + "." + part(kMinute, kHour, 2) + "." +
           part(kSecond, kMinute, 2) + "." + part(1, kSecond, 3);
}

}  // namespace corvane
