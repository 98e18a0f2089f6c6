// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/windowing/media_canvas.h"

#include <QPaintEvent>
#include <QPainter>

#include "linux/windowing/foreign_focus.h"
#include "linux/windowing/full_screen_window.h"
#include "linux/windowing/picture_behind.h"

namespace corvane {

namespace {

constexpr int kBehindMs = 500;  // by then the window manager has done what it was asked

}  // namespace

MediaCanvas::MediaCanvas(DesktopContext& context) : CanvasWindow(context) {
    behind_.setSingleShot(true);
    behind_.setInterval(kBehindMs);
    connect(&behind_, &QTimer::timeout, this, [this] { takePictureAway(*this); });
}

MediaCanvas::~MediaCanvas() = default;

void MediaCanvas::setMovie(Control* movie) {
    if (movie_ != nullptr) {
        movie_->frameReady.tie({});
        movie_->leave();
    }
    control_ = movie;
    movie_ = dynamic_cast<MovieSurface*>(movie);
    if (movie_ != nullptr) movie_->frameReady.tie([this] { showFrame(); });
}

QRect MediaCanvas::movieArea() const { return wanted_.toAlignedRect() & rect(); }

void MediaCanvas::placeMovie(const Rectangle& area) {
    wanted_ = {area.x, area.y, area.width, area.height};
    filledSizeChanged();
}

void MediaCanvas::filledSizeChanged() {
    if (movie_ == nullptr) return;
    const bool whole = filled().has_value();
    const QWidget& shown = whole ? static_cast<const QWidget&>(*fullScreen_) : *this;
    const QSize size = (QSizeF(whole ? shown.size() : movieArea().size()) * shown.devicePixelRatioF()).toSize();
    if (size == target_ || size.isEmpty()) return;
    target_ = size;
    movie_->setTarget(size);
}

void MediaCanvas::showFrame() {
    QWidget& shown = filled() ? static_cast<QWidget&>(*fullScreen_) : *this;
    const QRect area = filled() ? shown.rect() : movieArea();
    if (movie_->isDue()) {
        shown.repaint(area);
    } else {
        shown.update(area);
    }
}

std::optional<PixelSize> MediaCanvas::filled() const {
    if (!fullScreen_ || !fullScreen_->isVisible()) return std::nullopt;
    return PixelSize{fullScreen_->width(), fullScreen_->height()};
}

void MediaCanvas::fillScreen(bool fill) {
    if (movie_ != nullptr) movie_->leave();
    if (!fill) {
        if (fullScreen_) fullScreen_->hide();
        return;
    }
    if (!fullScreen_) fullScreen_ = std::make_unique<FullScreenWindow>(*this);
    if (context().screen() != nullptr) fullScreen_->setScreen(context().screen());
    const bool leavesFocus = willLeaveFocus(*fullScreen_);
    // Where nobody manages the windows, the state alone makes it no larger.
    if (context().screen() != nullptr) fullScreen_->setGeometry(context().screen()->geometry());
    fullScreen_->showFullScreen();
    if (!leavesFocus) fullScreen_->activateWindow();
}

/// A window manager brings a minimised window back that asks for another place.
bool MediaCanvas::canBePlaced(bool preparing) const { return !isVisible() || (!isMinimized() && !preparing); }

/// In one step and with the picture behind it: at no moment is the window seen bare, however late the window manager
/// and the painting come.
void MediaCanvas::setPlace(const PixelPlace& place) {
    const QSize wanted(place.width, place.height);
    if (isVisible() && movie_ == nullptr && wanted != size()) {
        const double ratio = devicePixelRatioF();
        QImage picture((QSizeF(wanted) * ratio).toSize(), QImage::Format_RGB32);
        picture.setDevicePixelRatio(ratio);
        QPainter painter(&picture);
        paintForm(painter, QRect(QPoint(), wanted));
        painter.end();
        layPictureBehind(*this, picture);
        behind_.start();
    }
    CanvasWindow::setPlace(place);
}

void MediaCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    const QRect area = movieArea();
    const bool shows = movie_ != nullptr && control_->Visible && !filled();
    const QRect covered = shows ? movie_->covered(area, devicePixelRatioF()) : QRect();
    paintForm(painter, event->region() - covered);
    if (movie_ == nullptr || filled()) return;
    if (area.isEmpty() || !control_->Visible) return movie_->leave();
    movie_->paint(painter, area);
    painter.end();
    movie_->showIn(*this, area);
}

}  // namespace corvane
