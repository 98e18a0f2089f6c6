// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>

#include "winapi/message_window.h"

namespace corvane {

/// While it lives, the next box of this thread (MessageBox) lies over a window of the program, and may leave the
/// keyboard to the program that has it: the box is shown without being activated then, blinks in the task bar, and is
/// given the keyboard as soon as the user turns to it or to any other window of this program. On the user-interface
/// thread; one inside another for a box that comes while one is up.
class BoxWatch {
public:
    /// over: what the box is to lie over; null: where the system puts it.
    BoxWatch(HWND over, bool leavesKeyboard);
    BoxWatch(const BoxWatch&) = delete;
    BoxWatch& operator=(const BoxWatch&) = delete;
    ~BoxWatch();

    /// Brings the box that is up to the front, with the keyboard; false: none is.
    static bool raise();
    /// The box that is up; null: none is.
    static HWND box();

private:
    static LRESULT CALLBACK watch(int code, WPARAM window, LPARAM details);
    static LRESULT CALLBACK filter(HWND box, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR self);
    void begin(HWND box);
    void changing(WINDOWPOS& place);
    void putOver(HWND under, WINDOWPOS& place) const;
    std::optional<LRESULT> handle(UINT message) const;

    HWND over_;            ///< null once the box is shown
    bool leavesKeyboard_;  ///< until it is shown
    HWND box_ = nullptr;   ///< from when it is made
    MessageWindow messages_;
    BoxWatch* outer_;
    HHOOK hook_;
};

}  // namespace corvane
