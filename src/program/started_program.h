// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/ports.h"
#include "program/command_line.h"
#include "program/instance.h"

namespace corvane {

/// The program as it was started: what it was given, in which folder it plays, and whether it is the one that plays
/// there. A later start gives its files to the first one here; then it ends.
class StartedProgram : public Process {
public:
    /// What the desktop has of the system for it. Files and instance outlive it.
    struct System {
        Files& files;
        Instance& instance;
        std::function<void(const std::string& line)> tell;            ///< to who started the program
        std::function<void(const std::string& folder)> removeHalves;  ///< what killed replacements left in a folder
        int platformId = 2;
    };

    /// folder: the program folder. Tells of the options that there are not.
    StartedProgram(CommandLine line, std::string folder, System system);

    bool onlyInstance(const ListTaker& taken) override;
    bool startedByDesktop() override { return line_.byDesktop; }
    int platformId() override { return system_.platformId; }
    std::string programFolder() override { return folder_; }
    std::string commandLine() override { return line_.names; }
    std::vector<std::string> filesToOpen() override { return line_.files; }
    void end() override;
    bool ending() const override { return ending_; }
    /// Why this start has called nobody: the player that runs is not seen here. "": it is, or this is the only one.
    const std::string& seenElsewhere() const { return elsewhere_; }

    /// Stops the desktop: called once, from end().
    void onEnd(std::function<void()> handler) { onEnd_ = std::move(handler); }

private:
    void callTheFirst(const ListTaker& taken);

    CommandLine line_;
    std::string folder_;
    std::string elsewhere_;
    System system_;
    bool ending_ = false;
    std::function<void()> onEnd_;
};

}  // namespace corvane
