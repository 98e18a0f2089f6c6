// SPDX-License-Identifier: GPL-3.0-or-later
#include <utility>

#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"
#include "types/numbers.h"

namespace corvane {

void frmMainPanel::tmrDisplay_Timer() {
    blinkTime();
    if (player_.gPlaying) {
        // The indicator runs through the pictures of images 2, 3 and 1.
        static constexpr std::array<std::size_t, 3> kPictures = {2, 3, 1};
        if (indicatorPhase_ < 0 || indicatorPhase_ > 2) return;
        imgMainPanel[kIndicatorImage].Picture =
            imgMainPanel[kPictures[static_cast<std::size_t>(indicatorPhase_)]].Picture;
        indicatorPhase_ = static_cast<std::int16_t>((indicatorPhase_ + 1) % 3);
    } else if (cmdMainPanel[kPause].Enabled) {
        showClock();
    }
}

/// A disc that has to start turning is waited for: the time blinks until it plays.
void frmMainPanel::blinkTime() {
    Label& time = lblMainPanel[kTimeLabel];
    const auto medium = player_.media.current();
    if (player_.gPlaying && medium && medium->isWaitedFor()) {
        timeBlinks_ = timeBlinks_ || time.Visible;
        if (timeBlinks_) time.Visible = !time.Visible;
    } else if (std::exchange(timeBlinks_, false)) {
        time.Visible = true;
    }
}

/// The clock counts 0 to 11 in both halves of the day.
void frmMainPanel::showClock() {
    if (player_.reading.isTold()) return;  // that stands there
    const LocalTime now = player_.ports.clock.localTime();
    const bool afternoon = now.hour > 11;
    lblMainPanel[kTextLabel].Caption = zeroPadded(now.year % 100, 2) + "/" + zeroPadded(now.month, 2) + "/" +
                                       zeroPadded(now.day, 2) + (afternoon ? " PM " : " AM ") +
                                       zeroPadded(afternoon ? now.hour - 12 : now.hour, 2) + ":" +
                                       zeroPadded(now.minute, 2);
}

}  // namespace corvane
