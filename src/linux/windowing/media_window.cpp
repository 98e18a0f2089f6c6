// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/media_window.h"

#include <QPaintEvent>
#include <QPainter>
#include <cmath>

#include "linux/pictures/qt_pictures.h"
#include "linux/windowing/foreign_focus.h"
#include "linux/windowing/full_screen_window.h"
#include "linux/windowing/picture_behind.h"
#include "shell/control_place.h"

namespace corvane {

namespace {

constexpr int kBehindMs = 500;  // by then the window manager has done what it was asked

bool hidesWhatIsBelow(const Picture& picture) { return !picture.empty() && !imageOf(picture).hasAlphaChannel(); }

/// The pixels that lie wholly inside.
QRect wholePixels(const QRectF& area) {
    const QPoint corner(static_cast<int>(std::ceil(area.left())), static_cast<int>(std::ceil(area.top())));
    const QPoint end(static_cast<int>(std::floor(area.right())), static_cast<int>(std::floor(area.bottom())));
    return {corner, QSize(end.x() - corner.x(), end.y() - corner.y()).expandedTo({0, 0})};
}

}  // namespace

MediaWindow::MediaWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {
    behind_.setSingleShot(true);
    behind_.setInterval(kBehindMs);
    connect(&behind_, &QTimer::timeout, this, [this] { takePictureAway(*this); });
}

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
    if (geometryWaits_ && !isPreparing()) takeGeometry();
    update();
}

/// A picture box is hidden while its next picture is prepared.
bool MediaWindow::isPreparing() const {
    for (const Control* control : form().controls()) {
        if (control->kind() == ControlKind::PictureBox && !control->Visible) return true;
    }
    return false;
}

/// A kept window goes to the next picture's place when that is ready, in one step and with the picture behind it: at no
/// moment is it seen bare, however late the window manager and the painting come.
void MediaWindow::takeGeometry() {
    // A window manager brings a minimised window back that asks for another place.
    geometryWaits_ = isVisible() && (isMinimized() || isPreparing());
    if (geometryWaits_) return;
    const QRect wanted = geometryOfForm();
    const bool changesSize = isVisible() && surface_ == nullptr && wanted.size() != size();
    if (changesSize) {
        const double ratio = devicePixelRatioF();
        QImage picture((QSizeF(wanted.size()) * ratio).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        QPainter painter(&picture);
        paintPictures(painter, QRect(QPoint(), wanted.size()));
        painter.end();
        layPictureBehind(*this, picture);
        behind_.start();
    }
    CanvasWindow::takeGeometry();
}

void MediaWindow::changeEvent(QEvent* event) {
    CanvasWindow::changeEvent(event);
    const bool restored = event->type() == QEvent::WindowStateChange && !isMinimized();
    if (bound() && restored && geometryWaits_) takeGeometry();
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
        const bool leavesFocus = willLeaveFocus(*fullScreen_);
        fullScreen_->showFullScreen();
        if (!leavesFocus) fullScreen_->activateWindow();
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
    paintPictures(painter, event->region());
    if (!bound() || movie_ == nullptr || !movie_->Visible || surface_ == nullptr || isFullScreenShown()) return;
    const QRect area = movieArea();
    if (!area.isEmpty()) surface_->paint(painter, area);
}

/// Pictures on black.
void MediaWindow::paintPictures(QPainter& painter, const QRegion& region) {
    if (!bound()) {
        painter.fillRect(region.boundingRect(), Qt::black);
        return;
    }
    QRegion black = region;
    for (const Control* control : form().controls()) {
        if (!control->Visible || control->kind() != ControlKind::PictureBox) continue;
        const auto& box = static_cast<const PictureBox&>(*control);
        // Black under a picture that fills the screen would cost as much again as the picture.
        if (hidesWhatIsBelow(box.Picture)) black -= wholePixels(stretched(box) & place(box));
    }
    for (const QRect& part : black) painter.fillRect(part, Qt::black);
    for (const Control* control : form().controls()) {
        if (!control->Visible || control->kind() != ControlKind::PictureBox) continue;
        const auto& box = static_cast<const PictureBox&>(*control);
        picture_.draw(painter, box.Picture, stretched(box), QRectF(region.boundingRect()) & place(box));
    }
}

}  // namespace corvane
