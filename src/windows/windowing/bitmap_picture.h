// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <vector>

#include "forms/picture.h"

namespace corvane {

/// A picture of this desktop: rows from the top, each pixel 0xAARRGGBB with the colours multiplied by their alpha.
class BitmapPicture : public PictureData {
public:
    using Pixels = std::vector<std::uint32_t>;

    /// pixels: heldWidth times heldHeight of them. fullWidth, fullHeight: the picture's own size where the pixels are a
    /// reduction of it.
    BitmapPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth = 0, int fullHeight = 0);

    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int x, int y) const override;

    int heldWidth() const { return heldWidth_; }
    int heldHeight() const { return heldHeight_; }
    const Pixels& pixels() const { return pixels_; }
    bool opaque() const { return opaque_; }

private:
    int heldWidth_;
    int heldHeight_;
    int width_;
    int height_;
    Pixels pixels_;
    bool opaque_;
};

/// The picture's data in this desktop's form; made where the picture is another party's. Null for none.
std::shared_ptr<const BitmapPicture> bitmapOf(const Picture& picture);

}  // namespace corvane
