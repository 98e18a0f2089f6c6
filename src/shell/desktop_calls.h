// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "program/numbered_timers.h"
#include "program/started_program.h"
#include "program/woken_loop.h"
#include "shell/native/native_dialogs.h"
#include "shell/windowing/form_windows.h"

namespace corvane {

/// What reaches a desktop from outside of its windows, alike on all: a later start's files, the wish that it may end,
/// the end itself. On the user-interface thread.
class DesktopCalls {
public:
    /// The desktop's, which outlive it.
    struct Parts {
        WokenLoop& loop;
        NumberedTimers& timers;
        NativeDialogs& dialogs;
        FormWindows& windows;
        Instance& instance;
        StartedProgram& process;
        std::function<void()> quit;  ///< ends the system's own loop
    };
    /// Ties itself to the instance and to the process.
    explicit DesktopCalls(Parts parts);
    DesktopCalls(const DesktopCalls&) = delete;
    DesktopCalls& operator=(const DesktopCalls&) = delete;

    /// As a window manager asks the panel to close; a box that is up is answered with its refusal first.
    void askToClose();

private:
    void takeOver(const std::vector<std::string>& files);
    void stop();

    Parts parts_;
};

}  // namespace corvane
