// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/system_control.h"

#include "windows/native/native_form_window.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

SystemControl::SystemControl(NativeWindow& window, const Control& control, NativeEvents& events,
                             const wchar_t* className, DWORD style, DWORD extendedStyle)
    : window_(window), events_(events) {
    const DWORD tab = control.TabIndex >= 0 ? WS_TABSTOP : 0;
    handle_ = CreateWindowExW(extendedStyle, className, nullptr, WS_CHILD | style | tab, 0, 0, 1, 1, window.handle(),
                              window.numberOf(control), GetModuleHandleW(nullptr), nullptr);
    ask(WM_SETFONT, reinterpret_cast<WPARAM>(window.font()), FALSE);
    SetWindowSubclass(handle_, &SystemControl::procedure, 0, reinterpret_cast<DWORD_PTR>(this));
    window.add(control, *this);
}

SystemControl::~SystemControl() { RemoveWindowSubclass(handle_, &SystemControl::procedure, 0); }

LRESULT CALLBACK SystemControl::procedure(HWND widget, UINT message, WPARAM first, LPARAM second, UINT_PTR /*id*/,
                                          DWORD_PTR self) {
    auto& control = *reinterpret_cast<SystemControl*>(self);
    if (control.window_.bound()) {
        if (const auto answer = control.message(message, first, second)) return *answer;
    }
    const LRESULT answer = DefSubclassProc(widget, message, first, second);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && control.window_.bound()) {
        // Another window in front takes nothing from the control.
        const auto other = reinterpret_cast<HWND>(first);
        if (other != nullptr && GetAncestor(other, GA_ROOT) == control.window_.handle() && other != widget &&
            IsChild(widget, other) == 0) {
            control.focusChanged(message == WM_SETFOCUS);
        }
    }
    return answer;
}

std::optional<LRESULT> SystemControl::message(UINT /*message*/, WPARAM /*first*/, LPARAM /*second*/) {
    return std::nullopt;
}

void SystemControl::place(const PixelRect& room) {
    // Bits that are moved along belong to the size before, and what they leave is not always drawn again.
    ::SetWindowPos(handle_, nullptr, room.left, room.top, room.width, room.height,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
}

void SystemControl::setTip(const std::string& text) { window_.setTip(handle_, text); }

PixelSize SystemControl::textSize(const std::string& text) const { return window_.textSize(text); }

void SystemControl::setWindowText(const std::string& text) const {
    SetWindowTextW(handle_, shownText(text).c_str());
    InvalidateRect(handle_, nullptr, TRUE);
}

std::wstring SystemControl::windowText() const {
    std::wstring wide(static_cast<std::size_t>(GetWindowTextLengthW(handle_)) + 1, L'\0');
    wide.resize(static_cast<std::size_t>(GetWindowTextW(handle_, wide.data(), static_cast<int>(wide.size()))));
    return wide;
}

PixelSize SystemControl::clientSize() const {
    RECT client{};
    GetClientRect(handle_, &client);
    return {static_cast<int>(client.right), static_cast<int>(client.bottom)};
}

}  // namespace corvane
