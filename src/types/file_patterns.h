// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string_view>

namespace corvane {

/// Whether a name matches one of the patterns (";" between them, "*" any run, "?" one byte, letters without case).
/// "*.*" is every name, also one without a dot.
bool matchesAnyPattern(std::string_view name, std::string_view patterns);

/// Entries of one folder that are looked at; what lies behind them does not appear. A folder may hold millions, and the
/// panel waits for all that are listed.
inline constexpr std::size_t kMostEntries = 65'536;

}  // namespace corvane
