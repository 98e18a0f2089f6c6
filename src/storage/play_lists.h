// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "engine/player.h"

namespace corvane {

/// One entry of a play-list file.
struct ListEntry {
    std::string name;  ///< shown in the editor: the file's name with its extension
    std::string path;
};

/// The contents of a play-list file.
struct PlayList {
    std::string listName;
    std::vector<ListEntry> entries;  ///< at most maxFiles() when read
};

/// Path of the file of a list; page and list number 0 to 9.
std::string listFileName(const Player& player, int page, int list);

/// Splits a stored entry at its first bar, or at its first comma when it has no bar. Empty: the entry ends the list.
std::optional<ListEntry> splitEntry(std::string_view value);

/// Reads a list up to the first entry that ends it. A missing file is an empty list. With long lists, what follows from
/// entry 256 on is read behind that, up to the first that ends it: a start without them keeps it when it saves, also
/// where it makes the list shorter.
PlayList readPlayList(Player& player, const std::string& file);

/// Writes the list's name and all 256 entries, the unused ones as a bar, with one replacement of the file. With long
/// lists those behind them follow, and what the file held behind the list's end is a bar; else all of that stays. A
/// name that holds a bar is written with "_" instead, and one that would push the end of its path out of what a read
/// returns is shortened. False: nothing was written.
bool writePlayList(Player& player, const std::string& file, const PlayList& list);

/// Whether a path comes back whole from a list's file; a longer one is read cut.
bool canBeStored(std::string_view path);

/// Fills the player's list: with the accepted pieces of the command line when there is one, else from the file of the
/// current page and list. Without a single entry the list and the panel stay as they are. Files given to be opened then
/// replace the list, as a drop does.
void loadListAtStart(Player& player);

}  // namespace corvane
