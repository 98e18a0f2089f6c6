// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/ports.h"
#include "types/media_types.h"

namespace corvane {

/// Those of the files named to a start that a play list takes, in order, at most mdlDefinePublic::kMaxFiles. For each
/// other one `tell` gets a line, "NAME: left out, because …", for who started the program. What stands behind a full
/// list or behind kMostMissing names without a file is not looked up: one line tells how many those are.
std::vector<std::string> filesForList(Files& files, const std::vector<std::string>& named,
                                      const std::function<void(const std::string& line)>& tell,
                                      const MediaTypes& types = MediaTypes());

/// The names between the blanks of a command line.
std::vector<std::string> namesBetweenBlanks(std::string_view text);

}  // namespace corvane
