// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "winapi/api.h"

namespace corvane {

/// Writes text to the program's output (STD_OUTPUT_HANDLE) or error stream (STD_ERROR_HANDLE): where it was sent to, or
/// the console that the program was started from, because a program with windows has none of its own. False: nobody
/// takes it.
bool writeTo(DWORD stream, const std::string& text);

/// Writes "corvane: TEXT" as one line to the error stream, whatever the text holds. The player waits for a slow reader
/// for a second in all; after that lines are written whenever they are taken. Left out are those for which there is
/// no room any more, and those that nobody has taken when the program ends.
void tellOnErrors(const std::string& text);

}  // namespace corvane
