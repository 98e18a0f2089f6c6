// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/panel_texts.h"

namespace corvane::mdlPublicFunction {

void nameStepButtons(MainPanelControls& panel, bool paused) {
    panel.cmdMainPanel[kPrev].ToolTipText = paused ? "Back" : "Prev";
    panel.cmdMainPanel[kNext].ToolTipText = paused ? "Step" : "Next";
}

void showPlaying(Player& player, MainPanelControls& panel) {
    player.gPlaying = true;
    panel.cmdMainPanel[kPlay].Enabled = false;
    panel.cmdMainPanel[kPause].Enabled = true;
    panel.cmdMainPanel[kEditor].Enabled = false;
    nameStepButtons(panel, false);
}

void setTime(MainPanelControls& panel, const std::string& text) { panel.lblMainPanel[kTimeLabel].Caption = text; }

void setSlider(Player& player, MainPanelControls& panel, double position, double length) {
    panel.pctSlide.Width = sliderWidth(player, position, length);
}

void showEntry(Player& player, MainPanelControls& panel) {
    panel.lblMainPanel[kNumberLabel].Caption = zeroPadded(player.gFileIndex + 1, 3);
    panel.lblMainPanel[kTitleLabel].Caption = player.gFileTitle[static_cast<std::size_t>(player.gFileIndex)];
}

void startMovie(Player& player, MovieWindowControls& movie) {
    movie.started = true;
    const std::int32_t start = player.gStartPosition[static_cast<std::size_t>(player.gFileIndex)];
    if (start != 0 && player.gCustomMode != mdlDefinePublic::kCustomOff) movie.amvMovie->CurrentPosition(start);
    if (player.gMovieZoom != mdlDefinePublic::kFullScreenZoom) movie.Show();
    movie.amvMovie->Run();
}

bool isHandingOver(const MovieWindowControls& movie) {
    return movie.started && (movie.tmrMovie.Enabled || movie.amvMovie->State() == kMovieStopped);
}

std::int32_t trackEnd(const Player& player, MciControl& mci) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(mci.TrackLength()) << 8U) + player.gCdTrack;
}

void holdTrackAt(Player& player, MciControl& mci, std::int32_t position) {
    mci.From(position);
    mci.To(trackEnd(player, mci));
    mci.Command("Play");
    mci.Command("Pause");
}

const std::string& currentPath(const Player& player) {
    return player.gFilePath[static_cast<std::size_t>(player.gFileIndex)];
}

}  // namespace corvane::mdlPublicFunction
