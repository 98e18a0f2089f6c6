// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>

#include "linux/windowing/canvas_window.h"
#include "linux/windowing/movie_surface.h"
#include "linux/windowing/scaled_picture.h"

namespace corvane {

class FullScreenWindow;

/// The window of a form that shows a movie or a picture on black.
class MediaWindow : public CanvasWindow {
public:
    MediaWindow(Form& form, DesktopContext& context);
    ~MediaWindow() override;

    void beginDrag() override;  ///< nothing while the movie fills the screen

protected:
    Rectangle hitRect(const Control& control) const override;
    void controlChanged(Control& control, PropertyId property) override;
    void takeGeometry() override;
    void onBound() override;
    void onUnbinding() override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend class FullScreenWindow;
    QRectF place(const Control& control) const;     ///< logical pixels
    QRectF stretched(const PictureBox& box) const;  ///< its whole picture, logical pixels
    QRect movieArea() const;                        ///< the part of the movie control that the form shows
    bool isFullScreenShown() const;
    void takeFullScreen();
    void showFrame();
    bool isPreparing() const;
    void paintPictures(QPainter& painter, const QRegion& region);
    void retarget();  ///< tells the surface the size of what it draws into

    Control* movie_ = nullptr;
    MovieSurface* surface_ = nullptr;  ///< the movie control's; null: none
    QSize target_;
    ScaledPicture picture_;
    bool geometryWaits_ = false;  ///< for the next picture, which is being prepared, or for the window to be restored
    QTimer behind_;               ///< how long the picture is kept behind the window
    std::unique_ptr<FullScreenWindow> fullScreen_;
};

}  // namespace corvane
