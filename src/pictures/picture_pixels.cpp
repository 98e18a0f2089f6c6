// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/picture_pixels.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr std::size_t kChannels = 4;
constexpr std::uint32_t kOpaque = 0xFF000000U;

/// The place in `held` of one of `full` places.
int placeIn(int place, int full, int held) { return static_cast<int>(static_cast<std::int64_t>(place) * held / full); }

}  // namespace

ReducedRows::ReducedRows(PictureSize full, PictureSize held) : isWhole_(full == held) {
    result_.full = full;
    result_.held = held;
    result_.pixels.resize(static_cast<std::size_t>(held.pixels()));
    if (isWhole_) return;
    sums_.resize(kChannels * static_cast<std::size_t>(held.width));
    parts_.resize(static_cast<std::size_t>(held.width));
    for (int x = 0; x < full.width; ++x) ++parts_[static_cast<std::size_t>(placeIn(x, full.width, held.width))];
}

std::uint32_t* ReducedRows::heldRow(int y) {
    return result_.pixels.data() + static_cast<std::size_t>(y) * static_cast<std::size_t>(result_.held.width);
}

void ReducedRows::put(int y, const std::uint32_t* row) {
    const auto [width, height] = result_.full;
    if (isWhole_) {
        std::copy_n(row, width, heldRow(y));
        return;
    }
    const int held = placeIn(y, height, result_.held.height);
    if (held != row_) {
        finishRow();
        row_ = held;
    }
    ++rows_;
    for (int x = 0; x < width; ++x) {
        std::uint32_t* const sum =
            sums_.data() + kChannels * static_cast<std::size_t>(placeIn(x, width, result_.held.width));
        for (unsigned channel = 0; channel < kChannels; ++channel) sum[channel] += row[x] >> (8 * channel) & 0xFFU;
    }
}

void ReducedRows::finishRow() {
    if (rows_ == 0) return;
    std::uint32_t* const to = heldRow(row_);
    for (std::size_t x = 0; x < parts_.size(); ++x) {
        const std::uint32_t count = parts_[x] * rows_;
        std::uint32_t pixel = 0;
        for (unsigned channel = 0; channel < kChannels; ++channel) {
            pixel |= (sums_[kChannels * x + channel] + count / 2) / count << (8 * channel);
        }
        to[x] = pixel;
    }
    std::fill(sums_.begin(), sums_.end(), 0);
    rows_ = 0;
}

PicturePixels ReducedRows::take() {
    finishRow();
    result_.seeThrough = std::any_of(result_.pixels.begin(), result_.pixels.end(),
                                     [](std::uint32_t pixel) { return (pixel & kOpaque) != kOpaque; });
    return std::move(result_);
}

}  // namespace corvane
