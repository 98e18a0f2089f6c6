// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/program/command_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace corvane {

namespace {
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
        } else if (argument == "--open") {
            opening = true;
        } else if (argument == "--help" || argument == "-h") {
            line.help = true;
        } else if (argument == "--version") {
            line.version = true;
        } else if (argument == "--about") {
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

std::string usageText() {
    return "Usage: corvane [NAMES...]\n"
           "       corvane --open FILE...\n"
           "\n"
           "A small skinned multimedia player.\n"
           "\n"
           "  NAMES        the play list in place of the saved one; blanks separate names,\n"
           "               and a name's type is what follows its first dot\n"
           "  --open       every argument after it is one file, as file managers give them;\n"
           "               a player that runs already takes them over\n"
           "  -h, --help   show this help\n"
           "  --version    show the version\n"
           "  --about      show what is in force and what is missing on this machine\n"
           "\n"
           "Environment:\n"
           "  CORVANE_FOLDER     the folder of settings, play lists and skins\n"
           "  CORVANE_SCALE      size of the windows, 0.5 to 4\n";
}

}  // namespace corvane
