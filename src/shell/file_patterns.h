// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace corvane {

/// Whether a name matches one of the patterns (";" between them, "*" any run, "?" one byte, letters without case).
/// "*.*" is every name, also one without a dot.
bool matchesAnyPattern(std::string_view name, std::string_view patterns);

}  // namespace corvane
