// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "windows/windowing/canvas_window.h"
#include "windows/windowing/movie_surface.h"
#include "windows/windowing/scaled_picture.h"

namespace corvane {

class FullScreenWindow;

/// The window of a form that shows a movie or a picture on black.
class MediaWindow : public CanvasWindow {
public:
    MediaWindow(Form& form, DesktopContext& context);
    ~MediaWindow() override;

    bool opensByItself() const override { return true; }
    void beginDrag() override;  ///< nothing while the movie fills the screen
    void takeScale() override;

protected:
    Rectangle hitRect(const Control& control) const override;
    void pressedChanged(Control& /*control*/) override {}
    void controlChanged(Control& control, PropertyId property) override;
    void onBound() override;
    void onUnbinding() override;
    void paint(HDC screen, const RECT& dirty) override;
    LRESULT message(UINT message, WPARAM first, LPARAM second) override;

private:
    RECT movieArea() const;  ///< the part of the movie control that the form shows, pixels
    bool isFullScreenShown() const;
    void takeFullScreen();
    void retarget();  ///< tells the surface where its video belongs

    Control* movie_ = nullptr;
    MovieSurface* surface_ = nullptr;  ///< the movie control's; null: none
    HWND host_ = nullptr;              ///< told to the surface last
    RECT area_{};
    ScaledPicture picture_;
    std::unique_ptr<FullScreenWindow> fullScreen_;
};

}  // namespace corvane
