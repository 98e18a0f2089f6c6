// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using namespace mdlPublicFunction;

namespace {

constexpr std::int16_t kNoDrag = 0;
constexpr std::int16_t kDragPlaying = 1;
constexpr std::int16_t kDragPaused = 2;

}  // namespace

void frmMainPanel::pctSlide_MouseDown() {
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

void frmMainPanel::pctSlide_MouseMove(const MouseArgs& mouse) {
    const double rounded = std::nearbyint(static_cast<double>(mouse.x));
    if (player_.gSlideState == kNoDrag || !(rounded > 0) || rounded >= player_.gSlideWidth) return;
    const auto x = static_cast<std::int32_t>(rounded);
    if (const auto medium = player_.media.current()) {
        medium->seekToSlide(x);
    } else {
        pctSlide.Width = static_cast<float>(x);
    }
}

void frmMainPanel::pctSlide_MouseUp(const MouseArgs& mouse) {
    if (player_.gSlideState == kDragPlaying) PlayFile(player_);
    player_.gSlideState = kNoDrag;
    if (mouse.button == kRightButton) showPopupMenu(player_);
}

}  // namespace corvane
