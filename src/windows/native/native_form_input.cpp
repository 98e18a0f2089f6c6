// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>

#include "windows/native/native_form_window.h"

namespace corvane {

bool NativeWindow::filter(MSG& message) {
    if (!isBound()) return false;
    if (takeHelpKey(message)) return true;
    const bool enterOrEscape =
        message.message == WM_KEYDOWN && (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE);
    if (enterOrEscape) {
        // A list that has dropped down, and a list of folders, know the key themselves.
        const HWND focus = GetFocus();
        const Binder* binder = binderOf(focus);
        if (binder == nullptr) binder = binderOf(GetParent(focus));
        if (binder != nullptr && binder->takesEnter()) return false;
    }
    return IsDialogMessageW(handle(), &message) != 0;
}

/// Of the keys, the form is told of F1 alone: the others are its controls'.
bool NativeWindow::takeHelpKey(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_F1 || !shownForm().KeyDown.isTied()) return false;
    constexpr LPARAM kRepeated = 0x40000000;
    if ((message.lParam & kRepeated) != 0) return false;
    later([this, key = KeyArgs{kKeyF1, shiftState()}] { shownForm().KeyDown.raise(key); });
    return true;
}

LRESULT NativeWindow::message(UINT message, WPARAM first, LPARAM second) {
    if (!isBound()) return FormWindow::message(message, first, second);
    switch (message) {
        case WM_COMMAND:
            if (command(first, second)) return 0;
            break;
        case WM_HSCROLL:
            if (Binder* const binder = binderOf(reinterpret_cast<HWND>(second))) {
                binder->scroll(LOWORD(first), static_cast<short>(HIWORD(first)));
            }
            return 0;
        case WM_DRAWITEM: {
            const auto& item = *reinterpret_cast<const DRAWITEMSTRUCT*>(second);
            if (Binder* const binder = binderOf(item.hwndItem)) binder->draw(item);
            return TRUE;
        }
        case DM_GETDEFID:
            for (const auto& each : binders_) {
                if (each->control().kind() != ControlKind::CommandButton) continue;
                if (!static_cast<const CommandButton&>(each->control()).Default) continue;
                return MAKELRESULT(GetDlgCtrlID(each->widget()), DC_HASDEFID);
            }
            return 0;
        case WM_CTLCOLORSTATIC:
        case WM_CTLCOLORBTN:
            SetBkMode(reinterpret_cast<HDC>(first), TRANSPARENT);
            SetTextColor(reinterpret_cast<HDC>(first), GetSysColor(COLOR_BTNTEXT));
            return reinterpret_cast<LRESULT>(GetSysColorBrush(COLOR_BTNFACE));
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
            } else if (shownForm().Activate.isTied()) {
                apply([this] { shownForm().Activate.raise(); });
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
            if (shownForm().Resizable) {
                const SIZE least = windowSize(shownForm().MinWidth, shownForm().MinHeight);
                reinterpret_cast<MINMAXINFO*>(second)->ptMinTrackSize = {least.cx, least.cy};
            }
            return 0;
        case WM_LBUTTONDOWN:
        case WM_LBUTTONUP:
        case WM_RBUTTONDOWN:
        case WM_RBUTTONUP:
        case WM_MOUSEMOVE:
            mouse(message, second);
            return 0;
        default:
            break;
    }
    return FormWindow::message(message, first, second);
}

bool NativeWindow::command(WPARAM first, LPARAM second) {
    if (second == 0) {
        if (LOWORD(first) == IDCANCEL) {
            pressCancel();
            return true;
        }
        // Enter: the number is the default button's.
        const HWND button = GetDlgItem(handle(), LOWORD(first));
        if (Binder* const binder = binderOf(button); binder != nullptr && IsWindowEnabled(button) != 0) {
            binder->command(BN_CLICKED);
        }
        return true;
    }
    Binder* const binder = binderOf(reinterpret_cast<HWND>(second));
    if (binder == nullptr) return false;
    binder->command(HIWORD(first));
    return true;
}

void NativeWindow::pressCancel() {
    for (Control* each : shownForm().controls()) {
        if (each->kind() != ControlKind::CommandButton) continue;
        auto& button = static_cast<CommandButton&>(*each);
        if (button.Cancel && button.Enabled) return apply([&button] { button.Click.raise(); });
    }
}

void NativeWindow::mouse(UINT message, LPARAM place) {
    if (message == WM_MOUSEMOVE && dragStep()) return;
    if (message == WM_LBUTTONUP) {
        dragging_ = false;
        if (GetCapture() == handle()) ReleaseCapture();
    }
    const bool left = message == WM_LBUTTONDOWN || message == WM_LBUTTONUP;
    const int button = message == WM_MOUSEMOVE ? 0 : left ? kLeftButton : kRightButton;
    const MouseArgs args{button, shiftState(), scale_.twipsAcross(GET_X_LPARAM(place)),
                         scale_.twipsDown(GET_Y_LPARAM(place))};
    apply([&] {
        Form& form = shownForm();
        if (message == WM_MOUSEMOVE) {
            form.MouseMove.raise(args);
        } else if (message == WM_LBUTTONDOWN || message == WM_RBUTTONDOWN) {
            form.MouseDown.raise(args);
        } else {
            form.MouseUp.raise(args);
        }
    });
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
