// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace corvane {

/// Writes "corvane: TEXT" as one line to the error stream, whatever the text holds. Left out when nobody takes it just
/// now: the player waits for no reader.
void tellOnErrors(const std::string& text);

}  // namespace corvane
