// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdlib>

#include "shell/drops.h"
#include "windows/drop.h"
#include "windows/text.h"
#include "windows/windowing/accessible_form.h"
#include "windows/windowing/canvas_window.h"

namespace corvane {

namespace {

struct ButtonMessage {
    int button = 0;
    bool down = false;
    bool isDouble = false;
};

ButtonMessage buttonOf(UINT message) {
    switch (message) {
        case WM_LBUTTONDOWN:
            return {kLeftButton, true, false};
        case WM_LBUTTONDBLCLK:
            return {kLeftButton, true, true};
        case WM_LBUTTONUP:
            return {kLeftButton, false, false};
        case WM_RBUTTONDOWN:
            return {kRightButton, true, false};
        case WM_RBUTTONDBLCLK:
            return {kRightButton, true, true};
        case WM_RBUTTONUP:
            return {kRightButton, false, false};
        case WM_MBUTTONDOWN:
            return {kMiddleButton, true, false};
        case WM_MBUTTONDBLCLK:
            return {kMiddleButton, true, true};
        case WM_MBUTTONUP:
            return {kMiddleButton, false, false};
        default:
            return {};
    }
}

bool isRepeat(LPARAM details) { return (static_cast<std::uint32_t>(details) & 0x40000000U) != 0; }

}  // namespace

LRESULT CanvasWindow::message(UINT message, WPARAM first, LPARAM second) {
    if (mouse(message, first, second) || key(message, first, second)) return 0;
    switch (message) {
        case WM_PAINT:
            paintDirty();
            return 0;
        case kTakeGeometry:
            if (stale_ && bound()) takeGeometry();
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_GETOBJECT:
            if (static_cast<LONG>(second) != OBJID_CLIENT || !bound()) break;
            return LresultFromObject(IID_IAccessible, first, accessible_);
        case WM_MOVE:
            placeChanged();
            return 0;
        case WM_SIZE:
            sizeChanged(first);
            return 0;
        case WM_ACTIVATE:
            if (LOWORD(first) != WA_INACTIVE && bound()) post([this] { form().Activate.raise(); });
            break;  // the system gives the focus
        case WM_SETFOCUS:
        case WM_KILLFOCUS:
            focusCame(message == WM_SETFOCUS);
            return 0;
        case WM_CANCELMODE:
            loseMouse();
            break;
        case WM_CAPTURECHANGED:
            if (reinterpret_cast<HWND>(second) != handle() && bound() && pointer_.holdsButton()) loseMouse();
            return 0;
        case WM_ENABLE:
            if (first == 0 && bound()) loseMouse();
            return 0;
        case WM_DROPFILES: {
            POINT at{};
            DragQueryPoint(reinterpret_cast<HDROP>(first), &at);
            const DropData data = filesOf(reinterpret_cast<HGLOBAL>(first));
            DragFinish(reinterpret_cast<HDROP>(first));
            dropped(data, at);
            return 0;
        }
        case WM_NOTIFY:
            tip_.notify(second, [this]() -> std::string {
                POINT at{};
                GetCursorPos(&at);
                ScreenToClient(handle(), &at);
                if (!bound()) return {};
                return toolTip(*pointer_.hit(
                    {static_cast<double>(context().toTwips(at.x)), static_cast<double>(context().toTwips(at.y))}));
            });
            return 0;
        default:
            break;
    }
    return FormWindow::message(message, first, second);
}

Pointer::Place CanvasWindow::placeOfMouse(LPARAM place) const {
    return {static_cast<double>(context().toTwips(GET_X_LPARAM(place))),
            static_cast<double>(context().toTwips(GET_Y_LPARAM(place)))};
}

POINT CanvasWindow::screenPoint(LPARAM place) const {
    POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ClientToScreen(handle(), &at);
    return at;
}

bool CanvasWindow::mouse(UINT message, WPARAM /*keys*/, LPARAM place) {
    const ButtonMessage what = buttonOf(message);
    if (what.button == 0 && message != WM_MOUSEMOVE) return false;
    if (!bound()) return true;
    const Pointer::Place at = placeOfMouse(place);
    if (message == WM_MOUSEMOVE) {
        if (pointer_.dragging() && dragStep(screenPoint(place))) return true;
        tip_.over(pointer_.hit(at));
        pointer_.move(shiftState(), at);
    } else if (what.down) {
        setFocused(nullptr);
        RECT window{};
        GetWindowRect(handle(), &window);
        pressedAt_ = screenPoint(place);
        windowAt_ = {window.left, window.top};
        if (GetCapture() == nullptr) SetCapture(handle());
        pointer_.press(what.button, shiftState(), at, what.isDouble);
    } else {
        const bool held = pointer_.holdsButton();
        pointer_.release(what.button, shiftState(), at);
        if (held && !pointer_.holdsButton() && GetCapture() == handle()) ReleaseCapture();
    }
    return true;
}

void CanvasWindow::loseMouse() {
    pointer_.lose();
    if (GetCapture() == handle()) ReleaseCapture();
}

/// The window follows the pointer: what was grabbed stays under it. A hand that shakes in a click still clicks.
bool CanvasWindow::dragStep(POINT at) {
    const LONG across = at.x - pressedAt_.x;
    const LONG down = at.y - pressedAt_.y;
    const bool away = std::abs(across) >= GetSystemMetrics(SM_CXDRAG) || std::abs(down) >= GetSystemMetrics(SM_CYDRAG);
    if (away) pointer_.moved();
    if (!pointer_.wasMoved() && !dragsAtOnce()) return true;
    ::SetWindowPos(handle(), nullptr, windowAt_.x + across, windowAt_.y + down, 0, 0,
                   SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
    return true;
}

bool CanvasWindow::key(UINT message, WPARAM code, LPARAM details) {
    const bool known = message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_KEYUP ||
                       message == WM_SYSKEYUP || message == WM_CHAR || message == WM_SYSCHAR;
    if (!known || !bound()) return false;
    const KeyArgs args{static_cast<int>(code), shiftState()};
    switch (message) {
        case WM_SYSKEYDOWN:
        case WM_KEYDOWN:
            // A form without keys leaves Alt+F4 to the system, which asks it to close.
            if (!form().KeyDown.isTied()) return false;
            if (takeFocusKey(args, isRepeat(details))) {
                // What was pressed types no character either.
                MSG typed{};
                PeekMessageW(&typed, handle(), WM_CHAR, WM_CHAR, PM_REMOVE);
                return true;
            }
            if (!(isRepeat(details) && args.keyCode == kKeyAlt)) run([&] { form().KeyDown.raise(args); });
            return true;
        case WM_SYSKEYUP:
        case WM_KEYUP:
            if (!form().KeyUp.isTied()) return false;
            run([&] { form().KeyUp.raise(args); });
            return true;
        case WM_CHAR: {
            const auto unit = static_cast<wchar_t>(code);
            if (IS_HIGH_SURROGATE(unit)) {
                high_ = unit;
            } else if (IS_LOW_SURROGATE(unit) && high_ != 0) {
                typed(0x10000U + ((high_ & 0x3FFU) << 10U) + (unit & 0x3FFU));
                high_ = 0;
            } else {
                typed(unit);
            }
            return true;
        }
        default:
            return code != VK_SPACE;  // Alt and a letter: no menu to open, no sound; Alt+Space is the system's
    }
}

void CanvasWindow::typed(char32_t character) {
    run([&] {
        form().KeyPress.raise(static_cast<int>(character));
        PictureBox* const box = bound() ? keyBox() : nullptr;
        if (box != nullptr) box->KeyPress.raise(static_cast<int>(character));
    });
}

/// Only a picture box can hold the keyboard focus here.
PictureBox* CanvasWindow::keyBox() const {
    for (Control* control : form().controls()) {
        if (control->kind() != ControlKind::PictureBox || !control->Visible) continue;
        auto* const box = static_cast<PictureBox*>(control);
        if (box->KeyPress.isTied()) return box;
    }
    return nullptr;
}

/// at: pixels of the client area.
void CanvasWindow::dropped(const DropData& data, POINT at) {
    if (!bound()) return;
    auto* const under = dynamic_cast<MouseControl*>(pointer_.hit(placeOfMouse(MAKELPARAM(at.x, at.y))));
    if (under != nullptr && under->OLEDragDrop.isTied()) {
        post([under, data] { under->OLEDragDrop.raise(data); });
    } else {
        dropFiles(data);
    }
}

void CanvasWindow::focusCame(bool got) {
    if (bound()) post([this, got] { (got ? form().GotFocus : form().LostFocus).raise(); });
}

bool CanvasWindow::takesFiles() const { return bound() && fileTakerOf(form()) != nullptr; }

void CanvasWindow::dropFiles(const DropData& data) {
    MouseControl* const taker = bound() ? fileTakerOf(form()) : nullptr;
    if (taker != nullptr) post([taker, data] { taker->OLEDragDrop.raise(data); });
}

}  // namespace corvane
