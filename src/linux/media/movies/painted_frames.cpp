// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/movies/painted_frames.h"

#include <QPaintDevice>
#include <QPaintEngine>
#include <QWidget>
#include <utility>

namespace corvane {

namespace {

/// The library leaves what stands beside the colours as it is. A window that is not seen through has no use for it.
bool takesFrames(const QPaintDevice& painted, const QImage& on) {
    if (on.format() == QImage::Format_RGB32) return true;
    return on.format() == QImage::Format_ARGB32_Premultiplied && painted.devType() == QInternal::Widget &&
           !static_cast<const QWidget&>(painted).testAttribute(Qt::WA_TranslucentBackground);
}

}  // namespace

bool PaintedFrames::end() {
    drawing_.end();
    return true;
}

void PaintedFrames::setPicture(PictureSize pixels) {
    if (pixels.pixels() == 0) seen_ = false;
    drawing_.setPicture(pixels);
    picture_ = pixels.pixels() == 0 ? PixelSize() : PixelSize{pixels.width, pixels.height};
    stale_ = true;
}

bool PaintedFrames::update() {
    if (!drawing_.update()) return false;
    seen_ = true;
    stale_ = true;
    due_ = true;
    return picture_ != PixelSize();
}

void PaintedFrames::take() {
    if (!due_) return;
    draw(target_ == PixelSize() ? PixelSize() : framePixels({picture_, {}, 1, target_}));
    due_ = false;
}

void PaintedFrames::draw(PixelSize pixels) {
    if (pixels.width <= 0 || pixels.height <= 0) {
        drawing_.skip();
        due_ = false;
        return;
    }
    const bool isOther = image_.size() != QSize(pixels.width, pixels.height);
    if (isOther) image_ = QImage();  // its memory goes
    if (!drawing_.draw({pixels.width, pixels.height})) return;
    due_ = stale_ = false;
    if (!isOther) return;
    image_ = QImage(drawing_.lines(), pixels.width, pixels.height, static_cast<qsizetype>(drawing_.line()),
                    QImage::Format_RGB32);
}

QImage PaintedFrames::whole() {
    if (!isSeen()) return {};
    draw(picture_);
    QImage picture = image_.copy();
    stale_ = true;  // what is painted has another size
    return picture;
}

QRect PaintedFrames::covered(const QRect& area, double ratio) const {
    return seen_ ? rectOf(frameCovers(roomIn(area, ratio))) : QRect();
}

/// A frame that comes is drawn where it is painted, without a picture between, if all of it is to be painted there.
bool PaintedFrames::drawOn(QPainter& painter, const QRectF& place, QSize pixels) {
    if (!due_ || !drawing_.drawsAnywhere() || painter.hasClipping() ||
        painter.deviceTransform().type() > QTransform::TxScale)
        return false;
    const QPaintEngine* const engine = painter.paintEngine();
    if (engine->type() != QPaintEngine::Raster || engine->paintDevice()->devType() != QInternal::Image) return false;
    const auto& on = static_cast<const QImage&>(*engine->paintDevice());
    const QRectF exact = painter.deviceTransform().mapRect(place);
    const QRect there = exact.toRect();
    if (!takesFrames(*painter.device(), on) || there.size() != pixels || !on.rect().contains(there)) return false;
    const QRegion clip = engine->systemClip();
    if (!clip.isEmpty() && !QRegion(there).subtracted(clip).isEmpty()) return false;
    // The engine paints there itself; asking for it by bits() would make a copy.
    auto* const first = const_cast<std::uint8_t*>(on.constScanLine(there.y())) +
                        SoftwareDrawing::kPixelBytes * static_cast<std::size_t>(there.x());
    const auto line = static_cast<std::size_t>(on.bytesPerLine());
    constexpr std::size_t kAlignment = SoftwareDrawing::kAlignment;
    if (reinterpret_cast<std::uintptr_t>(first) % kAlignment != 0 || line % kAlignment != 0) return false;
    if (!drawing_.drawInto(first, line, {pixels.width(), pixels.height()})) return false;
    due_ = false;
    return true;
}

void PaintedFrames::paint(QPainter& painter, const QRect& area) {
    if (!isSeen() || area.isEmpty()) return;
    const FrameRoom room = roomIn(area, painter.device()->devicePixelRatio());
    const PixelSize pixels = framePixels(room);
    const QSize size(pixels.width, pixels.height);
    if (size.isEmpty()) return;
    const Rectangle at = framePlace(room, pixels);
    const QRectF place(at.x, at.y, at.width, at.height);
    if (drawOn(painter, place, size)) return;
    if (stale_ || image_.size() != size) draw(pixels);
    if (image_.isNull()) return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, image_);
}

}  // namespace corvane
