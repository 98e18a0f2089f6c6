// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "program/options.h"

namespace corvane {

/// What the program was started with: options first, then either names of a play list or, behind --open, files.
struct CommandLine {
    bool help = false;
    bool version = false;
    bool about = false;                ///< what is in force and what is missing here
    std::vector<std::string> unknown;  ///< what looks like an option and is none; it is no name either
    std::string names;                 ///< arguments joined by blanks, cut at blanks again by the play list's rules
    bool byDesktop = false;            ///< --open was given: the desktop's way of starting, with files or without
    std::vector<std::string> files;    ///< each argument behind --open: a full path
};

/// Arguments without the program's own name. fullPath makes a full path of an argument behind --open.
CommandLine readArguments(const std::vector<std::string>& arguments,
                          const std::function<std::string(const std::string&)>& fullPath);

/// The size of the windows that CORVANE_SCALE asks for, 0.5 to 4; 1 where that is no number.
double scaleOf(const std::string& given);

/// The options that the player knows, in the order of its help.
const std::vector<ProgramOption>& playerOptions();

/// The help text's lines that are the same everywhere; the environment's variables follow.
std::string usageText();

}  // namespace corvane
