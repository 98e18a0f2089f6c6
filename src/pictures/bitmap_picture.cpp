// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/bitmap_picture.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

constexpr std::uint32_t kOpaque = 0xFF000000U;

std::size_t place(int at, int ofHeld, int ofWhole) {
    return static_cast<std::size_t>(static_cast<std::int64_t>(at) * ofHeld / ofWhole);
}

}  // namespace

BitmapPicture::BitmapPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth, int fullHeight)
    : heldWidth_(heldWidth),
      heldHeight_(heldHeight),
      width_(fullWidth > 0 ? fullWidth : heldWidth),
      height_(fullHeight > 0 ? fullHeight : heldHeight),
      pixels_(std::move(pixels)),
      opaque_(std::all_of(pixels_.begin(), pixels_.end(), [](std::uint32_t each) { return each >= kOpaque; })) {}

std::uint32_t BitmapPicture::pixel(int x, int y) const { return held(x, y) & 0xFFFFFFU; }

std::uint32_t BitmapPicture::held(int x, int y) const {
    return pixels_[place(y, heldHeight_, height_) * static_cast<std::size_t>(heldWidth_) +
                   place(x, heldWidth_, width_)];
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

Picture cutOut(const Picture& whole, const Pictures::Cell& cell) {
    const auto source = bitmapOf(whole);
    BitmapPicture::Pixels pixels;
    pixels.reserve(static_cast<std::size_t>(cell.width) * static_cast<std::size_t>(cell.height));
    for (int y = cell.y; y < cell.y + cell.height; ++y) {
        for (int x = cell.x; x < cell.x + cell.width; ++x) pixels.push_back(source->held(x, y));
    }
    return Picture(std::make_shared<BitmapPicture>(cell.width, cell.height, std::move(pixels)));
}

}  // namespace corvane
