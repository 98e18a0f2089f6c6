// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/media/frame_place.h"

#include <algorithm>
#include <cmath>

namespace corvane {

namespace {

bool isEmpty(PixelSize size) { return size.width <= 0 || size.height <= 0; }

int rounded(double value) { return static_cast<int>(std::lround(value)); }

Rectangle rectangleOf(const PixelRect& place) {
    return {static_cast<double>(place.left), static_cast<double>(place.top), static_cast<double>(place.width),
            static_cast<double>(place.height)};
}

Rectangle roomOf(PixelSize size) { return {0, 0, static_cast<double>(size.width), static_cast<double>(size.height)}; }

/// The window's units may come to its pixels by a hair.
bool isAsTold(const FrameRoom& room) {
    constexpr double kHair = 1e-6;
    const auto same = [&room](int units, int pixels) { return std::abs(units * room.ratio - pixels) < kHair; };
    return !isEmpty(room.target) && same(room.area.width, room.target.width) &&
           same(room.area.height, room.target.height);
}

}  // namespace

Rectangle fittedInto(PixelSize picture, const Rectangle& area) {
    if (isEmpty(picture) || area.empty()) return {};
    const double scale = std::min(area.width / picture.width, area.height / picture.height);
    const double width = picture.width * scale, height = picture.height * scale;
    return {area.x + area.width / 2 - width / 2, area.y + area.height / 2 - height / 2, width, height};
}

PixelSize framePixels(const FrameRoom& room) {
    const Rectangle all = isEmpty(room.target) ? roomOf(room.area.size()).scaled(room.ratio) : roomOf(room.target);
    const Rectangle fitted = fittedInto(room.picture, all);
    return {rounded(fitted.width), rounded(fitted.height)};
}

Rectangle framePlace(const FrameRoom& room, PixelSize pixels) {
    const Rectangle place = fittedInto(room.picture, rectangleOf(room.area));
    if (!isAsTold(room)) return place;
    const auto whole = [&room](double value) { return std::round(value * room.ratio) / room.ratio; };
    return {whole(place.x), whole(place.y), pixels.width / room.ratio, pixels.height / room.ratio};
}

PixelRect frameCovers(const FrameRoom& room) {
    if (isEmpty(room.picture) || isEmpty(room.area.size())) return {};
    const Rectangle place = common(framePlace(room, framePixels(room)), rectangleOf(room.area));
    const int left = static_cast<int>(std::ceil(place.x)), top = static_cast<int>(std::ceil(place.y));
    const int right = static_cast<int>(std::floor(place.right())),
              bottom = static_cast<int>(std::floor(place.bottom()));
    return {left, top, std::max(right - left, 0), std::max(bottom - top, 0)};
}

PixelRect frameShown(const FrameRoom& room) {
    const Rectangle wanted = fittedInto(room.picture, rectangleOf(room.area).scaled(room.ratio));
    return {rounded(wanted.x), rounded(wanted.y), rounded(wanted.width), rounded(wanted.height)};
}

}  // namespace corvane
