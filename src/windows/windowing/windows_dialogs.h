// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/ports.h"
#include "windows/windowing/form_window.h"

namespace corvane {

/// Boxes, the popup menu and help by the system's own.
class WindowsDialogs : public Dialogs {
public:
    explicit WindowsDialogs(DesktopContext& context) : context_(context) {}

    Answer messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) override;
    void popUp(MenuItem& menu) override;
    void help() override;

    void setManual(std::string page) { manual_ = std::move(page); }
    /// Closes what is up: a box answers with its refusal.
    void refuse();
    bool isBoxUp() const { return boxes_ > 0; }
    bool raiseBox() const;  ///< brings a box that is up to the front; false: none is
    /// Called when a box or a menu comes up: it takes the pointer.
    void onTaken(std::function<void()> handler) { taken_ = std::move(handler); }

private:
    void track(MenuItem& menu);
    void fill(HMENU menu, const MenuItem& parent);

    DesktopContext& context_;
    std::string manual_;
    std::function<void()> taken_;
    std::vector<MenuItem*> commands_;  ///< of the menu that is up; a command's number less 1 is its place
    int boxes_ = 0;
    Buttons shown_ = Buttons::Ok;  ///< of the box that is up
    bool menuUp_ = false;
    MenuItem* wanted_ = nullptr;  ///< to be shown when the present message is handled
};

}  // namespace corvane
