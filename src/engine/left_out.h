// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/player.h"

namespace corvane {

/// Those of the files named to a start that a play list takes, in order, at most mdlDefinePublic::maxFiles(). For each
/// other one `tell` gets a line, "NAME: left out, because …", for who started the program. What stands behind a full
/// list or behind kMostMissing names without a file is not looked up: one line tells how many those are.
std::vector<std::string> filesForList(const Player& player, const std::vector<std::string>& named,
                                      const std::function<void(const std::string& line)>& tell);

/// Why a name that stands for no list or folder is not played, for a line "NAME: left out, because …".
std::string whyOfNoKind(const Conveniences& ways, const std::string& name);

/// A box in an event of its own. At the start it waits for the panel, and for what was given to play: before that it
/// would stand in a corner of the screen and hold all up.
void tellInBox(Player& player, std::string text);
/// Puts up what waits for the panel. Told once, when the panel stands.
void tellWhatWaits(Player& player);

/// Why none of some names is played, for people: the first of the lines, and how many more there are.
std::string reasonText(const std::vector<std::string>& lines);

/// The names between the blanks of a command line.
std::vector<std::string> namesBetweenBlanks(std::string_view text);

}  // namespace corvane
