// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// One entry of the editor's file-type choice and the patterns that it puts on the file box.
struct TypeFilter {
    std::string entry;
    std::string patterns;
};

/// The nine filters, in the order of the "PATTERN" setting.
const std::vector<TypeFilter>& typeFilters();
std::vector<std::string> typeFilterEntries();
/// Place of the filter with exactly this entry, or -1.
int findTypeFilter(const std::string& entry);

}  // namespace corvane
