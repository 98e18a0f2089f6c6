// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/desktop_calls.h"

#include <utility>

namespace corvane {

DesktopCalls::DesktopCalls(Parts parts) : parts_(std::move(parts)) {
    parts_.process.onEnd([this] { stop(); });
    parts_.instance.onCall([this](const std::vector<std::string>& files) { takeOver(files); });
}

/// The user has turned to the program: what waits for an answer comes first.
void DesktopCalls::takeOver(const std::vector<std::string>& files) {
    if (!files.empty()) parts_.windows.dropFiles({true, files, true});
    if (!parts_.dialogs.raiseBox()) parts_.windows.bringForward();
}

void DesktopCalls::askToClose() {
    parts_.dialogs.refuse();
    parts_.windows.requestClose();
}

void DesktopCalls::stop() {
    parts_.loop.stop();
    parts_.timers.stopAll();
    parts_.dialogs.refuse();
    parts_.windows.hideAll();
    parts_.quit();
}

}  // namespace corvane
