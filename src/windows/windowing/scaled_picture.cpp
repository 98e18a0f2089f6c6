// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/scaled_picture.h"

#include <algorithm>
#include <cmath>

#include "pictures/pixels.h"
#include "windows/windowing/bitmap_picture.h"

namespace corvane {

void ScaledPicture::draw(Dib& target, const RECT& dirty, const Picture& picture, const Rectangle& place,
                         const Rectangle& visible) {
    const Rectangle window{static_cast<double>(dirty.left), static_cast<double>(dirty.top),
                           static_cast<double>(dirty.right - dirty.left),
                           static_cast<double>(dirty.bottom - dirty.top)};
    const Rectangle part = common(common(place, visible), window);
    if (picture.empty() || part.empty()) return;
    const auto own = bitmapOf(picture);
    PixelsView source{own->pixels().data(), own->heldWidth(), own->heldHeight()};
    const int width = std::max(1, static_cast<int>(std::lround(place.width)));
    const int height = std::max(1, static_cast<int>(std::lround(place.height)));
    if (width < source.width || height < source.height) {
        if (picture_ != picture || width_ != width || height_ != height) {
            width_ = width;
            height_ = height;
            reduced_ = reduced(source, std::min(width, source.width), std::min(height, source.height));
            picture_ = picture;
        }
        source = {reduced_.data(), std::min(width, source.width), std::min(height, source.height)};
    } else {
        picture_ = {};
        reduced_ = {};
    }
    const int left = static_cast<int>(std::lround(part.x));
    const int top = static_cast<int>(std::lround(part.y));
    const int right = static_cast<int>(std::lround(part.right()));
    const int bottom = static_cast<int>(std::lround(part.bottom()));
    const bool smooth = source.width != width || source.height != height;
    stretch(source, place, left, top, right - left, bottom - top, smooth,
            target.row(top - dirty.top) + (left - dirty.left), target.width());
}

}  // namespace corvane
