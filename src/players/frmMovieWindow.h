// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "engine/hands.h"
#include "engine/player.h"

namespace corvane {

/// Shows a movie: sizes itself, waits the delay, starts, reports progress and hands over to the next file.
class frmMovieWindow : public MovieWindowControls {
public:
    explicit frmMovieWindow(Player& player);

private:
    void Form_Load();
    void Form_Activate();
    void amvMovie_OpenComplete();
    void amvMovie_StateChange(int before, int now);
    void amvMovie_Timer();
    void amvMovie_DblClick();
    void amvMovie_MouseDown(const MouseArgs& mouse);
    void amvMovie_MouseUp(const MouseArgs& mouse);
    void tmrMovie_Timer();
    void sizeToMovie();
    bool isFullScreen() const { return mdlPublicFunction::isWholeScreen(player_, player_.gMovieZoom); }

    Player& player_;
};

}  // namespace corvane
