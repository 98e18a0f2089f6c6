// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "forms/picture.h"
#include "platform/ports.h"

namespace corvane {

/// A picture as its pixels: rows from the top, each 0xAARRGGBB with the colours multiplied by their alpha.
class BitmapPicture : public PictureData {
public:
    using Pixels = std::vector<std::uint32_t>;

    /// pixels: heldWidth times heldHeight of them. fullWidth, fullHeight: the picture's own size where the pixels are a
    /// reduction of it.
    BitmapPicture(int heldWidth, int heldHeight, Pixels pixels, int fullWidth = 0, int fullHeight = 0);

    int width() const override { return width_; }
    int height() const override { return height_; }
    std::uint32_t pixel(int x, int y) const override;
    /// With its alpha.
    std::uint32_t held(int x, int y) const;

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

/// The picture's data as pixels; made where the picture is another party's. Null for none.
std::shared_ptr<const BitmapPicture> bitmapOf(const Picture& picture);

/// The part of a picture, which is not empty, in a cell that lies wholly inside it: so many pixels as the cell has.
Picture cutOut(const Picture& whole, const Pictures::Cell& cell);

}  // namespace corvane
