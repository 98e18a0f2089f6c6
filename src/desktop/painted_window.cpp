// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/painted_window.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "desktop/label_text.h"
#include "desktop/qt_pictures.h"

namespace corvane {

namespace {

constexpr int kMargin = 2;  ///< pixels of the skin around a part, so that scaling it sees its neighbours

QColor toColour(Colour colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

QRectF twipsRect(const Control& control) {
    return {static_cast<double>(control.Left), static_cast<double>(control.Top), static_cast<double>(control.Width),
            static_cast<double>(control.Height)};
}

/// An image is as large as its picture, whatever room it was given.
QRectF imageRect(const Image& image) {
    QRectF rect = twipsRect(image);
    const Picture& picture = image.Picture;
    if (!picture.empty()) rect.setSize(QSizeF(picture.width(), picture.height()) * static_cast<double>(kTwipsPerPixel));
    return rect;
}

QRectF toCells(const QRectF& twips) {
    constexpr double kUnit = static_cast<double>(kTwipsPerPixel);
    return {twips.x() / kUnit, twips.y() / kUnit, twips.width() / kUnit, twips.height() / kUnit};
}

/// Whole pixels of the skin that a box of that place fills.
QRect snapped(const QRectF& cells) {
    const QPoint from(static_cast<int>(std::lround(cells.left())), static_cast<int>(std::lround(cells.top())));
    const QPoint to(static_cast<int>(std::lround(cells.right())), static_cast<int>(std::lround(cells.bottom())));
    return {from, QSize(to.x() - from.x(), to.y() - from.y())};
}

bool isWhole(double factor) { return std::abs(factor - std::round(factor)) < 1e-6; }

}  // namespace

PaintedWindow::PaintedWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {}

void PaintedWindow::onBound() {
    for (const Control* control : form().controls()) painted_[control] = paintRect(*control);
    CanvasWindow::onBound();
}

QRectF PaintedWindow::toWidget(const QRectF& twips) const {
    const double unit = context().scale / static_cast<double>(kTwipsPerPixel);
    return {twips.x() * unit, twips.y() * unit, twips.width() * unit, twips.height() * unit};
}

QImage PaintedWindow::pictureOf(const Control& control) const {
    switch (control.kind()) {
        case ControlKind::Image:
            return imageOf(static_cast<const Image&>(control).Picture);
        case ControlKind::PictureBox:
            return imageOf(static_cast<const PictureBox&>(control).Picture);
        case ControlKind::CommandButton: {
            const auto& button = static_cast<const CommandButton&>(control);
            const bool down = pressed() == &control && !button.DownPicture.get().empty();
            return imageOf(down ? button.DownPicture : button.Picture);
        }
        default:
            return {};
    }
}

QRectF PaintedWindow::paintRect(const Control& control) const {
    if (!control.Visible) return {};
    switch (control.kind()) {
        case ControlKind::Label:
            return toWidget(labelPlace(form(), static_cast<const Label&>(control)));
        case ControlKind::Image:
            return toWidget(imageRect(static_cast<const Image&>(control)));
        case ControlKind::CommandButton:
        case ControlKind::PictureBox:
        case ControlKind::Shape:
            return toWidget(twipsRect(control));
        default:
            return {};
    }
}

QRectF PaintedWindow::hitRect(const Control& control) const {
    switch (control.kind()) {
        case ControlKind::CommandButton:
            return toWidget(twipsRect(control));
        case ControlKind::Image:
            return toWidget(imageRect(static_cast<const Image&>(control)));
        case ControlKind::PictureBox: {
            QRectF rect = twipsRect(control);
            const auto& box = static_cast<const PictureBox&>(control);
            if (box.hitWidth > 0) rect.setWidth(static_cast<double>(box.hitWidth));
            return toWidget(rect);
        }
        case ControlKind::Label: {
            // A label without a width is as wide as its text.
            const auto& label = static_cast<const Label&>(control);
            QRectF place = toWidget(labelPlace(form(), label));
            if (label.Width > 0) return place;
            const QFontMetricsF metrics(labelFont(place.height()));
            place.setWidth(std::min(place.width(), metrics.horizontalAdvance(toQString(label.Caption))));
            return place;
        }
        default:
            return {};
    }
}

QString PaintedWindow::toolTip(const Control& control) const {
    const QString own = CanvasWindow::toolTip(control);
    if (!own.isEmpty() || control.kind() != ControlKind::Label) return own;
    const auto& label = static_cast<const Label&>(control);
    const QString text = toQString(label.Caption);
    const QRectF place = toWidget(labelPlace(form(), label));
    return fittingText(text, labelFont(place.height()), place.width()) == text ? QString() : text;
}

void PaintedWindow::repaintControl(const Control& control) {
    QRectF& last = painted_[&control];
    const QRectF now = paintRect(control);
    update((last | now).toAlignedRect());
    last = now;
}

void PaintedWindow::pressedChanged(Control& control) { repaintControl(control); }

void PaintedWindow::controlChanged(Control& control, PropertyId property) {
    if (property == PropertyId::ToolTipText || property == PropertyId::Enabled) return;
    if (&control == &form()) {
        if (property == PropertyId::Picture || property == PropertyId::Width) update();
        return;
    }
    if (control.kind() == ControlKind::Label && property != PropertyId::Caption && property != PropertyId::ForeColor) {
        // A label's place bounds its neighbours' texts.
        for (const Control* each : form().controls()) {
            if (each->kind() == ControlKind::Label) repaintControl(*each);
        }
        return;
    }
    repaintControl(control);
}

void PaintedWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (!bound()) {
        painter.fillRect(event->rect(), Qt::black);
        return;
    }
    painter.setClipRegion(event->region());
    for (const QRect& dirty : event->region()) drawPictures(painter, dirty);
    for (const Control* control : form().controls()) {
        const QRectF place = paintRect(*control);
        if (!place.intersects(event->rect())) continue;
        const bool isShape = control->kind() == ControlKind::Shape;
        if (!isShape && control->kind() != ControlKind::Label) continue;
        painter.save();
        painter.setClipRegion(event->region().subtracted(coverAbove(*control)));
        if (isShape) {
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            painter.setBrush(toColour(static_cast<const Shape&>(*control).FillColor));
            painter.drawEllipse(place);
        } else {
            drawText(painter, static_cast<const Label&>(*control));
        }
        painter.restore();
    }
}

QImage PaintedWindow::compose(const QRect& cells) const {
    QImage canvas(cells.size(), QImage::Format_RGB32);
    canvas.fill(Qt::black);
    QPainter painter(&canvas);
    painter.translate(-cells.topLeft());
    painter.drawImage(0, 0, imageOf(form().Picture));
    for (const Control* control : form().controls()) {
        if (!control->Visible) continue;
        const bool isImage = control->kind() == ControlKind::Image;
        const QRect place =
            snapped(toCells(isImage ? imageRect(static_cast<const Image&>(*control)) : twipsRect(*control)));
        if (!place.intersects(cells)) continue;
        const QImage picture = pictureOf(*control);
        if (!picture.isNull()) {
            painter.drawImage(place.topLeft(), picture, QRect(QPoint(), place.size().boundedTo(picture.size())));
        } else if (control->kind() == ControlKind::PictureBox) {
            painter.fillRect(place, toColour(static_cast<const PictureBox&>(*control).BackColor));
        }
    }
    return canvas;
}

void PaintedWindow::drawPictures(QPainter& painter, const QRect& dirty) const {
    const double scale = context().scale;
    const QRect skin(0, 0, std::max(1, static_cast<int>(std::ceil(width() / scale))),
                     std::max(1, static_cast<int>(std::ceil(height() / scale))));
    const QRectF exact(dirty.x() / scale, dirty.y() / scale, dirty.width() / scale, dirty.height() / scale);
    const QRect cells = exact.toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin) & skin;
    if (cells.isEmpty()) return;
    painter.save();
    painter.setClipRect(dirty, Qt::IntersectClip);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole(scale * devicePixelRatioF()));
    painter.scale(scale, scale);
    painter.drawImage(cells.topLeft(), compose(cells));
    painter.restore();
}

QRegion PaintedWindow::coverAbove(const Control& control) const {
    QRegion cover;
    const auto& controls = form().controls();
    auto above = std::find(controls.begin(), controls.end(), &control);
    if (above == controls.end()) return cover;
    for (++above; above != controls.end(); ++above) {
        const QImage picture = (*above)->Visible ? pictureOf(**above) : QImage();
        if (!picture.isNull() && !picture.hasAlphaChannel()) cover += hitRect(**above).toRect();
    }
    return cover;
}

void PaintedWindow::drawText(QPainter& painter, const Label& label) const {
    const QRectF place = toWidget(labelPlace(form(), label));
    const QFont font = labelFont(place.height());
    painter.setClipRect(place, Qt::IntersectClip);
    painter.setFont(font);
    painter.setPen(toColour(label.ForeColor));
    const QString text = fittingText(toQString(label.Caption), font, place.width());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

}  // namespace corvane
