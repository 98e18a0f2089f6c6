// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "types/media_types.h"

namespace corvane {

/// One entry of the editor's file-type choice and the patterns that it puts on the file box.
struct TypeFilter {
    std::string entry;
    std::string patterns;
};

/// The nine filters, in the order of the "PATTERN" setting.
std::vector<TypeFilter> typeFilters(const MediaTypes& types);
/// Place of the filter with exactly this entry, or -1.
int findTypeFilter(const std::vector<TypeFilter>& filters, const std::string& entry);

}  // namespace corvane
