// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/player.h"

namespace corvane {

/// Shows a still picture, runs the slide clock, pans a picture larger than the window.
class frmImageWindow : public ImageWindowControls {
public:
    explicit frmImageWindow(Player& player);

private:
    void Form_Load();
    void Form_Activate();
    void tmrImage_Timer();
    void pctImage_MouseDown(const MouseArgs& mouse);
    void pctImage_MouseMove(const MouseArgs& mouse);
    void pctImage_MouseUp(const MouseArgs& mouse);
    void pctImage_DblClick();
    void panTo(float x, float y);

    Player& player_;
    bool panning_ = false;
    float panX_ = 0;  ///< where the pan began, in the picture's own pixels
    float panY_ = 0;
};

}  // namespace corvane
