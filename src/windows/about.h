// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "program/program_folder.h"

namespace corvane {

/// What is in force and what is missing on this machine, a line each; nothing is made or changed for it.
std::string aboutText(const std::string& version, const FolderChoice& choice);

}  // namespace corvane
