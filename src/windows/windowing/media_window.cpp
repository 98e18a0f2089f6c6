// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/media_window.h"

#include <algorithm>
#include <cmath>

#include "shell/control_place.h"
#include "windows/windowing/dib.h"
#include "windows/windowing/full_screen_window.h"

namespace corvane {

MediaWindow::MediaWindow(Form& form, DesktopContext& context) : CanvasWindow(form, context) {}

MediaWindow::~MediaWindow() = default;

void MediaWindow::onBound() {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::Movie) continue;
        movie_ = control;
        surface_ = dynamic_cast<MovieSurface*>(control);
    }
    if (surface_ != nullptr) surface_->fillsScreenChanged.tie([this] { takeFullScreen(); });
    CanvasWindow::onBound();
    retarget();
    takeFullScreen();
}

void MediaWindow::onUnbinding() {
    if (surface_ != nullptr) {
        surface_->fillsScreenChanged.tie({});
        surface_->setHost(nullptr, RECT{});
    }
    surface_ = nullptr;
    movie_ = nullptr;
    fullScreen_.reset();
    CanvasWindow::onUnbinding();
}

bool MediaWindow::isFullScreenShown() const { return fullScreen_ && IsWindowVisible(fullScreen_->handle()) != 0; }

void MediaWindow::beginDrag() {
    if (!isFullScreenShown()) CanvasWindow::beginDrag();
}

void MediaWindow::takeScale() {
    CanvasWindow::takeScale();
    retarget();
}

Rectangle MediaWindow::hitRect(const Control& control) const {
    if (&control == movie_ && isFullScreenShown()) {
        RECT whole{};
        GetClientRect(fullScreen_->handle(), &whole);
        return {0, 0, static_cast<double>(context().toTwips(whole.right)),
                static_cast<double>(context().toTwips(whole.bottom))};
    }
    return control.kind() == ControlKind::PictureBox || control.kind() == ControlKind::Movie ? placeOnForm(control)
                                                                                             : Rectangle();
}

RECT MediaWindow::movieArea() const {
    RECT client{};
    GetClientRect(handle(), &client);
    if (movie_ == nullptr) return {};
    const Rectangle exact = pixels(placeOnForm(*movie_));
    const RECT wanted{std::lround(exact.x), std::lround(exact.y), std::lround(exact.right()),
                      std::lround(exact.bottom())};
    RECT seen{};
    IntersectRect(&seen, &client, &wanted);
    return seen;
}

void MediaWindow::controlChanged(Control& control, PropertyId property) {
    if (control.kind() == ControlKind::Timer || property == PropertyId::ToolTipText) return;
    if (&control == movie_ || &control == &form()) retarget();
    InvalidateRect(handle(), nullptr, FALSE);
}

void MediaWindow::retarget() {
    if (surface_ == nullptr) return;
    const bool whole = isFullScreenShown();
    const HWND host = whole ? fullScreen_->handle() : handle();
    RECT area = movieArea();
    if (whole) GetClientRect(host, &area);
    if (IsRectEmpty(&area) != 0 || (host == host_ && EqualRect(&area, &area_) != 0)) return;
    host_ = host;
    area_ = area;
    surface_->setHost(host, area);
}

void MediaWindow::takeFullScreen() {
    const bool wanted = surface_ != nullptr && surface_->fillsScreen();
    if (wanted == isFullScreenShown()) return;
    if (wanted) {
        if (!fullScreen_) fullScreen_ = std::make_unique<FullScreenWindow>(*this);
        fullScreen_->show(context().screen(), !anotherProgramIsInFront());
        retarget();
    } else {
        // The video leaves the whole-screen window before that goes.
        ShowWindow(fullScreen_->handle(), SW_HIDE);
        retarget();
        activate();
    }
}

LRESULT MediaWindow::message(UINT message, WPARAM first, LPARAM second) {
    const LRESULT answer = CanvasWindow::message(message, first, second);
    if (message == WM_SIZE && bound()) retarget();
    return answer;
}

void MediaWindow::paint(HDC screen, const RECT& dirty) {
    Dib target(dirty.right - dirty.left, dirty.bottom - dirty.top);
    std::fill_n(target.pixels(), target.width() * target.height(), 0xFF000000U);
    for (const Control* control : form().controls()) {
        if (!control->Visible || control->kind() != ControlKind::PictureBox) continue;
        const auto& box = static_cast<const PictureBox&>(*control);
        const Picture& picture = box.Picture;
        const bool painted = box.paintedWidth() > 0 && box.paintedHeight() > 0;
        const double unit = painted && box.Scale == ScaleMode::InTwips ? 1.0 : static_cast<double>(kTwipsPerPixel);
        Rectangle stretched = placeOnForm(box);
        stretched.width = (painted ? static_cast<double>(box.paintedWidth()) : picture.width()) * unit;
        stretched.height = (painted ? static_cast<double>(box.paintedHeight()) : picture.height()) * unit;
        picture_.draw(target, dirty, picture, pixels(stretched), pixels(placeOnForm(box)));
    }
    target.show(screen, dirty.left, dirty.top);
}

}  // namespace corvane
