// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/pixel_brush.h"

#include <algorithm>
#include <cmath>

#include "pictures/paired_picture.h"

namespace corvane {

namespace {

constexpr int kMargin = 2;  ///< pixels of the skin around a part, so that scaling it sees its neighbours
constexpr std::uint32_t kOpaque = 0xFF000000U;

std::uint32_t toPixel(Colour colour) {
    const auto bits = static_cast<std::uint32_t>(colour);
    return (bits & 0xFFU) << 16U | (bits & 0xFF00U) | ((bits >> 16U) & 0xFFU);
}

bool isWhole(double factor) { return std::abs(factor - std::round(factor)) < 1e-6; }

bool holds(const PixelPlace& place, int x, int y) {
    return x >= place.x && y >= place.y && x < place.x + place.width && y < place.y + place.height;
}

Rectangle rectangleOf(const PixelPlace& place) {
    return {static_cast<double>(place.x), static_cast<double>(place.y), static_cast<double>(place.width),
            static_cast<double>(place.height)};
}

PixelsView viewOf(const BitmapPicture& picture) {
    return {picture.pixels().data(), picture.heldWidth(), picture.heldHeight()};
}

/// A skin in the middle of being composed, with so many pixels for one of its own: 1, or kDenseFactor where the screen
/// is that dense and one of its pictures has them.
class Composition {
public:
    Composition(const Picture& background, const std::vector<CompositionStep>& steps, double scale)
        : background_(background), steps_(steps), density_(scale >= kDenseFrom && hasDense() ? kDenseFactor : 1) {}

    int density() const { return density_; }

    PixelBuffer part(const PixelPlace& cells) const {
        PixelBuffer canvas(cells.width * density_, cells.height * density_);
        if (!background_.empty()) {
            draw(canvas, background_, {-cells.x, -cells.y, background_.width(), background_.height()});
        }
        for (const CompositionStep& step : steps_) {
            const PixelPlace place{step.place.x - cells.x, step.place.y - cells.y, step.place.width, step.place.height};
            if (step.picture != nullptr) {
                draw(canvas, *step.picture, place);
            } else {
                canvas.fill(place.x * density_, place.y * density_, place.width * density_, place.height * density_,
                            toPixel(step.colour));
            }
        }
        return canvas;
    }

private:
    bool hasDense() const {
        return densePartOf(background_).whole != nullptr ||
               std::any_of(steps_.begin(), steps_.end(), [](const CompositionStep& step) {
                   return step.picture != nullptr && densePartOf(*step.picture).whole != nullptr;
               });
    }

    void draw(PixelBuffer& canvas, const Picture& picture, const PixelPlace& place) const {
        const int x = place.x * density_, y = place.y * density_;
        const auto plain = bitmapOf(picture);
        const int width = std::min(place.width, plain->heldWidth()) * density_;
        const int height = std::min(place.height, plain->heldHeight()) * density_;
        const DensePart dense = density_ > 1 ? densePartOf(picture) : DensePart{};
        if (dense.whole) {
            canvas.draw(viewOf(*dense.whole), x, y, width, height, dense.x, dense.y);
        } else if (density_ > 1) {
            canvas.drawLarger(viewOf(*plain), x, y, width, height, density_);
        } else {
            canvas.draw(viewOf(*plain), x, y, width, height);
        }
    }

    const Picture& background_;
    const std::vector<CompositionStep>& steps_;
    int density_;
};

}  // namespace

void StretchedPicture::draw(const PixelTarget& target, const Picture& picture, const Rectangle& place,
                            const Rectangle& visible) {
    const Rectangle part = common(common(place, visible), rectangleOf(target.place));
    if (picture.empty() || part.empty()) return;
    const auto own = bitmapOf(picture);
    PixelsView source = viewOf(*own);
    const int width = std::max(1, static_cast<int>(std::lround(place.width)));
    const int height = std::max(1, static_cast<int>(std::lround(place.height)));
    if (width < source.width || height < source.height) {
        const int across = std::min(width, source.width), down = std::min(height, source.height);
        if (picture_ != picture || width_ != width || height_ != height) {
            width_ = width;
            height_ = height;
            reduced_ = reduced(source, across, down);
            picture_ = picture;
        }
        source = {reduced_.data(), across, down};
    } else {
        picture_ = {};
        reduced_ = {};
    }
    const int left = static_cast<int>(std::lround(part.x));
    const int top = static_cast<int>(std::lround(part.y));
    const int right = static_cast<int>(std::lround(part.right()));
    const int bottom = static_cast<int>(std::lround(part.bottom()));
    const bool smooth = source.width != width || source.height != height;
    stretch(source, place, left, top, right - left, bottom - top, smooth, target.at(left, top), target.place.width);
}

PixelPlace PixelBrush::rounded(const Rectangle& place) {
    const int left = static_cast<int>(std::lround(place.x)), top = static_cast<int>(std::lround(place.y));
    return {left, top, static_cast<int>(std::lround(place.right())) - left,
            static_cast<int>(std::lround(place.bottom())) - top};
}

void PixelBrush::skin(const Picture& background, const std::vector<CompositionStep>& steps) {
    const PixelPlace& part = target_.place;
    const auto cellsTo = [this](int edge) { return static_cast<int>(std::ceil(edge / scale_)); };
    const auto cellsFrom = [this](int edge) { return static_cast<int>(std::floor(edge / scale_)); };
    PixelPlace cells{std::max(0, cellsFrom(part.x) - kMargin), std::max(0, cellsFrom(part.y) - kMargin), 0, 0};
    cells.width = std::min(cellsTo(surface_.width), cellsTo(part.x + part.width) + kMargin) - cells.x;
    cells.height = std::min(cellsTo(surface_.height), cellsTo(part.y + part.height) + kMargin) - cells.y;
    const Composition composition(background, steps, scale_);
    const PixelBuffer canvas = composition.part(cells);
    stretch(canvas.view(), rectangleOf(cells).scaled(scale_), part.x, part.y, part.width, part.height,
            !isWhole(scale_ / composition.density()), target_.pixels, part.width);
}

void PixelBrush::disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) {
    std::vector<PixelPlace> cover;
    for (const Rectangle& each : covered) cover.push_back(rounded(each));
    const std::uint32_t pixelColour = kOpaque | toPixel(colour);
    const PixelPlace& part = target_.place;
    const int left = std::max(part.x, static_cast<int>(std::floor(place.x)));
    const int right = std::min(part.x + part.width, static_cast<int>(std::ceil(place.right())));
    const int bottom = std::min(part.y + part.height, static_cast<int>(std::ceil(place.bottom())));
    for (int y = std::max(part.y, static_cast<int>(std::floor(place.y))); y < bottom; ++y) {
        for (int x = left; x < right; ++x) {
            const bool hidden =
                std::any_of(cover.begin(), cover.end(), [x, y](const PixelPlace& each) { return holds(each, x, y); });
            if (hidden) continue;
            std::uint32_t& pixel = *target_.at(x, y);
            pixel = between(pixel, pixelColour, ellipseCover(place, x, y));
        }
    }
}

void PixelBrush::pictures(const std::vector<ShownPicture>& pictures) {
    std::fill_n(target_.pixels, target_.place.width * target_.place.height, kOpaque);
    for (const ShownPicture& each : pictures) stretched_.draw(target_, each.picture, each.whole, each.seen);
}

}  // namespace corvane
