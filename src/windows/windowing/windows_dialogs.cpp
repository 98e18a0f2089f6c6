// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/windows_dialogs.h"

#include <algorithm>
#include <utility>

#include "shell/access_keys.h"
#include "windows/text.h"

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

int refusalOf(Buttons buttons) {
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

constexpr const wchar_t* kBoxClass = L"#32770";

bool isBox(HWND window) {
    wchar_t name[16] = {};
    return GetClassNameW(window, name, 16) > 0 && std::wstring_view(name) == kBoxClass;
}

HWND boxOf(DWORD thread) {
    HWND found = nullptr;
    EnumThreadWindows(
        thread,
        [](HWND window, LPARAM place) -> BOOL {
            if (!isBox(window)) return TRUE;
            *reinterpret_cast<HWND*>(place) = window;
            return FALSE;
        },
        reinterpret_cast<LPARAM>(&found));
    return found;
}

/// Puts a box over the panel, when it is about to be seen. One hook lives at a time: boxes are modal.
HHOOK placing = nullptr;
HWND placedOver = nullptr;

LRESULT CALLBACK placeBox(int code, WPARAM window, LPARAM details) {
    const auto box = reinterpret_cast<HWND>(window);
    if (code == HCBT_ACTIVATE && isBox(box) && placedOver != nullptr) {
        RECT own{};
        RECT over{};
        GetWindowRect(box, &own);
        GetWindowRect(placedOver, &over);
        MONITORINFO screen{};
        screen.cbSize = sizeof screen;
        GetMonitorInfoW(MonitorFromWindow(placedOver, MONITOR_DEFAULTTONEAREST), &screen);
        const LONG width = own.right - own.left;
        const LONG height = own.bottom - own.top;
        const RECT& work = screen.rcWork;
        const LONG left = std::max(work.left, std::min((over.left + over.right - width) / 2, work.right - width));
        const LONG top = std::max(work.top, std::min((over.top + over.bottom - height) / 2, work.bottom - height));
        ::SetWindowPos(box, nullptr, left, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        placedOver = nullptr;
    }
    return CallNextHookEx(placing, code, window, details);
}

}  // namespace

Answer WindowsDialogs::messageBox(const std::string& text, const std::string& title, Buttons buttons, Icon icon) {
    if (menuUp_) EndMenu();
    if (taken_) taken_();
    const HWND before = GetActiveWindow();
    const HWND over = before != nullptr ? before : context_.panel;
    const bool onTop = over != nullptr && (GetWindowLongPtrW(over, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    const bool shown = over != nullptr && IsWindowVisible(over) != 0;
    const HHOOK outer = placing;
    placedOver = shown ? over : nullptr;
    placing = SetWindowsHookExW(WH_CBT, &placeBox, nullptr, GetCurrentThreadId());
    ++boxes_;
    shown_ = buttons;
    // Without an owner all windows of the thread are disabled, and the box may outlive the one it lies over.
    const int button = MessageBoxW(nullptr, toWide(text).c_str(), toWide(title).c_str(),
                                   kindOf(buttons) | kindOf(icon) | MB_TASKMODAL | MB_SETFOREGROUND |
                                       (onTop ? static_cast<UINT>(MB_TOPMOST) : 0U));
    --boxes_;
    UnhookWindowsHookEx(placing);
    placing = outer;
    if (before != nullptr && IsWindow(before) != 0) SetActiveWindow(before);
    return button == 0 ? answerOf(refusalOf(buttons)) : answerOf(button);
}

void WindowsDialogs::refuse() {
    wanted_ = nullptr;
    if (menuUp_) EndMenu();
    const HWND box = isBoxUp() ? boxOf(GetCurrentThreadId()) : nullptr;
    if (box != nullptr) PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(refusalOf(shown_)), 0);
}

bool WindowsDialogs::raiseBox() const {
    const HWND box = isBoxUp() ? boxOf(GetCurrentThreadId()) : nullptr;
    if (box != nullptr) SetForegroundWindow(box);
    return box != nullptr;
}

void WindowsDialogs::fill(HMENU menu, const MenuItem& parent) {
    const AccessKeys keys(parent);
    for (MenuItem* const item : parent.children) {
        if (!item->Visible) continue;
        if (item->isSeparator()) {
            AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
            continue;
        }
        const std::wstring caption = toWide(keys.marked(*item, item->Caption));
        const UINT state = (item->Enabled ? MF_ENABLED : MF_GRAYED) | (item->Checked ? MF_CHECKED : MF_UNCHECKED);
        if (!item->children.empty()) {
            const HMENU sub = CreatePopupMenu();
            fill(sub, *item);
            AppendMenuW(menu, MF_POPUP | state, reinterpret_cast<UINT_PTR>(sub), caption.c_str());
            continue;
        }
        commands_.push_back(item);
        AppendMenuW(menu, MF_STRING | state, commands_.size(), caption.c_str());
    }
}

void WindowsDialogs::popUp(MenuItem& menu) {
    if (isBoxUp()) return;
    if (menuUp_) EndMenu();
    // The system shows a menu in a loop of its own: it begins when the present handler is over.
    wanted_ = &menu;
    context_.loop.afterMessage([this] {
        if (MenuItem* const asked = std::exchange(wanted_, nullptr)) track(*asked);
    });
}

void WindowsDialogs::track(MenuItem& menu) {
    if (isBoxUp() || menuUp_) return;
    if (taken_) taken_();
    commands_.clear();
    const HMENU shown = CreatePopupMenu();
    fill(shown, menu);
    const HWND active = GetActiveWindow();
    const HWND owner = active != nullptr ? active : context_.panel;
    SetForegroundWindow(owner);  // else a click elsewhere would not close it
    POINT at{};
    GetCursorPos(&at);
    menuUp_ = true;
    const auto command = static_cast<std::size_t>(TrackPopupMenu(
        shown, TPM_RETURNCMD | TPM_LEFTALIGN | TPM_TOPALIGN | TPM_RIGHTBUTTON, at.x, at.y, 0, owner, nullptr));
    menuUp_ = false;
    DestroyMenu(shown);
    if (command == 0 || command > commands_.size()) return;
    MenuItem* const item = commands_[command - 1];
    context_.loop.enter([item] { item->Click.raise(); });
}

void WindowsDialogs::help() {
    if (manual_.empty()) return;
    ShellExecuteW(context_.panel, L"open", toWide(manual_).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

}  // namespace corvane
