// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ports.h"
#include "shell/command_line.h"
#include "windows/instance.h"

namespace corvane {

/// What this process was started with, as UTF-8.
CommandLine commandLineOfProcess();
std::string helpText();

/// Files that were dropped on the program's icon, or "Open with": the Explorer gives nothing but their full paths, with
/// whatever blanks they have. They count as behind --open.
bool areDroppedOnIcon(const std::vector<std::string>& arguments);

class WindowsProcess : public Process {
public:
    WindowsProcess(CommandLine line, std::string folder);

    /// A second start hands its files to the first one here, or asks it to come to the front; then it ends.
    bool onlyInstance() override;
    int platformId() override;
    std::string programFolder() override { return folder_; }
    std::string commandLine() override { return line_.names; }
    std::vector<std::string> filesToOpen() override { return line_.files; }
    void end() override;
    bool ending() const override { return ending_; }

    /// Stops the desktop: called once, from end().
    void onEnd(std::function<void()> handler) { onEnd_ = std::move(handler); }
    Instance& instance() { return instance_; }

private:
    void callTheFirst();

    CommandLine line_;
    std::string folder_;
    Instance instance_;
    bool ending_ = false;
    std::function<void()> onEnd_;
};

}  // namespace corvane
