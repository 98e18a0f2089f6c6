// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QSize>
#include <functional>

#include "media/movies/movie_frames.h"
#include "shell/media/frame_place.h"

class QWidget;

namespace corvane {

/// The frames of one player and the way on which they are seen in windows of the tool kit: painted by us, or shown by
/// the graphics driver.
class SeenFrames : public MovieFrames {
public:
    /// The size of the area to be painted, device pixels.
    virtual void setTarget(QSize /*devicePixels*/) {}
    /// A frame has come that nobody painted yet: painted now, it is drawn where it is seen.
    virtual bool isDue() const { return false; }
    /// What paint() covers wholly of that area, on a device with so many pixels to a unit.
    virtual QRect covered(const QRect& /*area*/, double /*ratio*/) const { return {}; }
    /// Draws the frame fitted into the area; nothing without one, or where it is shown.
    virtual void paint(QPainter& painter, const QRect& area) = 0;
    /// The picture that is seen, in its own size; null without one, or where it is shown.
    virtual QImage whole() { return {}; }

    /// Draws on what is shown; the painter's units are those of the area.
    using Above = std::function<void(QPainter& painter)>;
    /// Shows the frame fitted into that part of the window. above: stands on it; null nothing.
    virtual void showIn(QWidget& /*window*/, const QRect& /*area*/, const Above& /*above*/) {}
    /// Shows it nowhere any more: before that window goes.
    virtual void leave() {}

protected:
    static PixelRect pixelsOf(const QRect& place) { return {place.x(), place.y(), place.width(), place.height()}; }
    static QRect rectOf(const PixelRect& place) { return {place.left, place.top, place.width, place.height}; }
};

}  // namespace corvane
