// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "panel/frmMainPanel.h"
#include "unit/panel/panel_hands.h"

namespace corvane {

/// The slider, 3000 twips wide, under the hand.
class Slider : public PanelHands {
protected:
    void down(const MouseArgs& mouse = kLeft) {
        press(panel().pctSlide, mouse);
        machine.settle();
    }
    void moveTo(float x) {
        act([&] { panel().pctSlide.MouseMove.raise({0, 0, x, 3}); });
    }
    void up(const MouseArgs& mouse = kLeft) {
        release(panel().pctSlide, mouse);
        machine.settle();
    }
};

}  // namespace corvane
