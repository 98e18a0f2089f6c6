// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_backend.h"

namespace corvane {

namespace {

constexpr std::int64_t kCdFramesPerSecond = 75;

/// value * numerator / denominator, rounded to the nearest.
std::int64_t scale(std::int64_t value, std::int64_t numerator, std::int64_t denominator) {
    return (value * numerator + denominator / 2) / denominator;
}

std::int32_t packMsf(std::int64_t cdFrames) {
    const std::int64_t minutes = cdFrames / (60 * kCdFramesPerSecond) % 256;
    const std::int64_t seconds = cdFrames / kCdFramesPerSecond % 60;
    return static_cast<std::int32_t>(minutes | seconds << 8 | cdFrames % kCdFramesPerSecond << 16);
}

}  // namespace

std::int64_t SoundBackend::fromTmsf(std::int32_t packed) const {
    const auto bits = static_cast<std::uint32_t>(packed);
    const std::int64_t seconds = (bits >> 8 & 0xFF) * 60 + (bits >> 16 & 0xFF);
    const std::int64_t cdFrames = seconds * kCdFramesPerSecond + (bits >> 24);
    return scale(cdFrames, format().rate, kCdFramesPerSecond);
}

std::int32_t SoundBackend::toTmsf(std::int64_t frame) const {
    const auto msf = static_cast<std::uint32_t>(packMsf(scale(frame, kCdFramesPerSecond, format().rate)));
    return static_cast<std::int32_t>(msf << 8 | 1);
}

std::int32_t SoundBackend::trackLength(int track) const {
    return track == 1 ? packMsf(scale(frames(), kCdFramesPerSecond, format().rate)) : 0;
}

}  // namespace corvane
