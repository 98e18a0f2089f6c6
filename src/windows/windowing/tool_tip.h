// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "winapi/api.h"

namespace corvane {

/// The tool tip of a window whose parts are drawn: asks for the text when the pointer rests.
class ToolTip {
public:
    /// owner: the window; its WM_NOTIFY messages go to notify().
    explicit ToolTip(HWND owner);
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;
    ~ToolTip();

    /// part: what the pointer is over now, and where in it, when that matters; a tip of elsewhere goes away.
    void over(const void* part, int place = 0);
    /// True: the message was the tip's. text is asked for what to show; empty: nothing.
    bool notify(LPARAM details, const std::function<std::string()>& text);

private:
    HWND tip_ = nullptr;
    HWND owner_;
    const void* part_ = nullptr;
    int place_ = 0;
    std::wstring shown_;
};

}  // namespace corvane
