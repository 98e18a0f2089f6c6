// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "shell/command_line.h"
#include "windows/files/windows_files.h"
#include "windows/media/media.h"
#include "windows/media/ui_post.h"
#include "windows/windowing/windows_dialogs.h"
#include "windows/windowing/windows_windows.h"
#include "windows/windows_loop.h"
#include "windows/windows_process.h"
#include "windows/windows_time.h"

namespace corvane {

/// All ports of the Windows desktop. Outlives the player.
class WindowsDesktop {
public:
    explicit WindowsDesktop(CommandLine line);
    WindowsDesktop(const WindowsDesktop&) = delete;
    WindowsDesktop& operator=(const WindowsDesktop&) = delete;
    ~WindowsDesktop();

    Ports& ports() { return ports_; }
    WindowsLoop& loop() { return loop_; }
    /// Handles messages until the program ends.
    void run() { loop_.run(); }

private:
    void takeOver(const std::vector<std::string>& files);
    void endWithSession();
    void stop();

    WindowsLoop loop_;
    DesktopContext context_;
    UiPost post_;
    std::unique_ptr<Pictures> pictures_;
    WindowsFiles files_;
    WindowsWindows windows_;
    WindowsTimers timers_;
    WindowsClock clock_;
    WindowsDialogs dialogs_;
    WindowsProcess process_;
    WindowsRandom random_;
    std::unique_ptr<Media> media_;
    std::unique_ptr<SoundDevices> sound_;
    Ports ports_;
};

}  // namespace corvane
