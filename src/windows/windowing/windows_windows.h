// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "platform/ports.h"
#include "windows/windowing/form_window.h"

namespace corvane {

class CanvasWindow;

/// The windows of the forms. One FormWindow a form, chosen by the form's style.
class WindowsWindows : public Windows {
public:
    explicit WindowsWindows(DesktopContext& context);
    ~WindowsWindows() override;

    void attach(Form& form) override;
    void detach(Form& form) override;
    Twips screenWidth() override;
    Twips screenHeight() override;
    int doubleClickTimeMs() override { return static_cast<int>(GetDoubleClickTime()); }
    void SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) override;
    void beginDrag(Form& form) override;
    void activate(Form& form) override;
    void refresh(Form& form) override;
    int textWidth(Form& form, const std::string& text) override;

    /// The form's window, or null.
    FormWindow* windowOf(const Form& form) const;
    /// A drop on the painted form that takes files; kept until there is one.
    void dropFiles(const DropData& dropped);
    /// What is held by the mouse is let go: a box or a menu is up.
    void loseMouse();
    void hideAll();
    /// Restores and shows in front what the user would use now: the panel, or the dialog that stands for it.
    void raise();
    /// The panel is asked to close.
    void requestClose();

private:
    CanvasWindow* fileTaker() const;
    void offerWaitingFiles();

    DesktopContext& context_;
    std::map<const Form*, std::unique_ptr<FormWindow>> windows_;
    std::optional<DropData> waiting_;
};

}  // namespace corvane
