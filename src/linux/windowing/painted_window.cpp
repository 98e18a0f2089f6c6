// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/painted_window.h"

#include <QPaintEvent>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "linux/pictures/qt_pictures.h"
#include "linux/windowing/label_text.h"
#include "linux/windowing/shown_text.h"
#include "shell/painted_layout.h"

namespace corvane {

namespace {

constexpr int kMargin = 2;  ///< pixels of the skin around a part, so that scaling it sees its neighbours

QColor toColour(Colour colour) {
    return {static_cast<int>(colour & 0xFF), static_cast<int>((colour >> 8) & 0xFF),
            static_cast<int>((colour >> 16) & 0xFF)};
}

bool isWhole(double factor) { return std::abs(factor - std::round(factor)) < 1e-6; }

}  // namespace

PaintedWindow::PaintedWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {}

void PaintedWindow::onBound() {
    for (const Control* control : form().controls()) painted_[control] = paintRect(*control);
    CanvasWindow::onBound();
}

QImage PaintedWindow::pictureOf(const Control& control) const {
    return imageOf(pictureShown(control, pressed() == &control));
}

QRectF PaintedWindow::paintRect(const Control& control) const { return toWidget(paintPlace(form(), control)); }

Rectangle PaintedWindow::hitRect(const Control& control) const {
    double textTwips = 0;
    if (control.kind() == ControlKind::Label && control.Width <= 0) {
        const auto& label = static_cast<const Label&>(control);
        const QFontMetricsF metrics(labelFont(toWidget(labelPlace(form(), label)).height()));
        const double unit = static_cast<double>(kTwipsPerPixel) / context().scale;
        textTwips = metrics.horizontalAdvance(shownText(label.Caption)) * unit;
    }
    return hitPlace(form(), control, textTwips);
}

QString PaintedWindow::toolTip(const Control& control) const {
    QString own = CanvasWindow::toolTip(control);
    if (!own.isEmpty() || control.kind() != ControlKind::Label) return own;
    const auto& label = static_cast<const Label&>(control);
    const QString text = shownText(label.Caption);
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

int PaintedWindow::density() const {
    if (context().scale * devicePixelRatioF() < kDenseFrom) return 1;
    if (!denseImageOf(form().Picture).isNull()) return kDenseFactor;
    const auto steps = compositionOf(form(), pressed());
    const bool any = std::any_of(steps.begin(), steps.end(), [](const CompositionStep& step) {
        return step.picture != nullptr && !denseImageOf(*step.picture).isNull();
    });
    return any ? kDenseFactor : 1;
}

QImage PaintedWindow::compose(const QRect& cells, int density) const {
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
    if (!form().Picture.get().empty()) draw(form().Picture, QPoint(), imageOf(form().Picture).size());
    for (const CompositionStep& step : compositionOf(form(), pressed())) {
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

void PaintedWindow::drawPictures(QPainter& painter, const QRect& dirty) const {
    const double scale = context().scale;
    const QRect skin(0, 0, std::max(1, static_cast<int>(std::ceil(width() / scale))),
                     std::max(1, static_cast<int>(std::ceil(height() / scale))));
    const QRectF exact(dirty.x() / scale, dirty.y() / scale, dirty.width() / scale, dirty.height() / scale);
    const QRect cells = exact.toAlignedRect().adjusted(-kMargin, -kMargin, kMargin, kMargin) & skin;
    if (cells.isEmpty()) return;
    painter.save();
    painter.setClipRect(dirty, Qt::IntersectClip);
    const int composed = density();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !isWhole(scale * devicePixelRatioF() / composed));
    painter.scale(scale / composed, scale / composed);
    painter.drawImage(cells.topLeft() * composed, compose(cells, composed));
    painter.restore();
}

QRegion PaintedWindow::coverAbove(const Control& control) const {
    QRegion cover;
    const auto& controls = form().controls();
    auto above = std::find(controls.begin(), controls.end(), &control);
    if (above == controls.end()) return cover;
    for (++above; above != controls.end(); ++above) {
        const QImage picture = (*above)->Visible ? pictureOf(**above) : QImage();
        if (!picture.isNull() && !picture.hasAlphaChannel()) cover += placeOf(**above).toRect();
    }
    return cover;
}

void PaintedWindow::drawText(QPainter& painter, const Label& label) const {
    const QRectF place = toWidget(labelPlace(form(), label));
    const QFont font = labelFont(place.height());
    painter.setClipRect(place, Qt::IntersectClip);
    painter.setFont(font);
    painter.setPen(toColour(label.ForeColor));
    const QString text = fittingText(shownText(label.Caption), font, place.width());
    painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
}

}  // namespace corvane
