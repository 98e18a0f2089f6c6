// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/windowing/media_window.h"

#include <algorithm>
#include <utility>

#include "shell/control_place.h"

namespace corvane {

MediaWindow::MediaWindow(Form& form, EventLoop& loop, const Screens& screens, std::unique_ptr<Surface> surface,
                         MediaSurface& media)
    : DrawnWindow(form, loop, screens, std::move(surface)), media_(media) {}

void MediaWindow::onBound() {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::Movie) continue;
        movie_ = control;
        filling_ = dynamic_cast<ScreenFilling*>(control);
    }
    if (filling_ != nullptr) filling_->fillsScreenChanged.tie([this] { takeFullScreen(); });
    media_.setMovie(movie_);
    DrawnWindow::onBound();
    placeMovie();
    takeFullScreen();
}

void MediaWindow::onUnbinding() {
    if (filling_ != nullptr) filling_->fillsScreenChanged.tie({});
    filling_ = nullptr;
    movie_ = nullptr;
    media_.setMovie(nullptr);
    if (media_.filled()) media_.fillScreen(false);
    DrawnWindow::onUnbinding();
}

void MediaWindow::beginDrag() {
    if (!media_.filled()) DrawnWindow::beginDrag();
}

void MediaWindow::scaleChanged() {
    DrawnWindow::scaleChanged();
    placeMovie();
}

Rectangle MediaWindow::hitRect(const Control& control) const {
    if (const auto whole = media_.filled(); whole && &control == movie_) {
        const double unit = static_cast<double>(kTwipsPerPixel) / screens().factor();
        return {0, 0, whole->width * unit, whole->height * unit};
    }
    const bool takesMouse = control.kind() == ControlKind::PictureBox || control.kind() == ControlKind::Movie;
    return takesMouse ? placeOnForm(control) : Rectangle();
}

void MediaWindow::controlChanged(Control& control, PropertyId property) {
    if (control.kind() == ControlKind::Timer || property == PropertyId::ToolTipText) return;
    if (&control == movie_ || &control == &form()) placeMovie();
    if (placeWaits_ && !isPreparing()) takePlace();
    surface().paintAllAnew();
}

/// A picture box is hidden while its next picture is prepared.
bool MediaWindow::isPreparing() const {
    const auto& controls = form().controls();
    return std::any_of(controls.begin(), controls.end(), [](const Control* control) {
        return control->kind() == ControlKind::PictureBox && !control->Visible;
    });
}

/// A kept window goes to the next picture's place when that is ready, and in one step: it is not seen with the one
/// picture at the other one's place.
void MediaWindow::takePlace() {
    placeWaits_ = !media_.canBePlaced(isPreparing());
    if (!placeWaits_) DrawnWindow::takePlace();
}

void MediaWindow::placeMovie() {
    if (bound() && movie_ != nullptr) media_.placeMovie(pixels(placeOnForm(*movie_)));
}

void MediaWindow::takeFullScreen() {
    const bool wanted = filling_ != nullptr && filling_->fillsScreen();
    if (wanted == media_.filled().has_value()) return;
    media_.fillScreen(wanted);
    placeMovie();
}

ShownPicture MediaWindow::shown(const PictureBox& box) const {
    const Picture& picture = box.Picture;
    const bool painted = box.paintedWidth() > 0 && box.paintedHeight() > 0;
    const double unit = painted && box.Scale == ScaleMode::InTwips ? 1.0 : static_cast<double>(kTwipsPerPixel);
    const Rectangle seen = placeOnForm(box);
    Rectangle whole = seen;
    whole.width = (painted ? static_cast<double>(box.paintedWidth()) : picture.width()) * unit;
    whole.height = (painted ? static_cast<double>(box.paintedHeight()) : picture.height()) * unit;
    return {picture, pixels(whole), pixels(seen)};
}

void MediaWindow::paint(Brush& brush) const {
    std::vector<ShownPicture> pictures;
    for (const Control* control : form().controls()) {
        if (!control->Visible || control->kind() != ControlKind::PictureBox) continue;
        pictures.push_back(shown(static_cast<const PictureBox&>(*control)));
    }
    brush.pictures(pictures);
}

}  // namespace corvane
