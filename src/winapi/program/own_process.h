// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "program/command_line.h"

namespace corvane {

/// What this process was started with, as UTF-8.
CommandLine commandLineOfProcess();

/// Files that were dropped on the program's icon, or "Open with": the Explorer gives nothing but their full paths, with
/// whatever blanks they have. They count as behind --open.
bool areDroppedOnIcon(const std::vector<std::string>& arguments);

/// The family of systems that this one belongs to; 1: the old one, 2: the others.
int platformFamily();

}  // namespace corvane
