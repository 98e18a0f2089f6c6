// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "engine/mdlPublicFunction.h"

/// Small steps that several playback procedures share.
namespace corvane::mdlPublicFunction {

/// Previous and next are "Prev" and "Next", or "Back" and "Step" while paused.
void nameStepButtons(MainPanelControls& panel, bool paused);
/// The player plays, and the panel says so; nothing is asked of a media control.
void showPlaying(Player& player, MainPanelControls& panel);
void setTime(MainPanelControls& panel, const std::string& text);
void setSlider(Player& player, MainPanelControls& panel, double position, double length);
/// File number "000" and title of the current entry, by its texts or its name.
void showEntry(Player& player, MainPanelControls& panel);
/// A picture stays up while the next file is opened, unless pictures are hidden between files.
bool keepsPicture(const Player& player);
/// Next and previous as they are while a file plays: another file is played, at the list's end next stops; a first
/// press of previous waits for a second one.
void nextWhilePlaying(Player& player, MainPanelControls& panel);
void previousWhilePlaying(Player& player, MainPanelControls& panel);
/// Lets go what is open (with keepImage a picture stays up); whether the player plays is left as it is.
void closeMedia(Player& player, MainPanelControls& panel, bool keepImage);
/// The box of a file that cannot be opened: its path, " Can't open!!", and the reason on a line of its own, if there is
/// one. Abort stops, Retry is previous, Ignore is next; these run as a new event, so that a list of such files never
/// nests. An answer is void when Player::turns has changed meanwhile.
void askAboutFile(Player& player, const std::string& path, const std::string& reason);
/// The entry that comes after this one is likely to be wanted soon.
void prepareNext(Player& player);
/// The same when the list, or what follows its last entry, has become another one while a file is open.
void prepareOtherNext(Player& player);
const std::string& currentPath(const Player& player);

}  // namespace corvane::mdlPublicFunction
