// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/command_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane {

namespace {
constexpr const char *kOpen = "--open", *kHelp = "--help", *kHelpLetter = "-h", *kVersion = "--version",
                     *kAbout = "--about";

/// A name has a dot before its kind.
bool looksLikeOption(const std::string& argument) {
    return argument.size() > 1 && argument.front() == '-' && argument.find('.') == std::string::npos;
}
}  // namespace

CommandLine readArguments(const std::vector<std::string>& arguments,
                          const std::function<std::string(const std::string&)>& fullPath) {
    CommandLine line;
    bool opening = false;
    for (const std::string& argument : arguments) {
        if (opening) {
            line.files.push_back(fullPath(argument));
        } else if (argument == kOpen) {
            opening = line.byDesktop = true;
        } else if (argument == kHelp || argument == kHelpLetter) {
            line.help = true;
        } else if (argument == kVersion) {
            line.version = true;
        } else if (argument == kAbout) {
            line.about = true;
        } else if (looksLikeOption(argument)) {
            line.unknown.push_back(argument);
        } else {
            if (!line.names.empty()) line.names += ' ';
            line.names += argument;
        }
    }
    return line;
}

double scaleOf(const std::string& given) {
    constexpr double kLeast = 0.5, kMost = 4.0;
    double scale = 1.0;
    const char* const end = given.data() + given.size();
    const auto read = std::from_chars(given.data(), end, scale);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(scale)) return 1.0;
    return std::clamp(scale, kLeast, kMost);
}

const std::vector<ProgramOption>& playerOptions() {
    static const std::vector<ProgramOption> kOptions = {
        {kOpen, "", "FILE...",
         "the desktop's way of starting: with the conveniences of today, where\n"
         "KADO.INI does not say otherwise; every argument after it is one file,\n"
         "and a player that runs already takes them over"},
        {kHelp, kHelpLetter, "", "show this help"},
        {kVersion, "", "", "show the version"},
        {kAbout, "", "", "show what is in force and what is missing on this machine"},
    };
    return kOptions;
}

std::string usageText() {
    constexpr std::size_t kWidth = 10;
    return "Usage: corvane [NAMES...]\n"
           "       corvane --open [FILE...]\n"
           "\n"
           "A small skinned multimedia player.\n"
           "\n" +
           helpRow("NAMES",
                   "the play list in place of the saved one; blanks separate names,\n"
                   "and a name's type is what follows its first dot",
                   kWidth) +
           helpRows(playerOptions(), kWidth) +
           "\n"
           "Environment:\n"
           "  CORVANE_FOLDER     the folder of settings, play lists and skins\n"
           "  CORVANE_SCALE      size of the windows, 0.5 to 4\n";
}

}  // namespace corvane
