// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

#include "linux/windowing/form_window.h"
#include "platform/ports.h"

class QMenu;

namespace corvane {

class HelpWindow;

class QtDialogs : public Dialogs {
public:
    explicit QtDialogs(DesktopContext& context);
    ~QtDialogs() override;

    Answer messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) override;
    void popUp(MenuItem& menu) override;
    void help() override;

    bool isBoxUp() const { return !context_.box.isNull(); }
    /// Answers the box that is up with its refusal and closes the menu.
    void refuse();
    void setManual(std::string path) { manual_ = std::move(path); }  ///< "" or the path of its first page

private:
    void fill(QMenu& menu, const MenuItem& parent);
    void closeMenu();

    DesktopContext& context_;
    std::unique_ptr<QMenu> menu_;               ///< null: none is up
    std::unique_ptr<HelpWindow> manualWindow_;  ///< null: none is open
    std::string manual_;
};

}  // namespace corvane
