// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// Fails when a file of the project does not hold this text between `begin` and the next `end`: what is installed or
/// read by people lists what a table of the program says. With CORVANE_ACCEPT set in the environment the text is
/// written there instead.
void expectKeptPart(const std::string& path, const std::string& begin, const std::string& end, const std::string& text);

/// Rows of a table of the manual, every second one shaded.
std::string manualRows(const std::vector<std::vector<std::string>>& rows);
/// The same for a part of docs/manual/index.html that two comments enclose: "<!-- NAME -->" and "<!-- end of NAME -->".
void expectManualRows(const std::string& name, const std::string& rows);

}  // namespace corvane
