// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QRegion>
#include <map>

#include "linux/windowing/canvas_window.h"

namespace corvane {

/// The window of a form drawn from pictures. Pictures are composed at the skin's own resolution, or at the one of its
/// pictures for dense screens, and scaled once, so that no seams show; texts and the round shapes are drawn at the
/// screen's resolution, behind the pictures that lie above them. Only what has changed is painted.
class PaintedWindow : public CanvasWindow {
public:
    PaintedWindow(Form& form, DesktopContext& context);

protected:
    Rectangle hitRect(const Control& control) const override;
    QString toolTip(const Control& control) const override;
    void pressedChanged(Control& control) override;
    void controlChanged(Control& control, PropertyId property) override;
    void onBound() override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF paintRect(const Control& control) const;  ///< where a control draws, logical pixels; empty: nowhere
    QImage pictureOf(const Control& control) const;
    void repaintControl(const Control& control);

    /// Pictures and boxes inside that part of the skin, `density` pixels for one of the skin.
    QImage compose(const QRect& cells, int density) const;
    int density() const;  ///< what to compose with on this screen: 1, or kDenseFactor when a picture has the pixels
    void drawPictures(QPainter& painter, const QRect& dirty) const;
    void drawText(QPainter& painter, const Label& label) const;
    QRegion coverAbove(const Control& control) const;  ///< opaque pictures over it, logical pixels

    std::map<const Control*, QRectF> painted_;  ///< where each control was last drawn
};

}  // namespace corvane
