// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/windows_dialogs.h"

#include <utility>

#include "winapi/text.h"
#include "windows/windowing/box_watch.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

UINT kindOf(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return MB_OK;
        case Buttons::OkCancel:
            return MB_OKCANCEL;
        case Buttons::AbortRetryIgnore:
            return MB_ABORTRETRYIGNORE;
    }
    return MB_OK;
}

UINT kindOf(Icon icon) {
    switch (icon) {
        case Icon::Stop:
            return MB_ICONHAND;
        case Icon::Question:
            return MB_ICONQUESTION;
        case Icon::Exclamation:
            return MB_ICONEXCLAMATION;
        case Icon::Information:
            return MB_ICONASTERISK;
    }
    return MB_ICONASTERISK;
}

/// What closing a box with those buttons stands for.
int refusedBy(Buttons buttons) {
    if (buttons == Buttons::Ok) return IDOK;
    return buttons == Buttons::OkCancel ? IDCANCEL : IDABORT;
}

Answer answerOf(int button) {
    switch (button) {
        case IDOK:
            return Answer::Ok;
        case IDABORT:
            return Answer::Abort;
        case IDRETRY:
            return Answer::Retry;
        case IDIGNORE:
            return Answer::Ignore;
        default:
            return Answer::Cancel;
    }
}

/// A menu of the system; a command's number is one more than ours.
HMENU made(const std::vector<MenuEntry>& entries) {
    const HMENU menu = CreatePopupMenu();
    for (const MenuEntry& each : entries) {
        if (each.caption.empty()) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const UINT state = (each.enabled ? MF_ENABLED : MF_GRAYED) | (each.checked ? MF_CHECKED : MF_UNCHECKED);
        const bool isMenu = !each.entries.empty();
        const auto number =
            isMenu ? reinterpret_cast<UINT_PTR>(made(each.entries)) : static_cast<UINT_PTR>(each.command) + 1;
        AppendMenuW(menu, (isMenu ? MF_POPUP : MF_STRING) | state, number, shownText(each.caption).c_str());
    }
    return menu;
}

}  // namespace

std::optional<Answer> WindowsDialogs::ask(const Box& box) {
    const HWND before = GetActiveWindow();
    const HWND over = before != nullptr ? before : context_.panel;
    const bool onTop = over != nullptr && (GetWindowLongPtrW(over, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    const bool shown = over != nullptr && IsWindowVisible(over) != 0;
    // A program that has just been started, and shows no window yet, is what the user waits for.
    const bool leavesKeyboard = shown && anotherProgramIsInFront();
    shown_ = box.buttons;
    const UINT kind = kindOf(box.buttons) | kindOf(box.icon) | MB_TASKMODAL | (leavesKeyboard ? 0U : MB_SETFOREGROUND) |
                      (onTop ? MB_TOPMOST : 0U);
    int button = 0;
    {
        // Without an owner all windows of the thread are disabled, and the box may outlive the one it lies over.
        const BoxWatch watch(shown ? over : nullptr, leavesKeyboard);
        button = MessageBoxW(nullptr, shownLines(box.text).c_str(), shownText(box.title).c_str(), kind);
    }
    if (before != nullptr && IsWindow(before) != 0) SetActiveWindow(before);
    return button == 0 ? std::nullopt : std::optional(answerOf(button));
}

void WindowsDialogs::closeBox() {
    if (const HWND box = BoxWatch::box()) PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(refusedBy(shown_)), 0);
}

bool WindowsDialogs::raiseBox() { return BoxWatch::raise(); }

void WindowsDialogs::closeMenu() {
    wanted_.reset();
    if (menuUp_) EndMenu();
}

/// The system shows a menu in a loop of its own: it begins when the present handler is over.
void WindowsDialogs::showMenu(const std::vector<MenuEntry>& entries) {
    wanted_ = entries;
    context_.loop.afterMessage([this] {
        if (wanted_ && !isBoxUp() && !menuUp_) track(*std::exchange(wanted_, std::nullopt));
    });
}

void WindowsDialogs::track(const std::vector<MenuEntry>& entries) {
    tellTaken();
    const HMENU menu = made(entries);
    const HWND active = GetActiveWindow();
    const HWND owner = active != nullptr ? active : context_.panel;
    SetForegroundWindow(owner);  // else a click elsewhere would not close it
    POINT at{};
    GetCursorPos(&at);
    menuUp_ = true;
    const int number = TrackPopupMenu(menu, TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, at.x, at.y,
                                      0, owner, nullptr);
    menuUp_ = false;
    DestroyMenu(menu);
    chosen(number - 1);
}

void WindowsDialogs::help() {
    if (manual().empty()) return;
    ShellExecuteW(context_.panel, L"open", toWide(manual()).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace corvane
