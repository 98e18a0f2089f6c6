// SPDX-License-Identifier: GPL-3.0-or-later
#include "winapi/message_window.h"

#include <utility>

namespace corvane {

MessageWindow::MessageWindow(Handler handler, const std::wstring& name) : handler_(std::move(handler)) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    static const ATOM known = [program] {
        WNDCLASSEXW made{};
        made.cbSize = sizeof made;
        made.lpfnWndProc = &MessageWindow::procedure;
        made.hInstance = program;
        made.lpszClassName = kMessageClass;
        return RegisterClassExW(&made);
    }();
    (void)known;
    handle_ = CreateWindowExW(0, kMessageClass, name.c_str(), 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, program, nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

MessageWindow::~MessageWindow() {
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

LRESULT CALLBACK MessageWindow::procedure(HWND handle, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<MessageWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    if (self != nullptr) {
        const Handler handler = self->handler_;  // the handler may destroy the window
        if (const auto answer = handler(message, first, second)) return *answer;
    }
    return DefWindowProcW(handle, message, first, second);
}

}  // namespace corvane
