// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/box_watch.h"

#include <algorithm>
#include <string_view>
#include <utility>
// After windows.h:
#include <commctrl.h>

namespace corvane {

namespace {

constexpr const wchar_t* kBoxClass = L"#32770";
constexpr UINT kRaise = WM_APP;
constexpr UINT kFlash = WM_APP + 1;

BoxWatch* innermost = nullptr;

bool isBox(HWND window) {
    wchar_t name[16] = {};
    return GetClassNameW(window, name, 16) > 0 && std::wstring_view(name) == kBoxClass;
}

}  // namespace

BoxWatch::BoxWatch(HWND over, bool leavesKeyboard)
    : over_(over),
      leavesKeyboard_(leavesKeyboard),
      messages_([this](UINT message, WPARAM, LPARAM) { return handle(message); }),
      outer_(innermost),
      hook_(SetWindowsHookExW(WH_CBT, &BoxWatch::watch, nullptr, GetCurrentThreadId())) {
    innermost = this;
}

BoxWatch::~BoxWatch() {
    innermost = outer_;
    UnhookWindowsHookEx(hook_);
}

HWND BoxWatch::box() { return innermost != nullptr ? innermost->box_ : nullptr; }

bool BoxWatch::raise() {
    const HWND up = box();
    if (up != nullptr) SetForegroundWindow(up);
    return up != nullptr;
}

LRESULT CALLBACK BoxWatch::watch(int code, WPARAM window, LPARAM details) {
    const auto which = reinterpret_cast<HWND>(window);
    BoxWatch* const self = innermost;
    if (self == nullptr) return CallNextHookEx(nullptr, code, window, details);
    if (code == HCBT_CREATEWND && self->box_ == nullptr && isBox(which)) self->begin(which);
    // A window that the box shuts, chosen in the task bar or by keyboard.
    const bool shut = self->box_ != nullptr && which != self->box_ && IsWindowEnabled(which) == 0;
    if (code == HCBT_ACTIVATE && shut) PostMessageW(self->messages_.handle(), kRaise, 0, 0);
    return CallNextHookEx(nullptr, code, window, details);
}

void BoxWatch::begin(HWND box) {
    box_ = box;
    SetWindowSubclass(box, &BoxWatch::filter, 1, reinterpret_cast<DWORD_PTR>(this));
}

LRESULT CALLBACK BoxWatch::filter(HWND box, UINT message, WPARAM first, LPARAM second, UINT_PTR, DWORD_PTR self) {
    if (message == WM_WINDOWPOSCHANGING) {
        reinterpret_cast<BoxWatch*>(self)->changing(*reinterpret_cast<WINDOWPOS*>(second));
    }
    return DefSubclassProc(box, message, first, second);
}

/// Until the box is seen, no change of it may bring it to the front; some systems would do so before they show it.
void BoxWatch::changing(WINDOWPOS& place) {
    if (leavesKeyboard_) place.flags |= SWP_NOACTIVATE;
    if ((place.flags & SWP_SHOWWINDOW) == 0) return;
    if (std::exchange(leavesKeyboard_, false)) PostMessageW(messages_.handle(), kFlash, 0, 0);
    if (const HWND under = std::exchange(over_, nullptr)) putOver(under, place);
}

void BoxWatch::putOver(HWND under, WINDOWPOS& place) const {
    RECT own{};
    RECT over{};
    GetWindowRect(box_, &own);
    GetWindowRect(under, &over);
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    GetMonitorInfoW(MonitorFromWindow(under, MONITOR_DEFAULTTONEAREST), &screen);
    const LONG width = own.right - own.left;
    const LONG height = own.bottom - own.top;
    const RECT& work = screen.rcWork;
    place.x = std::max(work.left, std::min((over.left + over.right - width) / 2, work.right - width));
    place.y = std::max(work.top, std::min((over.top + over.bottom - height) / 2, work.bottom - height));
    place.flags &= ~static_cast<UINT>(SWP_NOMOVE);
}

std::optional<LRESULT> BoxWatch::handle(UINT message) const {
    if (message == kRaise) {
        raise();
        return 0;
    }
    if (message != kFlash || box_ == nullptr) return std::nullopt;
    FLASHWINFO flash{sizeof flash, box_, FLASHW_ALL | FLASHW_TIMERNOFG, 0, 0};
    FlashWindowEx(&flash);
    return 0;
}

}  // namespace corvane
