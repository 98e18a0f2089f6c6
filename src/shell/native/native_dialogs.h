// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/ports.h"

namespace corvane {

/// An entry of a menu as it is shown. Without a caption: a line. With entries of its own: a menu in the menu.
struct MenuEntry {
    std::string caption;  ///< "&" before its letter, other ampersands doubled
    bool enabled = true;
    bool checkable = false;  ///< it is on or off
    bool checked = false;
    int command = -1;  ///< what chosen() is told; -1: none
    std::vector<MenuEntry> entries;
};

struct Box {
    std::string text;
    std::string title;
    Buttons buttons = Buttons::Ok;
    Icon icon = Icon::Information;
};

/// What a box answers when it is closed without one of its buttons, or cannot be shown.
Answer refusalOf(Buttons buttons);

/// Boxes and menus alike on all desktops: one menu at a time and none beside a box, a command once its menu is closed,
/// what a box answers that is closed. The desktop shows them.
class NativeDialogs : public Dialogs {
public:
    explicit NativeDialogs(EventLoop& loop) : loop_(loop) {}

    Answer messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) final;
    void popUp(MenuItem& menu) final;

    bool isBoxUp() const { return boxes_ > 0; }
    /// Brings a box that is up to the front, with the keyboard; false: none is.
    virtual bool raiseBox() = 0;
    /// Answers the box that is up with its refusal and closes the menu.
    void refuse();
    /// Called when a box or a menu comes up: it takes the pointer.
    /// A menu that is up would keep a lock of the screen from mouse and keyboard.
    void putMenuAway() { closeMenu(); }
    void onTaken(std::function<void()> handler) { taken_ = std::move(handler); }
    void setManual(std::string path) { manual_ = std::move(path); }  ///< "" or the path of its first page

protected:
    /// Waits for the answer; none: the box was closed, or could not be shown.
    virtual std::optional<Answer> ask(const Box& box) = 0;
    /// Closes the box that is up (the innermost one): ask() answers nothing or the refusal of its buttons.
    virtual void closeBox() = 0;
    /// Shows it at the pointer and returns at once; chosen() may follow.
    virtual void showMenu(const std::vector<MenuEntry>& entries) = 0;
    /// Also one that has been asked for and is not shown yet. None is up: nothing.
    virtual void closeMenu() = 0;

    /// The user chose a command; an event of its own follows once the menu is closed.
    void chosen(int command);
    void tellTaken() const;
    EventLoop& loop() const { return loop_; }
    const std::string& manual() const { return manual_; }

private:
    std::vector<MenuEntry> entriesOf(const MenuItem& parent);

    EventLoop& loop_;
    std::vector<MenuItem*> commands_;  ///< of the menu that was shown last
    std::function<void()> taken_;
    std::string manual_;
    int boxes_ = 0;
};

}  // namespace corvane
