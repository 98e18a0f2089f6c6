// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "linux/command_line.h"
#include "linux/instance.h"
#include "platform/ports.h"

namespace corvane {

class QtProcess : public Process {
public:
    QtProcess(CommandLine line, std::string folder);

    /// A second start calls the first one here and hands its files over; then it ends.
    bool onlyInstance() override;
    int platformId() override { return 2; }
    std::string programFolder() override { return folder_; }
    std::string commandLine() override { return line_.names; }
    std::vector<std::string> filesToOpen() override { return line_.files; }
    void end() override;
    bool ending() const override { return ending_; }

    /// Stops the desktop: called once, from end().
    void onEnd(std::function<void()> handler) { onEnd_ = std::move(handler); }
    Instance& instance() { return instance_; }
    const std::vector<std::string>& unknownOptions() const { return line_.unknown; }

private:
    void callTheFirst();

    CommandLine line_;
    std::string folder_;
    Instance instance_;
    bool ending_ = false;
    std::function<void()> onEnd_;
};

}  // namespace corvane
