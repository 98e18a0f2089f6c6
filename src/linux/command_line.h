// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "program/command_line.h"

namespace corvane {

/// Arguments without the program's own name. folder: what the files behind --open are relative to.
CommandLine readCommandLine(const std::vector<std::string>& arguments, const std::string& folder);

std::string helpText();

}  // namespace corvane
