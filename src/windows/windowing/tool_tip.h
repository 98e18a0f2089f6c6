// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>

#include "windows/api.h"

namespace corvane {

/// The tool tip of a window whose parts are drawn: asks for the text when the pointer rests.
class ToolTip {
public:
    /// owner: the window; its WM_NOTIFY messages go to notify().
    explicit ToolTip(HWND owner);
    ToolTip(const ToolTip&) = delete;
    ToolTip& operator=(const ToolTip&) = delete;
    ~ToolTip();

    /// part: what the pointer is over now; a tip of another part goes away.
    void over(const void* part);
    /// True: the message was the tip's. text is asked for what to show; empty: nothing.
    bool notify(LPARAM details, const std::function<std::string()>& text);

private:
    HWND tip_ = nullptr;
    HWND owner_;
    const void* part_ = nullptr;
    std::wstring shown_;
};

}  // namespace corvane
