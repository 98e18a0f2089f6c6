// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>

#include "linux/windowing/canvas_window.h"
#include "linux/windowing/movie_surface.h"

namespace corvane {

class FullScreenWindow;

/// The surface of a form that shows a movie or a picture.
class MediaCanvas : public CanvasWindow, public MediaSurface {
public:
    explicit MediaCanvas(DesktopContext& context);
    ~MediaCanvas() override;

    MovieSurface* movie() const { return movie_; }  ///< null: the form has none
    /// The surface that fills the screen has another size.
    void filledSizeChanged();

    void setPlace(const PixelPlace& place) override;

    // MediaSurface
    void setMovie(Control* movie) override;
    void placeMovie(const Rectangle& area) override;
    void fillScreen(bool fill) override;
    std::optional<PixelSize> filled() const override;
    bool canBePlaced(bool preparing) const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QRect movieArea() const;  ///< the part of the movie that the window shows
    void showFrame();

    Control* control_ = nullptr;  ///< the movie
    MovieSurface* movie_ = nullptr;
    QRectF wanted_;  ///< where the movie lies in the form
    QSize target_;   ///< as it was told to the movie
    QTimer behind_;  ///< how long the picture is kept behind the window
    std::unique_ptr<FullScreenWindow> fullScreen_;
};

}  // namespace corvane
