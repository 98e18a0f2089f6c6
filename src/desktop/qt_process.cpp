// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/qt_process.h"

#include <utility>

#include "desktop/program_folder.h"
#include "desktop/qt_files.h"

namespace corvane {

QtProcess::QtProcess(CommandLine line, std::string folder)
    : line_(std::move(line)), folder_(std::move(folder)), instance_(folder_, runtimeFolder()) {}

bool QtProcess::onlyInstance() {
    if (instance_.acquire()) {
        removeUnfinishedFiles(folder_);
        removeUnfinishedFiles(folder_ + "/" + kSkinFolder);
        return true;
    }
    if (!line_.files.empty()) instance_.handOver(line_.files);
    return false;
}

void QtProcess::end() {
    if (ending_) return;
    ending_ = true;
    if (onEnd_) onEnd_();
}

}  // namespace corvane
