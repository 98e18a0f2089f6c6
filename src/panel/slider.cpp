// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using mdlPublicFunction::PauseFile;
using mdlPublicFunction::PlayFile;
using mdlPublicFunction::showPopupMenu;

using mdlDefinePublic::kDragPaused;
using mdlDefinePublic::kDragPlaying;
using mdlDefinePublic::kNoDrag;

/// What plays is held.
void frmMainPanel::beginSlide() {
    // Nothing to drag in: the file could not be opened, or the movie has ended and is about to hand over.
    const auto medium = player_.media.current();
    if (!medium || medium->isHandingOver()) return;
    if (player_.gPlaying) {
        PauseFile(player_);
        player_.gSlideState = kDragPlaying;
    } else if (isPaused()) {
        player_.gSlideState = kDragPaused;
    }
}

/// To a place in twips from the slider's left end.
void frmMainPanel::slide(double place) {
    const double rounded = std::nearbyint(place);
    if (player_.gSlideState == kNoDrag || !(rounded > 0) || rounded >= player_.gSlideWidth) return;
    const auto x = static_cast<std::int32_t>(rounded);
    if (const auto medium = player_.media.current()) {
        medium->seekToSlide(x);
    } else {
        pctSlide.Width = static_cast<float>(x);
    }
}

/// What was held goes on.
void frmMainPanel::endSlide() {
    if (player_.gSlideState == kDragPlaying) PlayFile(player_);
    player_.gSlideState = kNoDrag;
}

void frmMainPanel::pctSlide_MouseDown(const MouseArgs& mouse) {
    beginSlide();
    if (!player_.conveniences.hands || mouse.button != kLeftButton) return;
    // A press at an end means that end, as near to it as the slider goes.
    const double last = player_.gSlideWidth - 1.0;
    if (last >= 1.0) slide(std::clamp(static_cast<double>(mouse.x), 1.0, last));
}

void frmMainPanel::pctSlide_MouseMove(const MouseArgs& mouse) { slide(static_cast<double>(mouse.x)); }

void frmMainPanel::pctSlide_MouseUp(const MouseArgs& mouse) {
    endSlide();
    if (mouse.button == kRightButton) showPopupMenu(player_);
}

}  // namespace corvane
