// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "engine/mdlPublicFunction.h"

/// Small steps that several playback procedures share.
namespace corvane::mdlPublicFunction {

/// Previous and next are "Prev" and "Next", or "Back" and "Step" while paused.
void nameStepButtons(MainPanelControls& panel, bool paused);
void setTime(MainPanelControls& panel, const std::string& text);
void setSlider(Player& player, MainPanelControls& panel, double position, double length);
/// File number "000" and title of the current entry.
void showEntry(Player& player, MainPanelControls& panel);
/// The movie starts after its delay, or when it is resumed: at the custom start position when that is in force.
void startMovie(Player& player, MovieWindowControls& movie);
/// The end of the current CD track in packed form.
std::int32_t trackEnd(const Player& player, MciControl& mci);
/// Plays from a position of the current CD track and holds there at once.
void holdTrackAt(Player& player, MciControl& mci, std::int32_t position);
const std::string& currentPath(const Player& player);

}  // namespace corvane::mdlPublicFunction
