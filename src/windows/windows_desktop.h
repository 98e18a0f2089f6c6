// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "program/seeded_random.h"
#include "program/started_program.h"
#include "shell/desktop_calls.h"
#include "winapi/files/windows_files.h"
#include "winapi/program/sleep_watch.h"
#include "winapi/program/window_instance.h"
#include "winapi/program/windows_loop.h"
#include "winapi/program/windows_time.h"
#include "winapi/tags/windows_texts.h"
#include "windows/media/media.h"
#include "windows/windowing/windows_dialogs.h"
#include "windows/windowing/windows_windows.h"
#include "workers/file_worker.h"

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
    /// Whom to tell that the machine goes to sleep (true), or is awake; in posted events.
    void whenMachineSleeps(std::function<void(bool sleeps)> told);
    /// Handles messages until the program ends.
    void run() { loop_.run(); }

private:
    void endWithSession();

    WindowsLoop loop_;
    DesktopContext context_;
    UiPost post_;
    std::unique_ptr<Pictures> pictures_;
    WindowsFiles files_;
    FileWorker work_{post_, std::make_shared<WindowsFiles>()};
    WindowsTexts texts_{loop_.uiPost()};
    WindowsWindows windows_;
    WindowsTimers timers_;
    WindowsClock clock_;
    WindowsDialogs dialogs_;
    WindowInstance instance_;
    StartedProgram process_;
    SeededRandom random_{finestTime};
    std::optional<SleepWatch> sleep_;
    DesktopCalls calls_;
    std::unique_ptr<Media> media_;
    std::unique_ptr<SoundDevices> sound_;
    Ports ports_;
};

}  // namespace corvane
