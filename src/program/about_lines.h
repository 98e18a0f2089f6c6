// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// A line of what --about says, with its end.
std::string aboutLine(const std::string& what, const std::string& found);
/// The parts with ", " between them; "" when there are none.
std::string joined(const std::vector<std::string>& parts);
/// The program folder's own words: its path, and whether it is there and can be written.
std::string aboutFolder(const std::string& folder, bool isThere, bool canBeWritten);

}  // namespace corvane
