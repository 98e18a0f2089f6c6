// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/qt_brush.h"

#include <algorithm>
#include <cmath>

#include "linux/pictures/qt_pictures.h"
#include "linux/windowing/label_text.h"
#include "linux/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr int kMargin = 2;  ///< pixels of the skin around a part, so that scaling it sees its neighbours

QColor toColour(Colour colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

QRectF toQt(const Rectangle& place) { return {place.x, place.y, place.width, place.height}; }

bool isWhole(double factor) { return std::abs(factor - std::round(factor)) < 1e-6; }

/// The pixels that lie wholly inside.
QRect wholePixels(const QRectF& area) {
    const QPoint corner(static_cast<int>(std::ceil(area.left())), static_cast<int>(std::ceil(area.top())));
    const QPoint end(static_cast<int>(std::floor(area.right())), static_cast<int>(std::floor(area.bottom())));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y()).expandedTo({0, 0})};
}

/// A skin in the middle of being composed.
struct Composition {
    const Picture& background;
    const std::vector<CompositionStep>& steps;

    /// Pixels to compose with for one of the skin on such a screen: 1, or kDenseFactor when a picture has them.
    int density(double pixels) const {
        if (pixels < kDenseFrom) return 1;
        if (!denseImageOf(background).isNull()) return kDenseFactor;
        const bool any = std::any_of(steps.begin(), steps.end(), [](const CompositionStep& step) {
            return step.picture != nullptr && !denseImageOf(*step.picture).isNull();
        });
        return any ? kDenseFactor : 1;
    }

    /// Pictures and boxes inside that part of the skin.
    QImage part(const QRect& cells, int density) const {
        QImage canvas(cells.size() * density, QImage::Format_RGB32);
        canvas.fill(Qt::black);
        QPainter painter(&canvas);
        painter.translate(-cells.topLeft() * density);
        const auto draw = [&painter, density](const Picture& picture, QPoint corner, QSize room) {
            const QImage dense = density == 1 ? QImage() : denseImageOf(picture);
            const QImage image = dense.isNull() ? imageOf(picture) : dense;
            const int own = dense.isNull() ? 1 : density;
            const QSize shown = room.boundedTo(image.size() / own);
            painter.drawImage(QRect(corner * density, shown * density), image, QRect(QPoint(), shown * own));
        };
        if (!background.empty()) draw(background, QPoint(), imageOf(background).size());
        for (const CompositionStep& step : steps) {
            const QRect place(step.place.x, step.place.y, step.place.width, step.place.height);
            if (!place.intersects(cells)) continue;
            if (step.picture != nullptr) {
                draw(*step.picture, place.topLeft(), place.size());
            } else {
                painter.fillRect(QRect(place.topLeft() * density, place.size() * density), toColour(step.colour));
            }
        }
        return canvas;
    }
};

}  // namespace

void QtBrush::skin(const Picture& background, const std::vector<CompositionStep>& steps) {
    const Composition composition{background, steps};
    const double ratio = frame_.widget()->devicePixelRatioF();
    const int density = composition.density(scale() * ratio);
    const QSize whole = frame_.widget()->size();
    const QRect skin(0, 0, std::max(1, static_cast<int>(std::ceil(whole.width() / scale()))),
                     std::max(1, static_cast<int>(std::ceil(whole.height() / scale()))));
    painter_.setClipRegion(region_);
    for (const QRect& dirty : region_) {
        const QRectF exact(dirty.x() / scale(), dirty.y() / scale(), dirty.width() / scale(), dirty.height() / scale());
        const QRect cells = exact.toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin) & skin;
        if (cells.isEmpty()) continue;
        painter_.save();
        painter_.setClipRect(dirty, Qt::IntersectClip);
        painter_.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole(scale() * ratio / density));
        painter_.scale(scale() / density, scale() / density);
        painter_.drawImage(cells.topLeft() * density, composition.part(cells, density));
        painter_.restore();
    }
}

bool QtBrush::clip(const QRectF& place, const std::vector<Rectangle>& covered) {
    if (!place.intersects(region_.boundingRect())) return false;
    QRegion cover;
    for (const Rectangle& each : covered) cover += toQt(each).toRect();
    painter_.save();
    painter_.setClipRegion(region_.subtracted(cover));
    return true;
}

void QtBrush::disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) {
    if (!clip(toQt(place), covered)) return;
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(toColour(colour));
    painter_.drawEllipse(toQt(place));
    painter_.restore();
}

void QtBrush::text(const std::string& text, const Rectangle& place, Colour colour,
                   const std::vector<Rectangle>& covered) {
    if (!clip(toQt(place), covered)) return;
    const QFont font = labelFont(place.height);
    painter_.setClipRect(toQt(place), Qt::IntersectClip);
    painter_.setFont(font);
    painter_.setPen(toColour(colour));
    painter_.drawText(toQt(place), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                      fittingText(shownText(text), font, place.width));
    painter_.restore();
}

void QtBrush::pictures(const std::vector<ShownPicture>& pictures) {
    QRegion black = region_;
    for (const ShownPicture& each : pictures) {
        // Black under a picture that fills the screen would cost as much again as the picture.
        const bool hides = !each.picture.empty() && !imageOf(each.picture).hasAlphaChannel();
        if (hides) black -= wholePixels(toQt(each.whole) & toQt(each.seen));
    }
    for (const QRect& part : black) painter_.fillRect(part, Qt::black);
    for (const ShownPicture& each : pictures) {
        scaled_.draw(painter_, each.picture, toQt(each.whole), QRectF(region_.boundingRect()) & toQt(each.seen));
    }
}

}  // namespace corvane
