// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRect>
#include <QSize>

#include "shell/windowing/screen_filling.h"

class QPainter;
class QWidget;

namespace corvane {

/// What a movie control of this desktop is besides its MovieControl: something that can be drawn. The control class
/// derives from both. All calls and events are on the user-interface thread.
class MovieSurface : public ScreenFilling {
public:
    /// Where the next frames go: the size of the shown area in device pixels. Called before the first paint and each
    /// time it changes (window sized, full screen entered or left).
    virtual void setTarget(QSize devicePixels) = 0;
    /// Draws the current frame into the area (in the painter's units), fitted and centred, keeping the picture's shape.
    /// The window has painted the area black before. Without a frame: nothing.
    virtual void paint(QPainter& painter, const QRect& area) = 0;
    /// A frame waits to be painted: at once, it costs least.
    virtual bool isDue() const { return false; }
    /// What paint() covers wholly of that area, on a device with so many pixels to a unit: the window needs not paint
    /// it.
    virtual QRect covered(const QRect& /*area*/, double /*ratio*/) const { return {}; }
    /// Shows the current frame over that part of the window, in the widget's units, where it is not painted by paint();
    /// each time when the window was painted.
    virtual void showIn(QWidget& /*window*/, const QRect& /*area*/) {}
    /// Shows it in no window any more. Before the window goes that it was shown in last.
    virtual void leave() {}

    Event<> frameReady;  ///< a new frame can be painted; may come in any number, the window joins them
};

}  // namespace corvane
