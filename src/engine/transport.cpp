// SPDX-License-Identifier: GPL-3.0-or-later
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

using namespace mdlDefinePublic;

namespace {

constexpr std::int32_t kStepMs = 1000;
constexpr std::int32_t kStepTmsf = 0x10000;  // one second in packed form

bool somethingIsOpen(const Player& player) {
    return player.gFileCount > 0 || player.gMediaKind != mkNone || player.gPlaying;
}

void moveForward(Player& player) {
    ++player.gFileIndex;
    if (player.gFileIndex >= player.gFileCount) player.gFileIndex = 0;
}

void moveBackward(Player& player) {
    if (player.gFileIndex > 0) {
        --player.gFileIndex;
    } else if (player.gRepeat) {
        player.gFileIndex = static_cast<std::int16_t>(player.gFileCount - 1);
    }
}

void forgetBackPress(Player& player, MainPanelControls& panel) {
    player.gBackPending = false;
    panel.tmrPlayBack.Enabled = false;
}

void closeAndPlay(Player& player) {
    CloseFile(player, keepsPicture(player));
    PlayFile(player);
}

void nextWhilePlaying(Player& player, MainPanelControls& panel) {
    if (canGoForward(player)) {
        moveForward(player);
        closeAndPlay(player);
        return;
    }
    player.gFileIndex = 0;
    showEntry(player, panel);
    CloseFile(player, false);
}

void previousWhilePlaying(Player& player, MainPanelControls& panel) {
    if (!player.gBackPending) {
        player.gBackPending = true;
        panel.tmrPlayBack.restart();
        return;
    }
    forgetBackPress(player, panel);
    moveBackward(player);
    showEntry(player, panel);  // also when its file is missing
    closeAndPlay(player);
}

/// The file just opened holds at its beginning, unless it could not be opened.
void holdOpened(Player& player) {
    if (player.gMediaKind != mkNone) PauseFile(player);
}

void stepMovie(Player& player, MainPanelControls& panel) {
    auto* window = player.forms.find<MovieWindowControls>();
    if (window == nullptr || isHandingOver(*window)) return;
    MovieControl& movie = *window->amvMovie;
    // At full-screen zoom the movie counts as showing, also while a held button has it out of full screen.
    const bool shows = window->isShowing() || player.gMovieZoom == kFullScreenZoom;
    const double position = std::nearbyint(movie.CurrentPosition());
    if (shows && position < movie.Duration()) {
        movie.CurrentPosition(position + 1);
        setTime(panel, numberText(position + 1));
    }
    setSlider(player, panel, movie.CurrentPosition(), player.gLength);
}

void backMovie(Player& player, MainPanelControls& panel) {
    auto* window = player.forms.find<MovieWindowControls>();
    if (window == nullptr || isHandingOver(*window)) return;
    MovieControl& movie = *window->amvMovie;
    const double position = std::nearbyint(movie.CurrentPosition());
    if (position > 0) {
        movie.CurrentPosition(position - 1);
        setTime(panel, numberText(position - 1));
    }
    setSlider(player, panel, movie.CurrentPosition(), player.gLength);
}

void stepMciTo(Player& player, MainPanelControls& panel, MciControl& mci, std::int32_t position) {
    mci.To(position);
    mci.Command("Seek");
    setSlider(player, panel, position, player.gLength);
}

void stepCdTo(Player& player, MainPanelControls& panel, MciControl& mci, std::int32_t position) {
    holdTrackAt(player, mci, position);
    setTime(panel, TmsfToText(position));
    setSlider(player, panel, packedSeconds(position), packedSeconds(player.gLength));
}

void stepCd(Player& player, MainPanelControls& panel, MciControl& mci) {
    mci.Track(player.gCdTrack);
    const std::int32_t position = mci.Position() + kStepTmsf;
    if (TmsfToText(position) < TmsfToText(trackEnd(player, mci))) stepCdTo(player, panel, mci, position);
}

void backCd(Player& player, MainPanelControls& panel, MciControl& mci) {
    mci.Track(player.gCdTrack);
    const std::int32_t position = tmsfSecondBack(mci.Position());
    if (TmsfToText(position) > "00:00") stepCdTo(player, panel, mci, position);
}

void stepWhilePaused(Player& player, MainPanelControls& panel) {
    auto* const window = player.forms.find<MciWindowControls>();
    switch (player.gMediaKind) {
        case mkImage:
            panel.cmdMainPanel[kPause].Enabled = true;
            nextWhilePlaying(player, panel);
            break;
        case mkMovie:
            stepMovie(player, panel);
            break;
        case mkMciFile: {
            if (window == nullptr) break;
            const std::int32_t position = window->mmcMci->Position() + kStepMs;
            if (position < window->mmcMci->Length()) {
                stepMciTo(player, panel, *window->mmcMci, position);
                setTime(panel, MsecToText(position));
            }
            break;
        }
        case mkCDTrack:
            if (window != nullptr) stepCd(player, panel, *window->mmcMci);
            break;
        default:
            break;
    }
}

void backWhilePaused(Player& player, MainPanelControls& panel) {
    player.gBackPending = player.gBackPending && player.gMediaKind == mkImage;
    auto* const window = player.forms.find<MciWindowControls>();
    switch (player.gMediaKind) {
        case mkImage:
            panel.cmdMainPanel[kPause].Enabled = true;
            previousWhilePlaying(player, panel);
            break;
        case mkMovie:
            backMovie(player, panel);
            break;
        case mkMciFile: {
            if (window == nullptr) break;
            const std::int32_t position = window->mmcMci->Position() - kStepMs;
            if (position > 0) {
                stepMciTo(player, panel, *window->mmcMci, position);
                setTime(panel, TmsfToText(position));  // the packed reading of milliseconds, on purpose
            }
            break;
        }
        case mkCDTrack:
            if (window != nullptr) backCd(player, panel, *window->mmcMci);
            break;
        default:
            break;
    }
}

void closeByKind(Player& player, bool keepImage) {
    switch (player.gMediaKind) {
        case mkImage:
            if (auto* image = player.forms.find<ImageWindowControls>(); image != nullptr && keepImage) {
                image->tmrImage.Enabled = false;
                player.gImageElapsed = 0;
            }
            break;
        case mkMovie:
            if (auto* movie = player.forms.find<MovieWindowControls>()) movie->amvMovie->Stop();
            player.forms.unload<MovieWindowControls>();
            break;
        case mkMciFile:
        case mkCDTrack:
            if (auto* mci = player.forms.find<MciWindowControls>()) {
                mci->mmcMci->Command("Stop");
                mci->mmcMci->Command("Close");
            }
            player.forms.unload<MciWindowControls>();
            break;
        default:
            break;
    }
}

}  // namespace

