// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "panel/frmMainPanel.h"
#include "panel/hold_times.h"

namespace corvane {

using namespace mdlPublicFunction;
using namespace mdlDefinePublic;

namespace {

constexpr std::int32_t kSecondMs = 1000;
constexpr std::int32_t kSecondTmsf = 0x10000;

}  // namespace

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
    switch (player_.gMediaKind) {
        case mkImage:
            tmrPrevNext.Enabled = false;
            holdEngaged_ = false;
            break;
        case mkMovie:
            holdMovie(back, shift);
            break;
        case mkMciFile:
            holdMci(back);
            break;
        case mkCDTrack:
            holdCd(back);
            break;
        default:
            break;
    }
}

void frmMainPanel::holdMovie(bool back, bool shift) {
    if (movie() == nullptr || !movie()->started) return;  // nothing to seek before the delay is over
    if (isHandingOver(*movie())) return;
    MovieControl& control = *movie()->amvMovie;
    if (!back && !shift) {
        tmrPrevNext.Enabled = false;
        control.Rate(2.0);
        if (cmdMainPanel[kPause].Enabled) control.Run();
        return;
    }
    if (shift) {
        PauseFile(player_);
    } else {
        control.Pause();
        tmrPrevNext.Interval = kFastStepMs;
    }
    const double seconds = std::nearbyint(control.CurrentPosition());
    if (back && seconds > 0) {
        control.CurrentPosition(seconds - 1);
        setTime(*this, numberText(seconds - 1));
    } else if (!back && seconds < control.Duration()) {
        control.CurrentPosition(seconds + 1);
        setTime(*this, numberText(seconds + 1));
    }
    setSlider(player_, *this, control.CurrentPosition(), player_.gLength);
}

void frmMainPanel::holdMci(bool back) {
    if (mci() == nullptr) return;
    tmrPrevNext.Interval = kFastStepMs;
    const std::int32_t position = mci()->Position() + (back ? -kSecondMs : kSecondMs);
    if (back ? position <= 0 : position >= mci()->Length()) return;
    mci()->To(position);
    mci()->Command("Seek");
    setTime(*this, MsecToText(position));
    setSlider(player_, *this, position, player_.gLength);
}

void frmMainPanel::holdCd(bool back) {
    if (mci() == nullptr) return;
    tmrPrevNext.Interval = kFastStepMs;
    mci()->Track(player_.gCdTrack);
    const std::int32_t now = mci()->Position();
    const std::int32_t position = back ? tmsfSecondBack(now) : now + kSecondTmsf;
    const bool allowed =
        back ? TmsfToText(now) > "00:00" : TmsfToText(position) < TmsfToText(trackEnd(player_, *mci()));
    if (!allowed) return;
    holdTrackAt(player_, *mci(), position);
    setTime(*this, TmsfToText(position));
    setSlider(player_, *this, packedSeconds(position), packedSeconds(player_.gLength));
}

}  // namespace corvane
