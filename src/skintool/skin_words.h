// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "program/options.h"

namespace corvane {

/// What corvane-skin does, each by its first argument.
const std::vector<ProgramOption>& skinCommands();

/// Its options.
const std::vector<ProgramOption>& skinOptions();

/// Its help.
std::string skinUsage();

}  // namespace corvane
