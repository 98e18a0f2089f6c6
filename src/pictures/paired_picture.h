// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "pictures/bitmap_picture.h"

namespace corvane {

/// The pixels of a whole picture for dense screens, shared by the parts that are cut out of it.
class DensePixels {
public:
    explicit DensePixels(std::function<Picture()> ask) : ask_(std::move(ask)) {}
    /// Null when there are none; asked for at the first call.
    const std::shared_ptr<const BitmapPicture>& whole();

private:
    std::function<Picture()> ask_;  ///< empty once it was asked
    std::shared_ptr<const BitmapPicture> whole_;
};

/// A picture with other pixels, kDenseFactor times as many across and down, for screens that are so dense.
class PairedPicture : public BitmapPicture {
public:
    /// corner: where the picture lies in those of the whole.
    PairedPicture(const BitmapPicture& plain, std::shared_ptr<DensePixels> dense, int cornerX = 0, int cornerY = 0);

    const std::shared_ptr<DensePixels>& dense() const { return dense_; }
    int cornerX() const { return cornerX_; }  ///< in the plain pixels of the whole
    int cornerY() const { return cornerY_; }

private:
    std::shared_ptr<DensePixels> dense_;
    int cornerX_;
    int cornerY_;
};

/// Where the pixels of a picture for dense screens are.
struct DensePart {
    std::shared_ptr<const BitmapPicture> whole;  ///< null: it has none
    int x = 0, y = 0;                            ///< its corner in there
};

/// Reads them when they have not been asked for before.
DensePart densePartOf(const Picture& picture);

/// The picture with those that `ask` gives, once, when a dense screen first shows it.
Picture pairedPicture(const Picture& plain, std::function<Picture()> ask);
/// As cutOut, with both kinds of pixels where the picture has them.
Picture cutPaired(const Picture& whole, const Pictures::Cell& cell);

}  // namespace corvane
