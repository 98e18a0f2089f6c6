// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// What the program was started with: options first, then either names of a play list or, behind --open, files.
struct CommandLine {
    bool help = false;
    bool version = false;
    std::string names;               ///< arguments joined by blanks, cut at blanks again by the play list's rules
    std::vector<std::string> files;  ///< each argument behind --open: a full path
};

/// Arguments without the program's own name. folder: what the files behind --open are relative to.
CommandLine readCommandLine(const std::vector<std::string>& arguments, const std::string& folder);

std::string helpText();

}  // namespace corvane
