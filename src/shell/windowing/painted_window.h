// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>

#include "shell/windowing/drawn_window.h"

namespace corvane {

/// The window of a form drawn from pictures: texts and the round shapes lie on its skin, behind the pictures that lie
/// above them. Only what has changed is painted.
class PaintedWindow : public DrawnWindow {
public:
    using DrawnWindow::DrawnWindow;

    void paint(Brush& brush) const override;

protected:
    Rectangle hitRect(const Control& control) const override;
    std::string toolTip(const Control& control) const override;
    bool dragsAtOnce() const override { return true; }
    void pressedChanged(Control& control) override { repaint(control); }
    void controlChanged(Control& control, PropertyId property) override;
    void onBound() override;

private:
    void repaint(const Control& control);
    /// Where in its place a label's text is drawn: a number of more digits than skins have room for is drawn smaller
    /// rather than cut.
    Rectangle textPlace(const Label& label, const Rectangle& place) const;
    std::vector<Rectangle> coverAbove(const Control& control) const;  ///< opaque pictures over it

    std::map<const Control*, Rectangle> painted_;  ///< where each control was last drawn, twips
};

}  // namespace corvane
