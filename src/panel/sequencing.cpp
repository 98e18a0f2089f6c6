// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/hold_times.h"
#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlPublicFunction::PlayFile;
using mdlPublicFunction::SetVolume;

void frmMainPanel::tmrPlayBack_Timer() {
    tmrPlayBack.Enabled = false;
    player_.gBackPending = false;
    cmdMainPanel[kPause].Enabled = true;
    PlayFile(player_);
}

void frmMainPanel::tmrPrevNext_Timer() {
    holdEngaged_ = true;
    if (hold_ == Hold::None) return;
    if (hold_ == Hold::Louder || hold_ == Hold::Softer) {
        tmrPrevNext.Interval = kVolumeRepeatMs;
        SetVolume(player_, hold_ == Hold::Louder ? 0 : 1);
        return;
    }
    const bool back = hold_ == Hold::Previous || hold_ == Hold::PreviousShift;
    const bool shift = hold_ == Hold::PreviousShift || hold_ == Hold::NextShift;
    const auto medium = player_.media.current();
    if (!medium || medium->hold(back, shift)) return;
    tmrPrevNext.Enabled = false;
    holdEngaged_ = false;
}

}  // namespace corvane