bool keepsPicture(const Player& player) { return player.gMediaKind < mkMovie && !player.gImageHide; }

bool canGoForward(const Player& player) { return player.gFileIndex < player.gFileCount - 1 || player.gRepeat; }

void PauseFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr || !somethingIsOpen(player) || !player.gPlaying) return;
    ++player.turns;
    if (player.gMediaKind == mkNone) {  // the file could not be opened: there is nothing to hold
        CloseFile(player, true);
        return;
    }
    player.gPlaying = false;
    forgetBackPress(player, *panel);
    panel->cmdMainPanel[kPlay].Enabled = true;
    panel->cmdMainPanel[kPause].Enabled = false;
    switch (player.gMediaKind) {
        case mkImage:
            if (auto* image = player.forms.find<ImageWindowControls>()) image->tmrImage.Enabled = false;
            break;
        case mkMovie:
            nameStepButtons(*panel, true);
            if (auto* movie = player.forms.find<MovieWindowControls>()) {
                movie->doubleClickedAt = -1;
                movie->amvMovie->Pause();
                setTime(*panel, numberText(movie->amvMovie->CurrentPosition()));
            }
            break;
        case mkMciFile:
        case mkCDTrack:
            nameStepButtons(*panel, true);
            if (auto* mci = player.forms.find<MciWindowControls>()) mci->mmcMci->Command("Pause");
            break;
        default:
            break;
    }
}

void NextFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    if (player.gFileCount == 0) {
        CloseFile(player, false);
    } else if (panel->isStopped()) {
        if (canGoForward(player)) {
            moveForward(player);
            showEntry(player, *panel);
        } else {
            CloseFile(player, false);
        }
    } else if (panel->isPaused()) {
        stepWhilePaused(player, *panel);
    } else {
        nextWhilePlaying(player, *panel);
    }
}

void PrevFile(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    if (player.gFileCount == 0) {
        player.gBackPending = false;
    } else if (panel->isStopped()) {
        player.gBackPending = false;
        moveBackward(player);
        showEntry(player, *panel);
    } else if (panel->isPaused()) {
        backWhilePaused(player, *panel);
    } else {
        previousWhilePlaying(player, *panel);
    }
}

void skipToNext(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    if (player.gFileCount == 0 || !panel->isPaused()) {
        NextFile(player);
        return;
    }
    nextWhilePlaying(player, *panel);
    holdOpened(player);
}

void skipToPrevious(Player& player) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    if (player.gFileCount == 0 || panel->isStopped()) {
        PrevFile(player);
        return;
    }
    const bool paused = panel->isPaused();
    moveBackward(player);
    closeAndPlay(player);
    if (paused) holdOpened(player);
}

void CloseFile(Player& player, bool keepImage) {
    auto* panel = player.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    ++player.turns;
    const bool keptPicture = player.forms.find<ImageWindowControls>() != nullptr;
    if (!somethingIsOpen(player) && !keptPicture) return;
    closeMedia(player, *panel, keepImage);
    player.gPlaying = false;
    panel->cmdMainPanel[kPlay].Enabled = true;
    panel->cmdMainPanel[kPause].Enabled = true;
    panel->cmdMainPanel[kEditor].Enabled = true;
    nameStepButtons(*panel, false);
}

void closeMedia(Player& player, MainPanelControls& panel, bool keepImage) {
    forgetBackPress(player, panel);
    player.gSlideState = 0;
    forgetAwaitedPicture(player);
    if (!keepImage) player.forms.unload<ImageWindowControls>();
    closeByKind(player, keepImage);
    player.gMediaKind = mkNone;
    panel.pctSlide.Width = kTwipsPerPixel;
    setTime(panel, "");
    panel.lblMainPanel[kTimeLabel].ToolTipText = "";
}

}  // namespace corvane::mdlPublicFunction
