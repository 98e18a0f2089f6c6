// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/paired_picture.h"

#include <utility>

namespace corvane {

const std::shared_ptr<const BitmapPicture>& DensePixels::whole() {
    if (const auto ask = std::exchange(ask_, {})) whole_ = bitmapOf(ask());
    return whole_;
}

PairedPicture::PairedPicture(const BitmapPicture& plain, std::shared_ptr<DensePixels> dense, int cornerX, int cornerY)
    : BitmapPicture(plain.heldWidth(), plain.heldHeight(), plain.pixels(), plain.width(), plain.height()),
      dense_(std::move(dense)),
      cornerX_(cornerX),
      cornerY_(cornerY) {}

DensePart densePartOf(const Picture& picture) {
    const auto* const paired = dynamic_cast<const PairedPicture*>(picture.data().get());
    if (paired == nullptr) return {};
    return {paired->dense()->whole(), paired->cornerX() * kDenseFactor, paired->cornerY() * kDenseFactor};
}

Picture pairedPicture(const Picture& plain, std::function<Picture()> ask) {
    if (plain.empty()) return plain;
    return Picture(std::make_shared<PairedPicture>(*bitmapOf(plain), std::make_shared<DensePixels>(std::move(ask))));
}

Picture cutPaired(const Picture& whole, const Pictures::Cell& cell) {
    const Picture plain = cutOut(whole, cell);
    const auto* const paired = dynamic_cast<const PairedPicture*>(whole.data().get());
    if (paired == nullptr) return plain;
    return Picture(std::make_shared<PairedPicture>(*bitmapOf(plain), paired->dense(), paired->cornerX() + cell.x,
                                                   paired->cornerY() + cell.y));
}

}  // namespace corvane
