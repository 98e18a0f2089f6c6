// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "forms/picture.h"
#include "forms/rectangle.h"
#include "platform/event_loop.h"
#include "shell/painted_layout.h"
#include "shell/windowing/screens.h"

namespace corvane {

class DrawnWindow;
class WindowFrame;

/// A picture of a media window, stretched.
struct ShownPicture {
    Picture picture;
    Rectangle whole;  ///< where all of it would lie, pixels of the surface
    Rectangle seen;   ///< what may be drawn of it
};

/// Draws on the part of a surface that must be painted anew; lives for one painting. Places are pixels of the surface.
class Brush {
public:
    /// The pictures of a painted form, composed at the skin's own resolution and scaled once.
    virtual void skin(const Picture& background, const std::vector<CompositionStep>& steps) = 0;
    /// A disc that fills the place; not drawn inside of `covered`.
    virtual void disc(const Rectangle& place, Colour colour, const std::vector<Rectangle>& covered) = 0;
    /// One line in the middle of the place, cut with an ellipsis; not drawn inside of `covered`.
    virtual void text(const std::string& text, const Rectangle& place, Colour colour,
                      const std::vector<Rectangle>& covered) = 0;
    /// Pictures on black, the last one topmost.
    virtual void pictures(const std::vector<ShownPicture>& pictures) = 0;

protected:
    ~Brush() = default;
};

/// What a desktop gives a window whose controls are drawn: a bare rectangle on the screen, without border and title
/// bar, made hidden. It does what it is told and tells its window (live()) what the system tells it; it decides
/// nothing. Places on the screen and in the surface are pixels as the desktop's tool kit counts them. All calls are
/// made on the user-interface thread; none of them ends in an event of the form.
class Surface {
public:
    Surface() = default;
    Surface(const Surface&) = delete;
    Surface& operator=(const Surface&) = delete;
    virtual ~Surface() = default;

    /// Whom to tell of input, paint requests and changes from now on; null: nobody. The window outlives its service.
    void serve(DrawnWindow* window) { window_ = window; }
    /// The window, while its form is attached; else null: what comes then means nothing any more.
    DrawnWindow* live() const;

    virtual WindowFrame& frame() = 0;
    virtual void setCaption(const std::string& text) = 0;  ///< for task bars
    virtual void setUsable(bool usable) = 0;               ///< takes mouse and keys
    /// Shows it, with the keyboard focus unless the user is in another program.
    virtual void showUp() = 0;
    virtual void showMinimised() = 0;
    virtual void restore() = 0;  ///< from minimised, as showUp()
    virtual bool isMinimised() const = 0;
    /// The mouse could press something here: it is usable, and no box and no menu is up.
    virtual bool takesInput() const = 0;
    virtual bool isAltDown() const = 0;
    virtual void takeKeyboard() = 0;  ///< the keyboard focus inside the program

    virtual PixelPlace place() const = 0;                ///< on the screen
    virtual void setPlace(const PixelPlace& place) = 0;  ///< in one step: nothing between is seen
    virtual void moveTo(PixelPoint corner) = 0;
    /// The form wants another place: DrawnWindow::settlePlace() is to be called at once, or soon and before anything
    /// else is seen of the window.
    virtual void placeWanted() = 0;

    /// A way of the pointer since its press, pixels: long enough for a drag.
    virtual bool isDrag(int across, int down) const = 0;
    /// True: from here on the window system moves the window, and no release will be told.
    virtual bool dragBySystem() { return false; }
    virtual void letMouseGo() {}  ///< the pointer is another window's again

    virtual void paintAnew(const PixelPlace& part) = 0;
    virtual void paintAllAnew() = 0;
    /// The mark around the control with the keyboard focus lies around that place; empty: there is none.
    virtual void showRing(const Rectangle& place) = 0;
    /// Of a label that is so high: how wide its text is, and whether it can be seen whole in that width.
    virtual double labelWidth(const std::string& text, double height) const = 0;
    virtual bool labelFits(const std::string& text, double height, double width) const {
        return labelWidth(text, height) <= width;
    }
    virtual bool isOpaque(const Picture& picture) const;

    // For assistive programs, while there are any.
    virtual void controlChanged(Control& /*control*/, PropertyId /*property*/) {}
    virtual void focusChanged() {}  ///< the ring has moved
    virtual void formGoes() {}      ///< no control is touched any more
    /// Runs the handler as an event of its own, also while posted events wait; not when the surface has gone.
    virtual void later(EventLoop::Handler handler) = 0;

private:
    DrawnWindow* window_ = nullptr;
};

/// What a surface does besides for movies and pictures.
class MediaSurface {
public:
    /// The form's movie control; null: it has none, or it goes.
    virtual void setMovie(Control* movie) = 0;
    /// Where in the form the movie lies now, pixels of the surface. It is shown there, or on the whole screen.
    virtual void placeMovie(const Rectangle& area) = 0;
    /// Opens or closes the surface that fills the screen. What is typed and pressed there is the window's.
    virtual void fillScreen(bool fill) = 0;
    virtual std::optional<PixelSize> filled() const = 0;  ///< that surface's size while it is open
    /// The window can take another place now. preparing: its next picture is not there yet.
    virtual bool canBePlaced(bool preparing) const = 0;

protected:
    ~MediaSurface() = default;
};

}  // namespace corvane
