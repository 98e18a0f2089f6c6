// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <optional>
#include <vector>

#include "shell/native/native_dialogs.h"
#include "windows/windowing/form_window.h"

namespace corvane {

/// Boxes, the popup menu and help by the system's own.
class WindowsDialogs : public NativeDialogs {
public:
    explicit WindowsDialogs(DesktopContext& context) : NativeDialogs(context.loop), context_(context) {}

    void help() override;
    bool raiseBox() override;

protected:
    std::optional<Answer> ask(const Box& box) override;
    void closeBox() override;
    void showMenu(const std::vector<MenuEntry>& entries) override;
    void closeMenu() override;

private:
    void track(const std::vector<MenuEntry>& entries);

    DesktopContext& context_;
    Buttons shown_ = Buttons::Ok;  ///< of the box that is up
    bool menuUp_ = false;
    std::optional<std::vector<MenuEntry>> wanted_;  ///< to be shown when the present message is handled
};

}  // namespace corvane
