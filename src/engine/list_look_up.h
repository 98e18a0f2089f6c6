// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/ports.h"

namespace corvane {

/// After so many names without a file none is looked up any more: each costs time of the user interface, and another
/// program may drop or hand over names by the hundred thousand.
inline constexpr std::size_t kMostMissing = 1024;

/// Looks up the files that one list is to take, in order, by one call of the port where none of them is missing. The
/// own name of each file, or nothing where there is no such file; those behind a full list (`room` files found) or
/// behind kMostMissing missing ones have no answer.
std::vector<std::optional<std::string>> lookUpForList(Files& files, const std::vector<std::string>& paths,
                                                      std::size_t room);

}  // namespace corvane
