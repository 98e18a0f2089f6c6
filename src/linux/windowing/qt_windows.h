// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "linux/windowing/form_window.h"
#include "linux/windowing/screen_watch.h"
#include "platform/ports.h"

namespace corvane {

class CanvasWindow;

/// The windows of the forms. One FormWindow a form, chosen by the form's style.
class QtWindows : public Windows {
public:
    explicit QtWindows(DesktopContext& context);
    ~QtWindows() override;

    void attach(Form& form) override;
    void detach(Form& form) override;
    Twips screenWidth() override;
    Twips screenHeight() override;
    int doubleClickTimeMs() override;
    void SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) override;
    void beginDrag(Form& form) override;
    void activate(Form& form) override;
    void refresh(Form& form) override;
    int textWidth(Form& form, const std::string& text) override;

    /// The form's window, or null.
    FormWindow* windowOf(const Form& form) const;
    /// A drop on the painted form that takes files; kept until there is one.
    void dropFiles(const DropData& dropped);
    /// Brings the player to the front, restored: the box or dialog that is up, else the form that takes files.
    void bringForward();
    /// Asks the painted forms to close, as a window manager does.
    void requestClose();
    void hideAll();

private:
    CanvasWindow* fileTaker() const;
    void offerWaitingFiles();
    void screensChanged();

    DesktopContext& context_;
    std::map<const Form*, std::unique_ptr<FormWindow>> windows_;
    std::optional<DropData> waiting_;
    ScreenWatch screens_;
};

}  // namespace corvane
