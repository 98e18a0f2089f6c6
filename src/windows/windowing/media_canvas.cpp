// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/media_canvas.h"

#include <cmath>

namespace corvane {

void MediaCanvas::setMovie(Control* movie) {
    if (movie_ != nullptr) movie_->setHost(nullptr, RECT{});
    movie_ = dynamic_cast<MovieSurface*>(movie);
    if (movie == nullptr) fullScreen_.reset();
}

void MediaCanvas::placeMovie(const Rectangle& area) {
    wanted_ = area;
    tellMovie();
}

void MediaCanvas::tellMovie() {
    if (movie_ == nullptr) return;
    const HWND host = filled() ? fullScreen_->handle() : handle();
    RECT area{};
    GetClientRect(host, &area);
    if (!filled()) {
        const RECT wanted{std::lround(wanted_.x), std::lround(wanted_.y), std::lround(wanted_.right()),
                          std::lround(wanted_.bottom())};
        const RECT client = area;
        IntersectRect(&area, &client, &wanted);
    }
    if (IsRectEmpty(&area) != 0 || (host == host_ && EqualRect(&area, &area_) != 0)) return;
    host_ = host;
    area_ = area;
    movie_->setHost(host, area);
}

std::optional<PixelSize> MediaCanvas::filled() const {
    if (!fullScreen_ || IsWindowVisible(fullScreen_->handle()) == 0) return std::nullopt;
    RECT whole{};
    GetClientRect(fullScreen_->handle(), &whole);
    return PixelSize{static_cast<int>(whole.right), static_cast<int>(whole.bottom)};
}

void MediaCanvas::fillScreen(bool fill) {
    if (fill) {
        if (!fullScreen_) fullScreen_ = std::make_unique<FullScreenWindow>(*this);
        fullScreen_->show(context().screen(), !anotherProgramIsInFront());
    } else if (fullScreen_) {
        ShowWindow(fullScreen_->handle(), SW_HIDE);
        tellMovie();
        activate();
    }
}

LRESULT MediaCanvas::message(UINT message, WPARAM first, LPARAM second) {
    const LRESULT answer = CanvasWindow::message(message, first, second);
    if (message == WM_SIZE && isBound()) tellMovie();
    return answer;
}

}  // namespace corvane
