// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/form_windows_on.h"
#include "windows/windowing/media_canvas.h"

namespace corvane {

/// The windows of the forms, by windows of the system.
class WindowsWindows : public FormWindowsOn<CanvasWindow, MediaCanvas, DesktopContext> {
public:
    explicit WindowsWindows(DesktopContext& context);
    ~WindowsWindows() override;

    int doubleClickTimeMs() override { return static_cast<int>(GetDoubleClickTime()); }
    bool prefersReducedMotion() override;

protected:
    std::unique_ptr<BoundWindow> makeDialog(Form& form) override;
    void panelIs(BoundWindow* panel) override;
    void bury(std::unique_ptr<BoundWindow> gone) override;

private:
    void screensChange();

    bool screensTold_ = false;  ///< an event of it is on its way: every window hears of every change
};

}  // namespace corvane
