// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media_window.h"

#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "desktop/full_screen_window.h"
#include "desktop/qt_pictures.h"
#include "toolkit/control_place.h"

namespace corvane {

namespace {

bool hidesWhatIsBelow(const Picture& picture) { return !picture.empty() && !imageOf(picture).hasAlphaChannel(); }

/// The pixels that lie wholly inside.
QRect wholePixels(const QRectF& area) {
    const QPoint corner(static_cast<int>(std::ceil(area.left())), static_cast<int>(std::ceil(area.top())));
    const QPoint end(static_cast<int>(std::floor(area.right())), static_cast<int>(std::floor(area.bottom())));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y()).expandedTo({0, 0})};
}

}  // namespace

MediaWindow::MediaWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {}

MediaWindow::~MediaWindow() = default;

void MediaWindow::onBound() {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::Movie) continue;
        movie_ = control;
        surface_ = dynamic_cast<MovieSurface*>(control);
    }
    if (surface_ != nullptr) {
        surface_->frameReady.tie([this] { showFrame(); });
        surface_->fillsScreenChanged.tie([this] { takeFullScreen(); });
        retarget();
    }
    CanvasWindow::onBound();
    takeFullScreen();
}

void MediaWindow::onUnbinding() {
    if (surface_ != nullptr) {
        surface_->frameReady.tie({});
        surface_->fillsScreenChanged.tie({});
    }
    surface_ = nullptr;
    movie_ = nullptr;
    if (fullScreen_) fullScreen_->hide();
    CanvasWindow::onUnbinding();
}

bool MediaWindow::isFullScreenShown() const { return fullScreen_ && fullScreen_->isVisible(); }

void MediaWindow::beginDrag() {
    if (!isFullScreenShown()) CanvasWindow::beginDrag();
}

Rectangle MediaWindow::hitRect(const Control& control) const {
    if (&control == movie_ && isFullScreenShown()) {
        const double unit = static_cast<double>(kTwipsPerPixel) / context().scale;
        return {0, 0, fullScreen_->width() * unit, fullScreen_->height() * unit};
    }
    const bool takesMouse = control.kind() == ControlKind::PictureBox || control.kind() == ControlKind::Movie;
    return takesMouse ? placeOnForm(control) : Rectangle();
}

QRectF MediaWindow::place(const Control& control) const { return toWidget(placeOnForm(control)); }

QRect MediaWindow::movieArea() const { return movie_ != nullptr ? place(*movie_).toAlignedRect() & rect() : QRect(); }

void MediaWindow::controlChanged(Control& control, PropertyId property) {
    if (control.kind() == ControlKind::Timer || property == PropertyId::ToolTipText) return;
    if (&control == movie_ || &control == &form()) retarget();
    update();
}

void MediaWindow::retarget() {
    if (surface_ == nullptr) return;
    const bool whole = isFullScreenShown();
    const QWidget& shown = whole ? static_cast<const QWidget&>(*fullScreen_) : *this;
    const QSize size = (QSizeF(whole ? shown.size() : movieArea().size()) * shown.devicePixelRatioF()).toSize();
    if (size == target_ || size.isEmpty()) return;
    target_ = size;
    surface_->setTarget(size);
}

void MediaWindow::showFrame() {
    if (isFullScreenShown()) {
        fullScreen_->update();
    } else {
        update(movieArea());
    }
}

void MediaWindow::takeFullScreen() {
    const bool wanted = surface_ != nullptr && surface_->fillsScreen();
    if (wanted == isFullScreenShown()) return;
    if (wanted) {
        if (!fullScreen_) fullScreen_ = std::make_unique<FullScreenWindow>(*this);
        if (context().screen() != nullptr) fullScreen_->setScreen(context().screen());
        fullScreen_->showFullScreen();
        fullScreen_->activateWindow();
    } else {
        fullScreen_->hide();
    }
    retarget();
}

QRectF MediaWindow::stretched(const PictureBox& box) const {
    const Picture& picture = box.Picture;
    const bool painted = box.paintedWidth() > 0 && box.paintedHeight() > 0;
    const QSizeF size = painted
                            ? QSizeF(static_cast<double>(box.paintedWidth()), static_cast<double>(box.paintedHeight()))
                            : QSizeF(picture.width(), picture.height());
    const double unit = box.Scale == ScaleMode::InPixels || !painted
                            ? context().scale
                            : context().scale / static_cast<double>(kTwipsPerPixel);
    return {place(box).topLeft(), size * unit};
}

void MediaWindow::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    QRegion black = event->region();
    for (const Control* control : form().controls()) {
        if (!bound() || !control->Visible || control->kind() != ControlKind::PictureBox) continue;
        const auto& box = static_cast<const PictureBox&>(*control);
        // Black under a picture that fills the screen would cost as much again as the picture.
        if (hidesWhatIsBelow(box.Picture)) black -= wholePixels(stretched(box) & place(box));
    }
    for (const QRect& part : black) painter.fillRect(part, Qt::black);
    if (!bound()) return;
    for (const Control* control : form().controls()) {
        if (!control->Visible) continue;
        if (control == movie_ && surface_ != nullptr && !isFullScreenShown()) {
            const QRect area = movieArea();
            if (!area.isEmpty()) surface_->paint(painter, area);
        } else if (control->kind() == ControlKind::PictureBox) {
            const auto& box = static_cast<const PictureBox&>(*control);
            picture_.draw(painter, box.Picture, stretched(box), QRectF(event->rect()) & place(box));
        }
    }
}

}  // namespace corvane
