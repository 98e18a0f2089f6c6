// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// A list's name as a name of a file on every system: what no file's name may hold is "_", and it is 100 bytes at most,
/// cut between characters. Empty: nothing of it is left.
std::string exportName(std::string_view listName);

}  // namespace corvane
