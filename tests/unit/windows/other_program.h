// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "winapi/api.h"
#include "winapi/handle.h"
#include "winapi/program/windows_loop.h"

namespace corvane::test {

/// A program of the system's with a window, started and ended with this object.
class OtherProgram {
public:
    OtherProgram() {
        wchar_t command[] = L"notepad.exe";
        STARTUPINFOW start{};
        start.cb = sizeof start;
        PROCESS_INFORMATION made{};
        if (CreateProcessW(nullptr, command, nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &made) == 0) return;
        process_ = Handle(made.hProcess);
        CloseHandle(made.hThread);
        number_ = made.dwProcessId;
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;
    ~OtherProgram() {
        if (process_) TerminateProcess(process_.get(), 0);
    }

    /// Its window, once it stands; null until then.
    HWND window() const {
        struct Search {
            DWORD process;
            HWND found;
        } search{number_, nullptr};
        EnumWindows(
            [](HWND each, LPARAM to) -> BOOL {
                auto& wanted = *reinterpret_cast<Search*>(to);
                DWORD process = 0;
                GetWindowThreadProcessId(each, &process);
                if (process != wanted.process || IsWindowVisible(each) == 0) return TRUE;
                wanted.found = each;
                return FALSE;
            },
            reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
    /// Puts it in front of everything; false: it does not come.
    bool bringToFront(WindowsLoop& loop) const {
        return loop.runUntil([this] { return window() != nullptr; }, 20'000) &&
               loop.runUntil(
                   [this] {
                       SetForegroundWindow(window());
                       return GetForegroundWindow() == window();
                   },
                   5'000);
    }

private:
    Handle process_;
    DWORD number_ = 0;
};

}  // namespace corvane::test
