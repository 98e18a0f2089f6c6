// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

#include "engine/player.h"

/// Today's ways of the mouse and the keys, for those who have asked Conveniences::hands (findKey asks itself).
namespace corvane::mdlPublicFunction {

/// So many times five seconds forth (below 0: back) in the open file, held at its ends; it goes on as it was. Nothing
/// while nothing is open or its length is not known.
void seekBySteps(Player& player, int steps);
/// The same in a window: a picture has no time to go through, so that the next or the previous file comes instead, as
/// far as there is one.
void stepInWindow(Player& player, int steps);
/// So many steps louder (below 0: softer).
void turnVolume(Player& player, int steps);
/// Escape leaves the whole screen, F11 changes it. False: it is another key.
bool screenKey(Player& player, const KeyArgs& key);
/// With FIND, Ctrl+F and Ctrl+J bring up the window that finds an entry. False: it is another key.
bool findKey(Player& player, const KeyArgs& key);
/// What movies carry: Ctrl+T the next subtitles, Ctrl+A the next sound, Ctrl+PageUp and Ctrl+PageDown chapters, Ctrl+I
/// saves the picture. False: it is another key.
bool movieKey(Player& player, const KeyArgs& key);
/// Left and Right, for the windows of movies and pictures. False: it is another key.
bool seekKey(Player& player, const KeyArgs& key);
/// What is open goes to the whole screen or leaves it, and what is opened later is shown as it: until a dialog is
/// opened, in which the zoom can be set. Nothing for what is only heard.
void changeWholeScreen(Player& player);
/// Whether a movie, or a picture, of that zoom is seen on the whole screen: by hand, else by its zoom.
bool isWholeScreen(const Player& player, std::int16_t zoom);
/// The zoom without the whole screen: that of a window.
std::int16_t windowZoom(std::int16_t zoom);

/// "m:ss" or "h:mm:ss".
std::string clockText(std::int64_t us);
/// The time as Player::timeShown wants it, of what the medium tells by its own.
std::string shownTime(const Player& player, const OpenMedium& medium, const std::string& elapsed);
/// Elapsed, left, total and elapsed again, shown at once.
void changeTimeShown(Player& player);

}  // namespace corvane::mdlPublicFunction
