// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlPublicFunction::PlayFile;

void frmMainPanel::tmrPlayBack_Timer() {
    tmrPlayBack.Enabled = false;
    player_.gBackPending = false;
    cmdMainPanel[kPause].Enabled = true;
    PlayFile(player_);
}

void frmMainPanel::tmrPrevNext_Timer() {
    holdEngaged_ = true;
    if (hold_ == Hold::None) return;
    const bool back = hold_ == Hold::Previous || hold_ == Hold::PreviousShift;
    const bool shift = hold_ == Hold::PreviousShift || hold_ == Hold::NextShift;
    const auto medium = player_.media.current();
    if (!medium || medium->hold(back, shift)) return;
    tmrPrevNext.Enabled = false;
    holdEngaged_ = false;
}

}  // namespace corvane
