// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/scaled_picture.h"

#include <QPainter>
#include <algorithm>

#include "linux/pictures/qt_pictures.h"

namespace corvane {

void ScaledPicture::clear() {
    picture_ = {};
    reduced_ = {};
}

void ScaledPicture::draw(QPainter& painter, const Picture& picture, const QRectF& place, const QRectF& visible) {
    const QRectF part = place & visible;
    if (picture.empty() || part.isEmpty()) return;
    const double ratio = painter.device()->devicePixelRatioF();
    const QSize wanted = (place.size() * ratio).toSize().expandedTo(QSize(1, 1));
    QImage image = imageOf(picture);
    if (wanted.width() < image.width() || wanted.height() < image.height()) {
        if (picture_ != picture || reduced_.size() != wanted) {
            reduced_ = image.scaled(wanted, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            picture_ = picture;
        }
        image = reduced_;
    } else {
        clear();
    }
    const double across = image.width() / place.width();
    const double down = image.height() / place.height();
    const QRectF source((part.x() - place.x()) * across, (part.y() - place.y()) * down, part.width() * across,
                        part.height() * down);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, image.size() != wanted);
    painter.drawImage(part, image, source);
}

}  // namespace corvane
