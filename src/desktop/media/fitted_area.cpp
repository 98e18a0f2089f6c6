// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/movie_size.h"

#include <algorithm>

namespace corvane {

namespace {

constexpr Twips kBorders = 30;
constexpr QSize kSizeWithoutPicture{320, 240};

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

MovieExtent movieExtent(QSize picturePixels, int windowSize, MovieExtent screen) {
    if (const float share = screenShare(windowSize); share > 0) return {screen.width * share, screen.height * share};
    const QSize picture = picturePixels.isEmpty() ? kSizeWithoutPicture : picturePixels;
    const float scale = (windowSize == 1 ? 2.0F : 1.0F) * kTwipsPerPixel;
    return {static_cast<float>(picture.width()) * scale, static_cast<float>(picture.height()) * scale + kBorders};
}

QRectF fittedInto(QSize picture, const QRectF& area) {
    if (picture.isEmpty() || area.isEmpty()) return {};
    const double scale = std::min(area.width() / picture.width(), area.height() / picture.height());
    const QSizeF size(picture.width() * scale, picture.height() * scale);
    return {area.center().x() - size.width() / 2, area.center().y() - size.height() / 2, size.width(), size.height()};
}

}  // namespace corvane
