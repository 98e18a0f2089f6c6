// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/bitmap_picture.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;

int place(int at, int ofHeld, int ofWhole) {
    return static_cast<int>(static_cast<std::int64_t>(at) * ofHeld / ofWhole);
}

}  // namespace

BitmapPicture::BitmapPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth, int fullHeight)
    : heldWidth_(heldWidth),
      heldHeight_(heldHeight),
      width_(fullWidth > 0 ? fullWidth : heldWidth),
      height_(fullHeight > 0 ? fullHeight : heldHeight),
      pixels_(std::move(pixels)),
      opaque_(std::all_of(pixels_.begin(), pixels_.end(), [](std::uint32_t each) { return each >= kOpaque; })) {}

std::uint32_t BitmapPicture::pixel(int x, int y) const {
    const auto row = static_cast<std::size_t>(place(y, heldHeight_, height_));
    const auto column = static_cast<std::size_t>(place(x, heldWidth_, width_));
    return pixels_[row * static_cast<std::size_t>(heldWidth_) + column] & 0xFFFFFFU;
}

std::shared_ptr<const BitmapPicture> bitmapOf(const Picture& picture) {
    if (picture.empty()) return nullptr;
    if (auto own = std::dynamic_pointer_cast<const BitmapPicture>(picture.data())) return own;
    BitmapPicture::Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(picture.width()) * static_cast<std::size_t>(picture.height()));
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) pixels.push_back(kOpaque | picture.data()->pixel(x, y));
    }
    return std::make_shared<BitmapPicture>(picture.width(), picture.height(), std::move(pixels));
}

}  // namespace corvane
