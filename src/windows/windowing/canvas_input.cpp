// SPDX-License-Identifier: GPL-3.0-or-later
// What the system tells a surface of mouse and keyboard, in the words of its window.
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

DrawnWindow::Place placeIn(POINT at) { return {static_cast<double>(at.x), static_cast<double>(at.y)}; }

}  // namespace

bool CanvasWindow::mouse(UINT message, LPARAM place) {
    const ButtonMessage what = buttonOf(message);
    if (what.button == 0 && message != WM_MOUSEMOVE) return false;
    DrawnWindow* const window = live();
    if (window == nullptr) return true;
    POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    const DrawnWindow::Place here = placeIn(at);
    ClientToScreen(handle(), &at);
    const PixelPoint onScreen{static_cast<int>(at.x), static_cast<int>(at.y)};
    if (message == WM_MOUSEMOVE) {
        if (!window->isDragged()) tipOver(here);
        // Who holds a button has the pointer's captured: a release elsewhere is told.
        window->mouseMoved(shiftState(), true, here, onScreen);
    } else if (what.down) {
        if (GetCapture() == nullptr) SetCapture(handle());
        window->mouseDown(what.button, shiftState(), here, onScreen, what.isDouble);
    } else {
        const bool held = window->holdsMouse();
        window->mouseUp(what.button, shiftState(), here);
        if (held && !window->holdsMouse()) letMouseGo();
    }
    return true;
}

/// The system tells the wheel to the window with the keyboard: where the pointer is elsewhere, it is not this one's.
bool CanvasWindow::wheel(HWND over, UINT message, WPARAM turned, LPARAM place) {
    if (message != WM_MOUSEWHEEL) return false;
    DrawnWindow* const window = live();
    POINT at{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    ScreenToClient(over, &at);
    RECT client{};
    GetClientRect(over, &client);
    if (window == nullptr || PtInRect(&client, at) == 0) return false;
    const double notches = static_cast<double>(GET_WHEEL_DELTA_WPARAM(turned)) / WHEEL_DELTA;
    window->wheelTurned(notches, shiftState(), placeIn(at));
    return true;
}

bool CanvasWindow::key(UINT message, WPARAM code, LPARAM details) {
    const bool known = message == WM_KEYDOWN || message == WM_SYSKEYDOWN || message == WM_KEYUP ||
                       message == WM_SYSKEYUP || message == WM_CHAR || message == WM_SYSCHAR;
    DrawnWindow* const window = live();
    if (!known || window == nullptr) return false;
    const KeyArgs args{static_cast<int>(code), shiftState()};
    switch (message) {
        case WM_SYSKEYDOWN:
        case WM_KEYDOWN:
            // A form without keys leaves Alt+F4 to the system, which asks it to close.
            if (!window->form().KeyDown.isTied()) return false;
            if (isRepeat(details) && args.keyCode == kKeyAlt) return true;
            if (window->keyDown(args, isRepeat(details))) {
                MSG typed{};  // what was pressed types no character either
                PeekMessageW(&typed, handle(), WM_CHAR, WM_CHAR, PM_REMOVE);
            }
            return true;
        case WM_SYSKEYUP:
        case WM_KEYUP:
            if (!window->form().KeyUp.isTied()) return false;
            window->keyUp(args);
            return true;
        case WM_CHAR:
            typed(static_cast<wchar_t>(code));
            return true;
        default:
            return code != VK_SPACE;  // Alt and a letter: no menu to open, no sound; Alt+Space is the system's
    }
}

void CanvasWindow::typed(wchar_t unit) {
    if (IS_HIGH_SURROGATE(unit)) {
        high_ = unit;
    } else if (IS_LOW_SURROGATE(unit) && high_ != 0) {
        live()->typed(static_cast<int>(0x10000U + ((high_ & 0x3FFU) << 10U) + (unit & 0x3FFU)));
        high_ = 0;
    } else {
        live()->typed(unit);
    }
}

void CanvasWindow::keyboardCame(bool here) {
    if (DrawnWindow* const window = live()) window->keyboardCame(here);
}

void CanvasWindow::askToClose() {
    if (DrawnWindow* const window = live()) window->requestClose();
}

/// at: pixels of the client area.
void CanvasWindow::dropped(const DropData& data, POINT at) {
    if (DrawnWindow* const window = live()) window->dropped(data, placeIn(at));
}

/// A tip that says something else at each place begins afresh with each.
void CanvasWindow::tipOver(DrawnWindow::Place at) {
    const Control& control = live()->controlAt(at);
    const auto* const mouse = dynamic_cast<const MouseControl*>(&control);
    const bool moves = mouse != nullptr && mouse->TipAt && live()->tipAt(at).moves;
    tip_.over(&control, moves ? static_cast<int>(at.x) : 0);
}

std::string CanvasWindow::tipUnderPointer() const {
    POINT at{};
    GetCursorPos(&at);
    ScreenToClient(handle(), &at);
    return isBound() ? live()->tipAt(placeIn(at)).text : std::string();
}

}  // namespace corvane
