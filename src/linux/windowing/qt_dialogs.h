// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "linux/windowing/form_window.h"
#include "shell/native/native_dialogs.h"

class QMenu;

namespace corvane {

class HelpWindow;

/// Boxes and menus of the tool kit; the manual in a window of our own.
class QtDialogs : public NativeDialogs {
public:
    explicit QtDialogs(DesktopContext& context);
    ~QtDialogs() override;

    void help() override;
    bool raiseBox() override;

protected:
    std::optional<Answer> ask(const Box& box) override;
    void closeBox() override;
    void showMenu(const std::vector<MenuEntry>& entries) override;
    void closeMenu() override;

private:
    void fill(QMenu& menu, const std::vector<MenuEntry>& entries);

    DesktopContext& context_;
    std::unique_ptr<QMenu> menu_;               ///< null: none is up
    std::unique_ptr<HelpWindow> manualWindow_;  ///< null: none is open
};

}  // namespace corvane
