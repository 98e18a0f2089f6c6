// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/drawn_window.h"
#include "shell/windowing/screen_filling.h"

namespace corvane {

/// The window of a form that shows a movie or a picture on black.
class MediaWindow : public DrawnWindow {
public:
    /// media: a part of the surface.
    MediaWindow(Form& form, EventLoop& loop, const Screens& screens, std::unique_ptr<Surface> surface,
                MediaSurface& media);

    void beginDrag() override;  ///< nothing while the movie fills the screen
    void scaleChanged() override;
    /// The surface has another size, here or on the whole screen.
    void placeMovie();
    void paint(Brush& brush) const override;
    const Control* movie() const { return movie_; }  ///< null: the form has none, or has gone

protected:
    Rectangle hitRect(const Control& control) const override;
    bool dragsAtOnce() const override { return false; }
    void controlChanged(Control& control, PropertyId property) override;
    void takePlace() override;
    void onBound() override;
    void onUnbinding() override;

private:
    bool isPreparing() const;
    void takeFullScreen();
    ShownPicture shown(const PictureBox& box) const;

    MediaSurface& media_;
    Control* movie_ = nullptr;
    ScreenFilling* filling_ = nullptr;  ///< the movie; null: none
    bool placeWaits_ = false;           ///< for the next picture, or for the window to be restored
};

}  // namespace corvane
