// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/about_lines.h"

#include <algorithm>

namespace corvane {

std::string aboutLine(const std::string& what, const std::string& found) {
    constexpr std::size_t kColumn = 19;
    std::string line = what + ':';
    line.resize(std::max(line.size() + 1, kColumn), ' ');
    return line + found + '\n';
}

std::string joined(const std::vector<std::string>& parts) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
    return text;
}

std::string aboutFolder(const std::string& folder, bool isThere, bool canBeWritten) {
    if (!isThere) return folder + " (made at the first start)";
    return canBeWritten ? folder : folder + " (cannot be written: nothing is stored)";
}

}  // namespace corvane
