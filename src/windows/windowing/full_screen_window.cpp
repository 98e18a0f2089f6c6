// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/full_screen_window.h"

#include "windows/windowing/canvas_window.h"

namespace corvane {

namespace {

constexpr const wchar_t* kFullScreenClass = L"CorvaneFullScreen";
constexpr UINT kRestMs = 2000;
constexpr UINT_PTR kRestTimer = 1;

}  // namespace

FullScreenWindow::FullScreenWindow(CanvasWindow& owner) : owner_(owner) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    static const ATOM known = [program] {
        WNDCLASSEXW made{};
        made.cbSize = sizeof made;
        made.style = CS_DBLCLKS;
        made.lpfnWndProc = &FullScreenWindow::procedure;
        made.hInstance = program;
        made.hbrBackground = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
        made.lpszClassName = kFullScreenClass;
        return RegisterClassExW(&made);
    }();
    (void)known;
    wchar_t title[128] = {};
    GetWindowTextW(owner.handle(), title, 128);
    handle_ = CreateWindowExW(WS_EX_TOPMOST, kFullScreenClass, title, WS_POPUP | WS_CLIPCHILDREN, 0, 0, 1, 1, nullptr,
                              nullptr, program, nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

FullScreenWindow::~FullScreenWindow() {
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void FullScreenWindow::show(const RECT& screen, bool takesFocus) {
    ::SetWindowPos(handle_, takesFocus ? HWND_TOPMOST : HWND_TOP, screen.left, screen.top, screen.right - screen.left,
                   screen.bottom - screen.top, SWP_SHOWWINDOW | SWP_NOACTIVATE);
    if (takesFocus) {
        SetForegroundWindow(handle_);
        SetFocus(handle_);
    }
    GetCursorPos(&pointer_);
    SetTimer(handle_, kRestTimer, kRestMs, nullptr);
}

LRESULT CALLBACK FullScreenWindow::procedure(HWND handle, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<FullScreenWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    return self != nullptr ? self->message(message, first, second) : DefWindowProcW(handle, message, first, second);
}

LRESULT FullScreenWindow::message(UINT message, WPARAM first, LPARAM second) {
    if (message == WM_MOUSEMOVE) pointerMoved();
    if (owner_.mouse(message, second) || owner_.wheel(handle_, message, first, second)) return 0;
    if (owner_.key(message, first, second)) return 0;
    switch (message) {
        case WM_TIMER:
            hidden_ = true;
            KillTimer(handle_, kRestTimer);
            SetCursor(nullptr);
            return 0;
        case WM_SETCURSOR:
            SetCursor(hidden_ ? nullptr : LoadCursorW(nullptr, IDC_ARROW));
            return TRUE;
        case WM_KILLFOCUS:
            owner_.keyboardCame(false);
            return 0;
        case WM_ACTIVATE:
            activated(LOWORD(first) != WA_INACTIVE, reinterpret_cast<HWND>(second));
            break;  // the system gives the focus
        case WM_CLOSE:
            owner_.askToClose();
            return 0;
        default:
            break;
    }
    return DefWindowProcW(handle_, message, first, second);
}

/// Above everything as long as it is used; then behind the window that is used instead, which would be covered.
void FullScreenWindow::activated(bool active, HWND other) {
    constexpr UINT kOrderOnly = SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE;
    if (IsWindowVisible(handle_) == 0) return;
    ::SetWindowPos(handle_, active ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, kOrderOnly);
    if (active) return;
    const HWND front = other != nullptr ? other : GetForegroundWindow();
    if (front == nullptr || front == handle_ || (GetWindowLongPtrW(front, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0) return;
    ::SetWindowPos(handle_, front, 0, 0, 0, 0, kOrderOnly);
}

void FullScreenWindow::pointerMoved() {
    POINT at{};
    GetCursorPos(&at);
    if (at.x == pointer_.x && at.y == pointer_.y) return;  // told without a move, when windows change
    pointer_ = at;
    hidden_ = false;
    SetCursor(LoadCursorW(nullptr, IDC_ARROW));
    SetTimer(handle_, kRestTimer, kRestMs, nullptr);
}

}  // namespace corvane
