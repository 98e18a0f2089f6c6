// SPDX-License-Identifier: GPL-3.0-or-later
#include "controls/movie_size.h"

namespace corvane {

namespace {

constexpr Twips kBorders = 30;
constexpr int kWidthWithoutPicture = 320;
constexpr int kHeightWithoutPicture = 240;

float screenShare(int windowSize) {
    switch (windowSize) {
        case 2:
            return 0.25F;
        case 3:
            return 0.5F;
        case 4:
            return 0.707F;
        default:
            return 0;
    }
}

}  // namespace

MovieExtent movieExtent(int pictureWidth, int pictureHeight, int windowSize, MovieExtent screen) {
    if (const float share = screenShare(windowSize); share > 0) return {screen.width * share, screen.height * share};
    const bool pictured = pictureWidth > 0 && pictureHeight > 0;
    const int width = pictured ? pictureWidth : kWidthWithoutPicture;
    const int height = pictured ? pictureHeight : kHeightWithoutPicture;
    const float scale = (windowSize == 1 ? 2.0F : 1.0F) * kTwipsPerPixel;
    return {static_cast<float>(width) * scale, static_cast<float>(height) * scale + kBorders};
}

}  // namespace corvane
