// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "engine/mdlPublicFunction.h"
#include "types/numbers.h"

namespace corvane::mdlPublicFunction {

using mdlDefinePublic::kPackedMinute;
using mdlDefinePublic::kPackedSecond;

namespace {

constexpr std::int32_t kMsPerMinute = 60000;
constexpr std::int32_t kMsPerSecond = 1000;

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

std::int32_t tmsfSecondBack(std::int32_t tmsf) {
    if (byteAt(tmsf, 16) > 0) return tmsf - kPackedSecond;
    if (byteAt(tmsf, 8) == 0) return tmsf;
    return tmsf - kPackedMinute + 59 * kPackedSecond;
}

std::int32_t packedSeconds(std::int32_t tmsf) { return byteAt(tmsf, 8) * 60 + byteAt(tmsf, 16); }

float sliderWidth(const Player& player, double position, double length) {
    if (!(length > 0)) return kTwipsPerPixel;
    return static_cast<float>(std::min(position, length) / length * player.gSlideWidth);
}

}  // namespace corvane::mdlPublicFunction
