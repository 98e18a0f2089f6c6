// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/form_window.h"

#include <string_view>

#include "windows/resource.h"
#include "windows/windowing/box_watch.h"
#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr const wchar_t* kFormClass = L"CorvaneForm";

MONITORINFO infoOf(HMONITOR monitor) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    GetMonitorInfoW(monitor, &info);
    return info;
}

HMONITOR primaryMonitor() { return MonitorFromPoint({0, 0}, MONITOR_DEFAULTTOPRIMARY); }

MONITORINFO monitorOf(HWND panel) {
    const bool shown = panel != nullptr && IsWindowVisible(panel) != 0;
    return infoOf(shown ? MonitorFromWindow(panel, MONITOR_DEFAULTTONEAREST) : primaryMonitor());
}

Rectangle areaOf(const RECT& pixels) {
    return {static_cast<double>(pixels.left), static_cast<double>(pixels.top),
            static_cast<double>(pixels.right - pixels.left), static_cast<double>(pixels.bottom - pixels.top)};
}

bool isDown(int key) { return (static_cast<unsigned>(GetKeyState(key)) & 0x8000U) != 0; }

}  // namespace

double DesktopContext::factor() const {
    const UINT dots = panel != nullptr ? GetDpiForWindow(panel) : GetDpiForSystem();
    return dots == 0 ? wanted : wanted * dots / USER_DEFAULT_SCREEN_DPI;
}

RECT DesktopContext::screen() const { return monitorOf(panel).rcMonitor; }

RECT DesktopContext::workArea() const { return monitorOf(panel).rcWork; }

Rectangle DesktopContext::ofPanel() const { return areaOf(screen()); }

Rectangle DesktopContext::primary() const { return areaOf(infoOf(primaryMonitor()).rcMonitor); }

std::vector<ScreenArea> DesktopContext::areas() const {
    std::vector<ScreenArea> all;
    const auto add = [](HMONITOR monitor, HDC, RECT*, LPARAM to) -> BOOL {
        const MONITORINFO info = infoOf(monitor);
        reinterpret_cast<std::vector<ScreenArea>*>(to)->push_back({areaOf(info.rcMonitor), areaOf(info.rcWork)});
        return TRUE;
    };
    EnumDisplayMonitors(nullptr, nullptr, add, reinterpret_cast<LPARAM>(&all));
    return all;
}

SystemWindow::~SystemWindow() {
    if (handle_ == nullptr) return;
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void SystemWindow::create(DWORD style, DWORD extendedStyle, const std::string& title) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    static const ATOM known = [program] {
        WNDCLASSEXW made{};
        made.cbSize = sizeof made;
        made.style = CS_DBLCLKS;
        made.lpfnWndProc = &SystemWindow::procedure;
        made.hInstance = program;
        made.hIcon = LoadIconW(program, MAKEINTRESOURCEW(kProgramIcon));
        made.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        made.lpszClassName = kFormClass;
        return RegisterClassExW(&made);
    }();
    (void)known;
    handle_ = CreateWindowExW(extendedStyle, kFormClass, shownText(title).c_str(), style, 0, 0, 1, 1, nullptr, nullptr,
                              program, nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

SystemWindow* SystemWindow::of(HWND handle) {
    wchar_t name[32] = {};
    if (handle == nullptr || GetClassNameW(handle, name, 32) == 0 || std::wstring_view(name) != kFormClass) {
        return nullptr;
    }
    return reinterpret_cast<SystemWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
}

LRESULT CALLBACK SystemWindow::procedure(HWND handle, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<SystemWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    return self != nullptr ? self->message(message, first, second) : DefWindowProcW(handle, message, first, second);
}

LRESULT SystemWindow::message(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CLOSE:
            askToClose();
            return 0;
        case WM_QUERYENDSESSION:
            if (context_.sessionAsked) context_.sessionAsked();
            return TRUE;
        case WM_ENDSESSION:
            if (first != 0 && context_.sessionEnds) context_.sessionEnds();
            return 0;
        case WM_SETCURSOR: {
            const bool shut = LOWORD(second) == static_cast<WORD>(HTERROR);
            const WORD mouse = HIWORD(second);
            if (shut && (mouse == WM_LBUTTONDOWN || mouse == WM_RBUTTONDOWN)) BoxWatch::raise();
            return DefWindowProcW(handle_, message, first, second);
        }
        case WM_POWERBROADCAST:
            if (context_.powerTold) context_.powerTold(first);
            return TRUE;
        case WM_DISPLAYCHANGE:
        case WM_SETTINGCHANGE: {
            const bool ofScreens = message == WM_DISPLAYCHANGE || first == SPI_SETWORKAREA;
            if (ofScreens && context_.screensChange) context_.screensChange();
            return DefWindowProcW(handle_, message, first, second);
        }
        case WM_DPICHANGED:
            if (hasForm()) takeScale();
            return 0;
        default:
            return DefWindowProcW(handle_, message, first, second);
    }
}

void SystemWindow::activate() {
    SetForegroundWindow(handle_);
    BringWindowToTop(handle_);
}

void SystemWindow::stack(int insertAfter, std::uint32_t flags) {
    ::SetWindowPos(handle_, reinterpret_cast<HWND>(static_cast<LONG_PTR>(insertAfter)), 0, 0, 0, 0,
                   flags | SWP_NOMOVE | SWP_NOSIZE);
}

bool anotherProgramIsInFront() {
    DWORD process = 0;
    const HWND front = GetForegroundWindow();
    return front != nullptr && GetWindowThreadProcessId(front, &process) != 0 && process != GetCurrentProcessId();
}

bool isAltHeld() { return isDown(VK_MENU); }

int shiftState() {
    return (isDown(VK_SHIFT) ? kShiftMask : 0) | (isDown(VK_CONTROL) ? kCtrlMask : 0) | (isAltHeld() ? kAltMask : 0);
}

}  // namespace corvane
