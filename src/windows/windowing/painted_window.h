// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "pictures/pixels.h"
#include "shell/painted_layout.h"
#include "windows/windowing/canvas_window.h"
#include "windows/windowing/dib.h"

namespace corvane {

/// The window of a form drawn from pictures. Pictures are composed at the skin's own resolution and scaled once, so
/// that no seams show; texts and the round shapes are drawn at the screen's resolution, behind the pictures that lie
/// above them. Only what has changed is painted.
class PaintedWindow : public CanvasWindow {
public:
    PaintedWindow(Form& form, DesktopContext& context);

protected:
    Rectangle hitRect(const Control& control) const override;
    std::string toolTip(const Control& control) const override;
    bool dragsAtOnce() const override { return true; }
    void pressedChanged(Control& control) override { repaintControl(control); }
    void controlChanged(Control& control, PropertyId property) override;
    void onBound() override;
    void paint(HDC screen, const RECT& dirty) override;

private:
    void repaintControl(const Control& control);
    PixelBuffer compose(const PixelPlace& cells) const;
    void drawPictures(Dib& target, const RECT& dirty) const;
    void drawShape(Dib& target, const RECT& dirty, const Shape& shape) const;
    void drawRing(Dib& target, const RECT& dirty) const;
    void drawText(Dib& target, const RECT& dirty, const Label& label) const;
    std::vector<RECT> coverAbove(const Control& control) const;  ///< opaque pictures over it, screen pixels

    std::map<const Control*, Rectangle> painted_;  ///< where each control was last drawn, twips
};

}  // namespace corvane
