// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "linux/windowing/form_window.h"
#include "linux/windowing/screen_watch.h"
#include "shell/windowing/form_windows.h"

namespace corvane {

/// The windows of the forms, by the widgets of the tool kit.
class QtWindows : public FormWindows {
public:
    explicit QtWindows(DesktopContext& context);

    int doubleClickTimeMs() override;
    /// The form's top-level widget; null: it has none.
    QWidget* widgetOf(const Form& form) const;

protected:
    std::unique_ptr<BoundWindow> makeWindow(Form& form) override;
    void panelIs(BoundWindow* panel) override;
    void bury(std::unique_ptr<BoundWindow> gone) override { context_.graveyard.lay(std::move(gone)); }

private:
    DesktopContext& context_;
    ScreenWatch screens_;
};

}  // namespace corvane
