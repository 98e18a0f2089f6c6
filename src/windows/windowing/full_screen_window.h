// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "winapi/api.h"

namespace corvane {

class CanvasWindow;

/// A window over the whole screen that a movie is shown in. Its keys and mouse are its owner's: the movie fills it, so
/// that positions are the same in both. The pointer hides when it rests. It lies above all other windows while it is
/// used, and lets those that are used instead lie above it.
class FullScreenWindow {
public:
    explicit FullScreenWindow(CanvasWindow& owner);
    FullScreenWindow(const FullScreenWindow&) = delete;
    FullScreenWindow& operator=(const FullScreenWindow&) = delete;
    ~FullScreenWindow();

    HWND handle() const { return handle_; }
    /// takesFocus: another program has it otherwise, and keeps it.
    void show(const RECT& screen, bool takesFocus);

private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM first, LPARAM second);
    LRESULT message(UINT message, WPARAM first, LPARAM second);
    void pointerMoved();
    void activated(bool active, HWND other);

    CanvasWindow& owner_;
    HWND handle_ = nullptr;
    POINT pointer_{};
    bool hidden_ = false;
};

}  // namespace corvane
