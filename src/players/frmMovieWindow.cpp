// SPDX-License-Identifier: GPL-3.0-or-later
#include "players/frmMovieWindow.h"

#include <algorithm>
#include <cmath>

#include "engine/mdlPublicFunction.h"
#include "players/media_window.h"
#include "players/movie.h"

namespace corvane {

using mdlPublicFunction::changeWholeScreen;
using mdlPublicFunction::mediaFailed;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::SetWindowZOrder;
using mdlPublicFunction::showPopupMenu;

namespace {

constexpr Twips kBorders = 30;  // the control's one-pixel borders above and below the picture

}  // namespace

frmMovieWindow::frmMovieWindow(Player& player) : MovieWindowControls(player.ports.media), player_(player) {
    tieMediaWindow(player, *this);
    Load.tie([this] { Form_Load(); });
    Activate.tie([this] { Form_Activate(); });
    amvMovie->OpenComplete.tie([this] { amvMovie_OpenComplete(); });
    amvMovie->StateChange.tie([this](int before, int now) { amvMovie_StateChange(before, now); });
    amvMovie->Progress.tie([this] { amvMovie_Timer(); });
    amvMovie->Failed.tie([this](const std::string& reason) { mediaFailed(player_, reason); });
    amvMovie->DblClick.tie([this] { amvMovie_DblClick(); });
    amvMovie->MouseDown.tie([this](const MouseArgs& mouse) { amvMovie_MouseDown(mouse); });
    amvMovie->MouseUp.tie([this](const MouseArgs& mouse) { amvMovie_MouseUp(mouse); });
    tmrMovie.Tick.tie([this] { tmrMovie_Timer(); });
}

void frmMovieWindow::Form_Load() {
    if (player_.gWindowPos == mdlDefinePublic::kMediaOnTop && !isFullScreen()) {
        // Hidden until the movie starts: the order is set, nothing is shown yet.
        SetWindowZOrder(player_, *this, kTopMost, 0);
    }
}

void frmMovieWindow::Form_Activate() {
    if (Visible && !isFullScreen()) amvMovie->SetFocus();
}

void frmMovieWindow::amvMovie_OpenComplete() {
    if (amvMovie->FileName().empty()) return;
    opened = true;
    player_.gLength = static_cast<std::int32_t>(std::nearbyint(amvMovie->Duration()));
    sizeToMovie();
    Windows& windows = player_.ports.windows;
    Move((windows.screenWidth() - Width) / 2, (windows.screenHeight() - Height) / 2);
    tmrMovie.Interval = player_.gDelayTime;
    tmrMovie.Enabled = true;
}

void frmMovieWindow::sizeToMovie() {
    MovieControl& movie = *amvMovie;
    const bool shareOfScreen = player_.gMovieZoom >= 2 && player_.gMovieZoom <= 4;
    const float sourceWidth = static_cast<float>(movie.ImageSourceWidth());
    const float sourceHeight = static_cast<float>(movie.ImageSourceHeight());
    if (!shareOfScreen || sourceWidth <= 0 || sourceHeight <= 2) {
        SetSize(movie.Width, movie.Height - kBorders);
        return;
    }
    const float ratio =
        std::min(movie.Width / kTwipsPerPixel / sourceWidth, movie.Height / kTwipsPerPixel / sourceHeight);
    SetSize(sourceWidth * kTwipsPerPixel * ratio, (sourceHeight - 2) * kTwipsPerPixel * ratio);
    movie.Move((Width - movie.Width) / 2, (Height - movie.Height) / 2 + ratio * kTwipsPerPixel);
}

void frmMovieWindow::tmrMovie_Timer() {
    tmrMovie.Enabled = false;
    auto* panel = player_.forms.find<MainPanelControls>();
    if (panel == nullptr) return;
    if (!started) {                     // a position set meanwhile by the slider does not count as played
        if (panel->isPaused()) return;  // paused during the delay: it starts when it is resumed
        startMovie(player_, *this);
        panel->Enabled = true;
        return;
    }
    if (panel->isPaused()) {
        panel->cmdMainPanel[kPlay].Enabled = false;
        panel->cmdMainPanel[kPause].Enabled = true;
    }
    NextFile(player_);
}

void frmMovieWindow::amvMovie_StateChange(int before, int now) {
    if (now == kMovieStopped) {
        doubleClickedAt = -1;
        Hide();
        tmrMovie.Enabled = true;
        return;
    }
    if (doubleClickedAt < 0) return;
    // A double-click must not change the play state: a toggle between paused and running right after it is undone.
    const bool fresh =
        player_.ports.clock.milliseconds() - doubleClickedAt <= player_.ports.windows.doubleClickTimeMs();
    doubleClickedAt = -1;
    if (!fresh) return;
    if (before == kMoviePaused && now == kMovieRunning) amvMovie->Pause();
    if (before == kMovieRunning && now == kMoviePaused) amvMovie->Run();
}

void frmMovieWindow::amvMovie_Timer() { progressIn(player_, kId); }

void frmMovieWindow::amvMovie_DblClick() {
    doubleClickedAt = player_.ports.clock.milliseconds();
    if (player_.conveniences.hands) {
        changeWholeScreen(player_);
    } else if (!isFullScreen()) {
        WindowState = WindowState::Minimized;
    }
}

void frmMovieWindow::amvMovie_MouseDown(const MouseArgs& mouse) {
    if (mouse.button == kLeftButton) player_.ports.windows.beginDrag(*this);
}

void frmMovieWindow::amvMovie_MouseUp(const MouseArgs& mouse) {
    if (mouse.button == kRightButton) showPopupMenu(player_);
}

}  // namespace corvane
