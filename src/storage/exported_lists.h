// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// One entry of a list that is written for other players.
struct ExportedEntry {
    std::string path;   ///< whole, as the desktop writes it; bytes that are no UTF-8 are written as they are
    std::string title;  ///< what is shown; "" writes none
    int seconds = -1;   ///< how long it plays; below 0: not known
};

/// The text of an M3U8 file: UTF-8 without a mark, lines that end with LF, each entry behind its #EXTINF. A path below
/// `targetFolder`, the folder that the file is written to, is written from there on; what cannot stand on a line (line
/// breaks, blanks at its ends, bytes that are no UTF-8 …) is written as a file's address. `separator`: of the desktop's
/// paths (Files::separator()). Any thread; never fails.
std::string writeM3u8(const std::string& listName, const std::vector<ExportedEntry>& entries,
                      const std::string& targetFolder, char separator);

/// The same as an XSPF file. Characters that XML does not know are left out of titles.
std::string writeXspf(const std::string& listName, const std::vector<ExportedEntry>& entries,
                      const std::string& targetFolder, char separator);

}  // namespace corvane
