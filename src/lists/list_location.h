// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Where a name of a list leads.
struct ListLocation {
    bool network = false;            ///< to another machine: nothing is looked up
    std::vector<std::string> paths;  ///< whole, the likeliest first; none: nowhere
};

/// `location` as it stands in a list of `folder` (a whole path of the desktop that `separator` belongs to). Separators
/// of both kinds divide; "file:" addresses lead to this machine; "." and ".." are followed in the text. `isAddress`:
/// "%20" is a blank first, and itself only where that leads nowhere. Pure.
ListLocation locate(std::string_view location, std::string_view folder, char separator, bool isAddress);

/// The folder of a path, with its separator where it is a root; "" when it has none.
std::string folderOf(std::string_view path, char separator);

/// The text with each "%" and two digits as the byte that they are.
std::string withoutPercents(std::string_view text);

}  // namespace corvane
