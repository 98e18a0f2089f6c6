// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "shell/program/seeded_random.h"
#include "shell/program/started_program.h"
#include "windows/files/windows_files.h"
#include "windows/media/media.h"
#include "windows/media/ui_post.h"
#include "windows/window_instance.h"
#include "windows/windowing/windows_dialogs.h"
#include "windows/windowing/windows_windows.h"
#include "windows/windows_loop.h"
#include "windows/windows_time.h"

namespace corvane {

/// All ports of the Windows desktop. Outlives the player.
class WindowsDesktop {
public:
    /// folder: the program folder; manual: its first page.
    WindowsDesktop(CommandLine line, std::string folder, const std::string& manual);
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
    WindowInstance instance_;
    StartedProgram process_;
    SeededRandom random_{finestTime};
    std::unique_ptr<Media> media_;
    std::unique_ptr<SoundDevices> sound_;
    Ports ports_;
};

}  // namespace corvane
