// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The text as it may be written to a terminal, in one line: control characters, those that turn the
/// direction of writing, and bytes that are no UTF-8 become "?".
std::string printable(std::string_view text);

}  // namespace corvane
