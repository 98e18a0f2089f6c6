// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The order in which people number things: digits by the number that they make ("2" before "10"), letters without
/// case.
bool isBeforeNaturally(std::string_view a, std::string_view b);

void sortNaturally(std::vector<std::string>& names);

}  // namespace corvane
