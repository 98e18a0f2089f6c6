// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <utility>

#include "linux/windowing/media_canvas.h"
#include "linux/windowing/screen_watch.h"
#include "shell/windowing/form_windows_on.h"

namespace corvane {

/// The windows of the forms, by the widgets of the tool kit.
class QtWindows : public FormWindowsOn<CanvasWindow, MediaCanvas, DesktopContext> {
public:
    explicit QtWindows(DesktopContext& context);

    int doubleClickTimeMs() override;
    bool prefersReducedMotion() override { return reducedMotion_ && reducedMotion_(); }
    /// Who knows whether the desktop asks for less motion; nobody until then.
    void askOfMotion(std::function<bool()> reduced) { reducedMotion_ = std::move(reduced); }
    /// The form's top-level widget; null: it has none.
    QWidget* widgetOf(const Form& form) const;

protected:
    std::unique_ptr<BoundWindow> makeDialog(Form& form) override;
    void panelIs(BoundWindow* panel) override;
    void bury(std::unique_ptr<BoundWindow> gone) override { context().graveyard.lay(std::move(gone)); }

private:
    ScreenWatch screens_;
    std::function<bool()> reducedMotion_;
};

}  // namespace corvane
