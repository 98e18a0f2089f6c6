// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "engine/mdlPublicFunction.h"

namespace corvane::mdlPublicFunction {

namespace {

constexpr std::int32_t kMsPerMinute = 60000;
constexpr std::int32_t kMsPerSecond = 1000;
constexpr std::int32_t kTmsfSecond = 0x10000;

int byteAt(std::int32_t value, int shift) {
    return static_cast<int>((static_cast<std::uint32_t>(value) >> shift) & 0xFFU);
}

}  // namespace

std::string MsecToText(std::int32_t msec) {
    return zeroPadded(msec / kMsPerMinute, 2) + ":" + zeroPadded(msec % kMsPerMinute / kMsPerSecond, 2);
}

std::string TmsfToText(std::int32_t tmsf) {
    return zeroPadded(byteAt(tmsf, 8), 2) + ":" + zeroPadded(byteAt(tmsf, 16), 2);
}

std::string numberText(double number) {
    std::array<char, 40> text{};
    constexpr int kDigits = 15;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, kDigits);
    std::string result(text.data(), end.ptr);
    for (char& c : result) {
        if (c == 'e') c = 'E';
    }
    return result;
}

std::int32_t tmsfSecondBack(std::int32_t tmsf) {
    if (byteAt(tmsf, 16) > 0) return tmsf - kTmsfSecond;
    if (byteAt(tmsf, 8) == 0) return tmsf;
    return tmsf - 0x100 + 59 * kTmsfSecond;
}

std::int32_t packedSeconds(std::int32_t tmsf) { return byteAt(tmsf, 8) * 60 + byteAt(tmsf, 16); }

float sliderWidth(const Player& player, double position, double length) {
    if (!(length > 0)) return kTwipsPerPixel;
    return static_cast<float>(std::min(position, length) / length * player.gSlideWidth);
}

}  // namespace corvane::mdlPublicFunction
