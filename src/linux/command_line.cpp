// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/command_line.h"

#include <QByteArray>
#include <filesystem>

#include "linux/windowing/input_map.h"

namespace corvane {

namespace {

std::string fullPath(const std::string& given, const std::string& folder) {
    if (given.rfind("file:", 0) == 0) {
        const auto paths = pathsOfUriList(QByteArray::fromStdString(given));
        if (!paths.empty()) return paths.front();
    }
    if (given.empty() || given.front() == '/') return given;
    // Without "." and "..": their dots would count as the first dot of the path.
    return (std::filesystem::path(folder) / given).lexically_normal().string();
}

}  // namespace

CommandLine readCommandLine(const std::vector<std::string>& arguments, const std::string& folder) {
    return readArguments(arguments, [&folder](const std::string& given) { return fullPath(given, folder); });
}

std::string helpText() {
    return usageText() +
           "  CORVANE_CDROM      the CD drive, or a .cue image that stands for one\n"
           "  CORVANE_SOUNDFONT  the soundfont for MIDI files\n"
           "  CORVANE_AUDIO      null: plays without a sound\n"
           "  CORVANE_GRAPHICS   on or off: movies are shown by the graphics driver, or never\n";
}

}  // namespace corvane
