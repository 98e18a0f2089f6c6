// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "engine/player.h"
#include "storage/exported_lists.h"

namespace corvane {

/// Whether a path is that of a track of a disc: of a drive's, or of a sheet's as if that were a folder. No other player
/// knows such a name.
bool isTrackOfDisc(const std::string& path);

/// The entries, in which all tracks of a disc's sheet that follow each other in its order are the sheet itself: other
/// players open it as those tracks, and so does this one. At most kMostSheetsRead sheets are read.
std::vector<ExportedEntry> withWholeSheets(const Player& player, std::vector<ExportedEntry> entries);
inline constexpr std::size_t kMostSheetsRead = 64;

}  // namespace corvane
