// SPDX-License-Identifier: GPL-3.0-or-later
// Today's ways of the mouse and the keys over the panel.
#include "engine/hands.h"

#include <algorithm>
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/media_time.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlPublicFunction::clockText;
using mdlPublicFunction::findKey;
using mdlPublicFunction::fixedKeyDown;
using mdlPublicFunction::openLengthUs;
using mdlPublicFunction::seekBySteps;
using mdlPublicFunction::turnVolume;

void frmMainPanel::tieHands() {
    MouseWheel.tie([this](const WheelArgs& wheel) {
        if (player_.conveniences.hands) turnVolume(player_, wheel.notches);
    });
    pctSlide.MouseWheel.tie([this](const WheelArgs& wheel) {
        if (player_.conveniences.hands) seekBySteps(player_, wheel.notches);
    });
    pctSlide.TipAt = [this](float x) { return slideTip(x); };
}

/// The time that a press there would go to; empty while there is none.
std::string frmMainPanel::slideTip(float x) const {
    const std::int64_t length = openLengthUs(player_);
    if (!player_.conveniences.hands || isStopped() || length <= 0 || player_.gSlideWidth <= 0) return {};
    const double share = std::clamp(static_cast<double>(x) / player_.gSlideWidth, 0.0, 1.0);
    return clockText(std::llround(static_cast<double>(length) * share));
}

void frmMainPanel::Form_KeyDown(const KeyArgs& key) {
    if (findKey(player_, key)) return;
    if (key.keyCode == kKeyEscape && key.shift == 0 && player_.reading.isReading()) return player_.reading.stop();
    fixedKeyDown(player_, key);
}

}  // namespace corvane
