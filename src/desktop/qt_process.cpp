// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_process.h"

#include <utility>

#include "desktop/program_folder.h"
#include "desktop/qt_files.h"
#include "engine/mdlPublicFunction.h"

namespace corvane {

QtProcess::QtProcess(CommandLine line, std::string folder)
    : line_(std::move(line)), folder_(std::move(folder)), instance_(folder_, runtimeFolder(folder_)) {}

bool QtProcess::onlyInstance() {
    if (instance_.acquire()) {
        removeUnfinishedFiles(folder_);
        removeUnfinishedFiles(folder_ + "/" + kSkinFolder);
        return true;
    }
    callTheFirst();
    return false;
}

void QtProcess::callTheFirst() {
    // The list of the player that runs is not replaced by names alone: they are for a start of their own.
    if (!line_.names.empty()) tell("The player runs already, and takes no names but behind --open: " + line_.names);
    std::vector<std::string> files;
    for (const std::string& file : line_.files) {
        if (mdlPublicFunction::isAcceptedExtension(mdlPublicFunction::GetExtension(file))) {
            files.push_back(file);
        } else {
            tell(mdlPublicFunction::skippedKind(file));
        }
    }
    const std::size_t fitting = Instance::fitting(files);
    if (fitting < files.size()) {
        tell("More files than can be handed over; the last " + std::to_string(files.size() - fitting) +
             " are left out.");
        files.resize(fitting);
    }
    if (!line_.files.empty() && files.empty()) return;
    if (!instance_.call(files)) tell("The player that runs does not answer.");
}

void QtProcess::end() {
    if (ending_) return;
    ending_ = true;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
