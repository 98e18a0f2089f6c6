// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/options.h"

#include <algorithm>

namespace corvane {

std::string helpRow(const std::string& name, const std::string& text, std::size_t width) {
    constexpr std::size_t kMargin = 2, kGap = 3;
    std::string row(kMargin, ' ');
    row += name;
    const std::string below(kMargin + width + kGap, ' ');
    row.resize(std::max(row.size() + 1, below.size()), ' ');
    for (const char each : text) {
        row += each;
        if (each == '\n') row += below;
    }
    return row + '\n';
}

std::string helpRows(const std::vector<ProgramOption>& options, std::size_t width) {
    std::string rows;
    for (const ProgramOption& option : options) {
        rows += helpRow(option.letter.empty() ? option.word : option.letter + ", " + option.word, option.text, width);
    }
    return rows;
}

std::string inShort(const ProgramOption& option) { return option.text.substr(0, option.text.find_first_of(":\n")); }

}  // namespace corvane
