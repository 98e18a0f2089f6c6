// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/native_dialogs.h"

#include "forms/menu.h"
#include "shell/access_keys.h"

namespace corvane {

Answer refusalOf(Buttons buttons) {
    if (buttons == Buttons::Ok) return Answer::Ok;
    return buttons == Buttons::OkCancel ? Answer::Cancel : Answer::Abort;
}

Answer NativeDialogs::messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) {
    closeMenu();
    tellTaken();
    ++boxes_;
    const std::optional<Answer> answer = ask({text, title, buttons, icon});
    --boxes_;
    return answer.value_or(refusalOf(buttons));
}

void NativeDialogs::refuse() {
    closeMenu();
    if (isBoxUp()) closeBox();
}

void NativeDialogs::popUp(MenuItem& menu) {
    if (isBoxUp()) return;
    closeMenu();
    commands_.clear();
    showMenu(entriesOf(menu));
}

std::vector<MenuEntry> NativeDialogs::entriesOf(const MenuItem& parent) {
    const AccessKeys keys(parent);
    std::vector<MenuEntry> entries;
    for (MenuItem* const item : parent.children) {
        if (!item->Visible) continue;
        MenuEntry entry;
        if (!item->isSeparator()) {
            entry.caption = keys.marked(*item, item->Caption);
            entry.enabled = item->Enabled;
            entry.checkable = item->Checkable || item->Checked;  // a mark alone says nothing where it is missing
            entry.checked = item->Checked;
            entry.entries = entriesOf(*item);
            if (item->children.empty()) {
                entry.command = static_cast<int>(commands_.size());
                commands_.push_back(item);
            }
        }
        entries.push_back(std::move(entry));
    }
    return entries;
}

/// Where it is told the menu's key or mouse handler may still run, which would go on behind a box that the command puts
/// up.
void NativeDialogs::chosen(int command) {
    if (command < 0 || command >= static_cast<int>(commands_.size())) return;
    MenuItem* const item = commands_[static_cast<std::size_t>(command)];
    loop_.post([this, item] {
        closeMenu();  // an assistive program chooses without closing it
        item->Click.raise();
    });
}

void NativeDialogs::tellTaken() const {
    if (taken_) taken_();
}

}  // namespace corvane
