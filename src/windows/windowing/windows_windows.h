// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/form_windows.h"
#include "windows/windowing/form_window.h"

namespace corvane {

/// The windows of the forms, by windows of the system.
class WindowsWindows : public FormWindows {
public:
    explicit WindowsWindows(DesktopContext& context);
    ~WindowsWindows() override;

    int doubleClickTimeMs() override { return static_cast<int>(GetDoubleClickTime()); }

protected:
    std::unique_ptr<BoundWindow> makeWindow(Form& form) override;
    void panelIs(BoundWindow* panel) override;
    void bury(std::unique_ptr<BoundWindow> gone) override;

private:
    DesktopContext& context_;
};

}  // namespace corvane
