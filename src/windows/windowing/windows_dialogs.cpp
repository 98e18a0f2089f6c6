// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/windows_dialogs.h"

#include <algorithm>
#include <utility>

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
        AppendMenuW(menu, (isMenu ? MF_POPUP : MF_STRING) | state, number, toWide(each.caption).c_str());
    }
    return menu;
}

}  // namespace

std::optional<Answer> WindowsDialogs::ask(const Box& box) {
    const HWND before = GetActiveWindow();
    const HWND over = before != nullptr ? before : context_.panel;
    const bool onTop = over != nullptr && (GetWindowLongPtrW(over, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
    const bool shown = over != nullptr && IsWindowVisible(over) != 0;
    const HHOOK outer = placing;
    placedOver = shown ? over : nullptr;
    placing = SetWindowsHookExW(WH_CBT, &placeBox, nullptr, GetCurrentThreadId());
    shown_ = box.buttons;
    // Without an owner all windows of the thread are disabled, and the box may outlive the one it lies over.
    const int button = MessageBoxW(nullptr, toWide(box.text).c_str(), toWide(box.title).c_str(),
                                   kindOf(box.buttons) | kindOf(box.icon) | MB_TASKMODAL | MB_SETFOREGROUND |
                                       (onTop ? static_cast<UINT>(MB_TOPMOST) : 0U));
    UnhookWindowsHookEx(placing);
    placing = outer;
    if (before != nullptr && IsWindow(before) != 0) SetActiveWindow(before);
    return button == 0 ? std::nullopt : std::optional(answerOf(button));
}

void WindowsDialogs::closeBox() {
    const HWND box = isBoxUp() ? boxOf(GetCurrentThreadId()) : nullptr;
    if (box != nullptr) PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(refusedBy(shown_)), 0);
}

bool WindowsDialogs::raiseBox() const {
    const HWND box = isBoxUp() ? boxOf(GetCurrentThreadId()) : nullptr;
    if (box != nullptr) SetForegroundWindow(box);
    return box != nullptr;
}

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
