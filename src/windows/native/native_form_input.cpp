// SPDX-License-Identifier: GPL-3.0-or-later
#include <array>
#include <cstdlib>
#include <optional>
#include <string_view>

#include "windows/native/native_form_window.h"

namespace corvane {

bool NativeWindow::filter(MSG& message) {
    if (!bound()) return false;
    if (takeHelpKey(message) || takeFormKey(message)) return true;
    const bool enterOrEscape =
        message.message == WM_KEYDOWN && (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE);
    if (enterOrEscape) {
        // A list that has dropped down, and a list of folders, know the key themselves.
        const HWND focus = GetFocus();
        const SystemControl* control = controlOf(focus);
        if (control == nullptr) control = controlOf(GetParent(focus));
        if (control != nullptr && control->takesEnter()) return false;
    }
    return IsDialogMessageW(handle(), &message) != 0;
}

bool NativeWindow::takeHelpKey(const MSG& message) {
    constexpr LPARAM kRepeated = 0x40000000;
    const bool pressed = message.message == WM_KEYDOWN && message.wParam == VK_F1 && (message.lParam & kRepeated) == 0;
    return pressed && native_.helpKey(shiftState());
}

/// A field takes a change of its own text back itself.
bool NativeWindow::takeFormKey(const MSG& message) {
    if (message.message != WM_KEYDOWN) return false;
    std::array<wchar_t, 8> name{};
    GetClassNameW(message.hwnd, name.data(), static_cast<int>(name.size()));
    const bool inField = std::wstring_view(name.data()) == WC_EDITW;
    if (inField && (message.wParam == 'Z' || message.wParam == 'Y')) return false;
    return native_.key({static_cast<int>(message.wParam), shiftState()});
}

/// What the system asks and tells of a control.
std::optional<LRESULT> NativeWindow::controlMessage(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_COMMAND:
            return command(first, second) ? std::optional<LRESULT>(0) : std::nullopt;
        case WM_HSCROLL:
            if (SystemControl* const control = controlOf(reinterpret_cast<HWND>(second))) {
                control->scroll(LOWORD(first), static_cast<short>(HIWORD(first)));
            }
            return 0;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(second);
            if (SystemControl* const control = controlOf(item.hwndItem)) control->draw(item);
            return TRUE;
        }
        case DM_GETDEFID:
            return defaultNumber();
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            SetBkMode(reinterpret_cast<HDC>(first), TRANSPARENT);
            SetTextColor(reinterpret_cast<HDC>(first), GetSysColor(COLOR_BTNTEXT));
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
        default:
            return std::nullopt;
    }
}

LRESULT NativeWindow::defaultNumber() const {
    for (const auto& [control, made] : controls_) {
        if (control->kind() != ControlKind::CommandButton) continue;
        if (!static_cast<const CommandButton*>(control)->Default) continue;
        return MAKELRESULT(GetDlgCtrlID(made->handle()), DC_HASDEFID);
    }
    return 0;
}

LRESULT NativeWindow::message(UINT message, WPARAM first, LPARAM second) {
    if (!bound()) return SystemWindow::message(message, first, second);
    if (const auto answer = controlMessage(message, first, second)) return *answer;
    if (const auto told = nativeMouse(message, second, {})) {
        mouse(*told);
        return 0;
    }
    switch (message) {
        case WM_ERASEBKGND: {
            RECT client{};
            GetClientRect(handle(), &client);
            FillRect(reinterpret_cast<HDC>(first), &client, GetSysColorBrush(COLOR_BTNFACE));
            return 1;
        }
        case WM_ACTIVATE:
            // A dialog of the system's own class would keep the focus by itself.
            if (LOWORD(first) == WA_INACTIVE) {
                if (IsChild(handle(), GetFocus()) != 0) focused_ = GetFocus();
            } else {
                native_.activated();
            }
            break;
        case WM_SETFOCUS:
            if (focused_ != nullptr) SetFocus(focused_);
            return 0;
        case WM_MOVE:
            placeChanged();
            return 0;
        case WM_SIZE:
            sizeChanged(first);
            return 0;
        case WM_GETMINMAXINFO:
            if (form().Resizable) {
                reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {least_.width, least_.height};
            }
            return 0;
        default:
            break;
    }
    return SystemWindow::message(message, first, second);
}

bool NativeWindow::command(WPARAM first, LPARAM second) {
    if (second == 0) {
        if (LOWORD(first) == IDCANCEL) {
            native_.cancel();
            return true;
        }
        // Enter: the number is the default button's.
        const HWND button = GetDlgItem(handle(), LOWORD(first));
        SystemControl* const control = controlOf(button);
        if (control != nullptr && IsWindowEnabled(button) != 0) control->command(BN_CLICKED);
        return true;
    }
    SystemControl* const control = controlOf(reinterpret_cast<HWND>(second));
    if (control != nullptr) control->command(HIWORD(first));
    return control != nullptr;
}

std::optional<NativeMouse> nativeMouse(UINT message, LPARAM place, PixelSize client) {
    NativeMouse told;
    told.button = message >= WM_RBUTTONDOWN ? kRightButton : kLeftButton;
    switch (message) {
        case WM_MOUSEMOVE:
            told.button = 0;
            break;
        case WM_LBUTTONDOWN:
        case WM_RBUTTONDOWN:
            told.act = NativeMouse::Act::Press;
            break;
        case WM_LBUTTONDBLCLK:
        case WM_RBUTTONDBLCLK:
            told.act = NativeMouse::Act::DoubleClick;
            break;
        case WM_LBUTTONUP:
        case WM_RBUTTONUP:
            told.act = NativeMouse::Act::Release;
            break;
        default:
            return std::nullopt;
    }
    const int x = GET_X_LPARAM(place);
    const int y = GET_Y_LPARAM(place);
    told.shift = shiftState();
    told.x = x;
    told.y = y;
    told.inside = x >= 0 && y >= 0 && x < client.width && y < client.height;
    return told;
}

void NativeWindow::mouse(const NativeMouse& mouse) {
    if (mouse.act == NativeMouse::Act::Move && dragStep()) return;
    if (mouse.act == NativeMouse::Act::Release && mouse.button == kLeftButton) {
        dragging_ = false;
        if (GetCapture() == handle()) ReleaseCapture();
    }
    native_.mouse(mouse);
}

void NativeWindow::beginDrag() {
    dragging_ = true;
    moved_ = false;
    GetCursorPos(&pressedAt_);
    RECT window{};
    GetWindowRect(handle(), &window);
    windowAt_ = {window.left, window.top};
    if (GetCapture() == nullptr) SetCapture(handle());
}

/// The window follows the pointer once that has left the place of the press: what was grabbed stays under it.
bool NativeWindow::dragStep() {
    if (!dragging_) return false;
    POINT at{};
    GetCursorPos(&at);
    dragging_ = (static_cast<unsigned>(GetKeyState(VK_LBUTTON)) & 0x8000U) != 0;
    const LONG across = at.x - pressedAt_.x;
    const LONG down = at.y - pressedAt_.y;
    moved_ = moved_ || std::abs(across) >= GetSystemMetrics(SM_CXDRAG) || std::abs(down) >= GetSystemMetrics(SM_CYDRAG);
    if (dragging_ && moved_) {
        ::SetWindowPos(handle(), nullptr, windowAt_.x + across, windowAt_.y + down, 0, 0,
                       SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    }
    return dragging_;
}

}  // namespace corvane
