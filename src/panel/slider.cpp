// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "panel/frmMainPanel.h"

namespace corvane {

using namespace mdlPublicFunction;
using namespace mdlDefinePublic;

namespace {

constexpr std::int16_t kNoDrag = 0;
constexpr std::int16_t kDragPlaying = 1;
constexpr std::int16_t kDragPaused = 2;

double share(const Player& player, std::int32_t x) { return static_cast<double>(x) / player.gSlideWidth; }

/// The same share of a length, multiplied first: a target that lies on a half is a half.
double shareOf(double length, const Player& player, std::int32_t x) { return length * x / player.gSlideWidth; }

}  // namespace

std::int32_t frmMainPanel::CalcPos(const Player& player, std::int32_t x, std::int32_t packedLength) {
    const auto target = static_cast<std::int32_t>(std::nearbyint(share(player, x) * packedSeconds(packedLength)));
    return target % 60 * 0x10000 + target / 60 * 0x100;
}

void frmMainPanel::pctSlide_MouseDown() {
    // Nothing to drag in: the file could not be opened, or the movie has ended and is about to hand over.
    if (player_.gMediaKind == mkNone || (movie() != nullptr && isHandingOver(*movie()))) return;
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
    switch (player_.gMediaKind) {
        case mkImage:
            seekImage(x);
            break;
        case mkMovie:
            seekMovie(x);
            break;
        case mkMciFile:
            seekMci(x);
            break;
        case mkCDTrack:
            seekCd(x);
            break;
        default:
            pctSlide.Width = static_cast<float>(x);
            break;
    }
}

void frmMainPanel::pctSlide_MouseUp(const MouseArgs& mouse) {
    if (player_.gSlideState == kDragPlaying) PlayFile(player_);
    player_.gSlideState = kNoDrag;
    if (mouse.button == kRightButton) showPopupMenu(player_);
}

void frmMainPanel::seekImage(std::int32_t x) {
    if (player_.gLength <= 0) return;  // it stays until the user moves on: there is nothing to seek in
    player_.gImageElapsed = static_cast<std::int16_t>(share(player_, x) * player_.gInterval);
    setTime(*this, MsecToText(player_.gImageElapsed * 1000));
    setSlider(player_, *this, player_.gImageElapsed, player_.gLength);
}

void frmMainPanel::seekMovie(std::int32_t x) {
    if (movie() == nullptr || isHandingOver(*movie()) || !(movie()->amvMovie->Duration() > 0)) return;
    MovieControl& control = *movie()->amvMovie;
    pctSlide.Width = static_cast<float>(x);
    control.CurrentPosition(shareOf(control.Duration(), player_, x));
    setTime(*this, numberText(control.CurrentPosition()));
}

void frmMainPanel::seekMci(std::int32_t x) {
    if (mci() == nullptr || mci()->Length() <= 0) return;
    pctSlide.Width = static_cast<float>(x);
    const auto target = static_cast<std::int32_t>(std::nearbyint(shareOf(mci()->Length(), player_, x)));
    mci()->To(target);
    mci()->Command("Seek");
    setTime(*this, MsecToText(target));
}

void frmMainPanel::seekCd(std::int32_t x) {
    if (mci() == nullptr) return;
    mci()->Track(player_.gCdTrack);
    const std::int32_t length = trackEnd(player_, *mci()) - player_.gCdTrack;
    if (packedSeconds(length) == 0) return;
    pctSlide.Width = static_cast<float>(x);
    const std::int32_t target = CalcPos(player_, x, length) + player_.gCdTrack;
    holdTrackAt(player_, *mci(), target);
    setTime(*this, TmsfToText(target));
}

}  // namespace corvane
