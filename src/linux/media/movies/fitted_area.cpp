// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/fitted_area.h"

#include <algorithm>

namespace corvane {

QRectF fittedInto(QSize picture, const QRectF& area) {
    if (picture.isEmpty() || area.isEmpty()) return {};
    const double scale = std::min(area.width() / picture.width(), area.height() / picture.height());
    const QSizeF size(picture.width() * scale, picture.height() * scale);
    return {area.center().x() - size.width() / 2, area.center().y() - size.height() / 2, size.width(), size.height()};
}

}  // namespace corvane
