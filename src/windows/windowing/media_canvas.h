// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "shell/windowing/media_window.h"
#include "windows/windowing/canvas_window.h"
#include "windows/windowing/full_screen_window.h"
#include "windows/windowing/movie_surface.h"

namespace corvane {

/// The surface of a form that shows a movie or a picture.
class MediaCanvas : public CanvasWindow, public MediaSurface {
public:
    using CanvasWindow::CanvasWindow;

    // MediaSurface
    void setMovie(Control* movie) override;
    void placeMovie(const Rectangle& area) override;
    void fillScreen(bool fill) override;
    std::optional<PixelSize> filled() const override;
    bool canBePlaced(bool /*preparing*/) const override { return true; }

protected:
    bool opensByItself() const override { return true; }
    LRESULT message(UINT message, WPARAM first, LPARAM second) override;

private:
    void tellMovie();  ///< where its video belongs

    MovieSurface* movie_ = nullptr;  ///< null: the form has none
    Rectangle wanted_;               ///< where the movie lies in the form
    HWND host_ = nullptr;            ///< told to the movie last
    RECT area_{};
    std::unique_ptr<FullScreenWindow> fullScreen_;
};

}  // namespace corvane
