// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_words.h"

namespace corvane {

const std::vector<ProgramOption>& skinCommands() {
    static const std::vector<ProgramOption> kCommands = {
        {"new", "", "NAME [FOLDER]", "writes a plain skin NAME to begin with; overwrites nothing"},
        {"check", "", "SKIN", "tells each mistake with its line; ends with 1 when there is one"},
        {"preview", "", "SKIN FOLDER", "writes a PNG of every state of the panel into FOLDER"},
    };
    return kCommands;
}

const std::vector<ProgramOption>& skinOptions() {
    static const std::vector<ProgramOption> kOptions = {
        {"--scale", "", "FACTOR", "size of the pictures of preview, 0.5 to 4"},
        {"--help", "-h", "", "show this help"},
        {"--version", "", "", "show the version"},
    };
    return kOptions;
}

std::string skinUsage() {
    constexpr std::size_t kWidth = 10;
    return "Usage: corvane-skin new NAME [FOLDER]\n"
           "       corvane-skin check SKIN\n"
           "       corvane-skin preview SKIN FOLDER [--scale FACTOR]\n"
           "\n"
           "Begins, checks and shows skins of corvane. SKIN is the path of the bitmap, of the\n"
           "CSV file, or of both without the ending.\n"
           "\n" +
           helpRows(skinCommands(), kWidth) + helpRows(skinOptions(), kWidth);
}

}  // namespace corvane
