// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/qt_process.h"

#include <utility>

#include "engine/left_out.h"
#include "linux/error_stream.h"
#include "linux/files/qt_files.h"
#include "linux/program_folder.h"

namespace corvane {

QtProcess::QtProcess(CommandLine line, std::string folder)
    : line_(std::move(line)), folder_(std::move(folder)), instance_(folder_, runtimeFolder(folder_)) {}

bool QtProcess::onlyInstance() {
    if (instance_.acquire()) {
        removeUnfinishedFiles(folder_);
        removeUnfinishedFiles(folder_ + "/" + kSkinFolder);
        QtFiles files;
        std::vector<std::string> named = namesBetweenBlanks(line_.names);
        named.insert(named.end(), line_.files.begin(), line_.files.end());
        filesForList(files, named, tellOnErrors);
        return true;
    }
    callTheFirst();
    return false;
}

void QtProcess::callTheFirst() {
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty())
        tellOnErrors("The player runs already, and takes no names but behind --open: " + line_.names);
    QtFiles drive;
    std::vector<std::string> files = filesForList(drive, line_.files, tellOnErrors);
    const std::size_t fitting = Instance::fitting(files);
    if (fitting < files.size()) {
        tellOnErrors("More files than can be handed over; the last " + std::to_string(files.size() - fitting) +
                     " are left out.");
        files.resize(fitting);
    }
    if (!line_.files.empty() && files.empty()) return;
    if (!instance_.call(files)) tellOnErrors("The player that runs does not answer.");
}

void QtProcess::end() {
    if (ending_) return;
    ending_ = true;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
