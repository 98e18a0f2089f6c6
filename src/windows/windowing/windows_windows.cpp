// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/windows_windows.h"

#include <utility>

#include "windows/native/native_form_window.h"

namespace corvane {

/// The flags that the core uses are the system's.
static_assert(SWP_NOSIZE == 0x01 && SWP_NOMOVE == 0x02 && SWP_NOACTIVATE == 0x10 && SWP_SHOWWINDOW == 0x40 &&
              SWP_HIDEWINDOW == 0x80);

WindowsWindows::WindowsWindows(DesktopContext& context) : FormWindowsOn(context) {
    context.loop.onMessage([](MSG& message) {
        SystemWindow* const window = SystemWindow::of(GetAncestor(message.hwnd, GA_ROOT));
        return window != nullptr && window->filter(message);
    });
    context.screensChange = [this] { screensChange(); };
}

bool WindowsWindows::prefersReducedMotion() {
    BOOL animated = TRUE;
    return SystemParametersInfoW(SPI_GETCLIENTAREAANIMATION, 0, &animated, 0) != FALSE && animated == FALSE;
}

WindowsWindows::~WindowsWindows() {
    context().loop.onMessage({});
    context().screensChange = {};
}

void WindowsWindows::screensChange() {
    if (std::exchange(screensTold_, true)) return;
    context().loop.post([this] {
        screensTold_ = false;
        screensChanged();
    });
}

void WindowsWindows::panelIs(BoundWindow* panel) {
    context().panel = panel != nullptr ? dynamic_cast<SystemWindow&>(panel->frame()).handle() : nullptr;
}

void WindowsWindows::bury(std::unique_ptr<BoundWindow> gone) {
    context().loop.afterMessage(
        [window = std::shared_ptr<BoundWindow>(std::move(gone))] {});  // its code may be running
}

std::unique_ptr<BoundWindow> WindowsWindows::makeDialog(Form& form) {
    return std::make_unique<NativeWindow>(form, context());
}

}  // namespace corvane
