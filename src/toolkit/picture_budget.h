// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace corvane {

inline constexpr std::int64_t kMaxPicturePixels = 40'000'000;
/// What one picture, and all of them while the next is decoded, may hold in memory, so that the program stays below
/// 200 MB: 4 bytes a pixel. A larger JPEG is held reduced, and scaled when it is painted.
inline constexpr std::int64_t kMaxHeldPixels = 18'000'000;
inline constexpr std::int64_t kMaxHeldTogether = 36'000'000;

/// For how many pixels of a picture there is room. held: what all pictures that live hold; turns: it is turned upright,
/// which needs it twice for a moment; work: what decoding takes beside it, in pixels' worth.
inline std::int64_t roomForPixels(std::int64_t held, bool turns, std::int64_t work = 0) {
    const std::int64_t free = std::max(kMaxHeldTogether - held, kMaxHeldPixels / 3) - work;
    return std::min(kMaxHeldPixels, turns ? free / 2 : free);
}

/// By how much the sides of a picture of so many pixels are to be reduced when it is decoded: 1 for not at all.
inline double shareToHold(std::int64_t pixels, std::int64_t held, bool turns) {
    const std::int64_t most = roomForPixels(held, turns);
    return pixels <= most ? 1.0 : std::sqrt(static_cast<double>(most) / static_cast<double>(pixels));
}

/// Paints of more pixels a side are refused: beyond it positions lose whole pixels.
inline constexpr float kMaxPaintedSide = 1'000'000.0F;
inline constexpr int kInvalidPicture = 481;  ///< error number of a drawing without a picture

}  // namespace corvane
