// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace corvane {

/// A picture's sides, pixels.
struct PictureSize {
    int width = 0, height = 0;
    bool operator==(const PictureSize&) const = default;
    std::int64_t pixels() const { return std::int64_t{width} * height; }
};

inline constexpr std::int64_t kMaxPicturePixels = 40'000'000;
/// Of a JPEG, whose decoder reduces while it reads.
inline constexpr std::int64_t kMaxJpegPixels = 200'000'000;
inline constexpr int kMaxPictureSide = 1'000'000;                          ///< pixels
inline constexpr std::int64_t kMaxPictureBytes = std::int64_t{256} << 20;  ///< of a file
inline constexpr int kMostScans = 100;  ///< of a JPEG; progressive ones have about ten
/// Of all scans of a JPEG together: some ten seconds of a decoder that cannot be given up between them.
inline constexpr std::int64_t kMostScannedSamples = 2'000'000'000;
/// What one picture, and all of them while the next is decoded, may hold in memory, so that the program stays below
/// 200 MB: 4 bytes a pixel. A larger one is held reduced, and scaled when it is painted.
inline constexpr std::int64_t kMaxHeldPixels = 18'000'000;
inline constexpr std::int64_t kMaxHeldTogether = 36'000'000;
/// The same where a decoder needs much beside its picture, for as long as it decodes.
inline constexpr std::int64_t kMaxWhileDecoding = 60'000'000;
inline constexpr std::int64_t kLeastRoom = kMaxHeldPixels / 3;  ///< for a picture whatever the others hold

/// For how many pixels of a picture there is room. held: what all pictures that live hold; work: what decoding takes
/// beside it, in pixels' worth. Below 1 there is none.
inline std::int64_t roomForPixels(std::int64_t held, std::int64_t work = 0) {
    const std::int64_t usual = std::max(kMaxHeldTogether - held, kLeastRoom) - work;
    const std::int64_t atMost = std::min(kMaxWhileDecoding - held - work, kLeastRoom);
    return std::min(kMaxHeldPixels, std::max(usual, atMost));
}

/// The size at which a picture is held; of no area: there is no room for it.
inline PictureSize sizeToHold(PictureSize full, std::int64_t held, std::int64_t work = 0) {
    const std::int64_t room = roomForPixels(held, work);
    if (full.pixels() <= room) return full;
    if (room < 1) return {};
    const double share = std::sqrt(static_cast<double>(room) / static_cast<double>(full.pixels()));
    const auto reduced = [share](int side) { return std::max(1, static_cast<int>(std::floor(side * share))); };
    return {reduced(full.width), reduced(full.height)};
}

/// Paints of more pixels a side are refused: beyond it positions lose whole pixels.
inline constexpr float kMaxPaintedSide = 1'000'000.0F;
inline constexpr int kInvalidPicture = 481;  ///< error number of a drawing without a picture

}  // namespace corvane
