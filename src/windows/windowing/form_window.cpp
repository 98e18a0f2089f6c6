// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/windowing/form_window.h"

#include <cmath>
#include <utility>

#include "windows/resource.h"
#include "windows/text.h"

namespace corvane {

namespace {

constexpr const wchar_t* kFormClass = L"CorvaneForm";

MONITORINFO monitorOf(HWND panel) {
    MONITORINFO info{};
    info.cbSize = sizeof info;
    constexpr POINT kPrimary{0, 0};
    const bool shown = panel != nullptr && IsWindowVisible(panel) != 0;
    GetMonitorInfoW(shown ? MonitorFromWindow(panel, MONITOR_DEFAULTTONEAREST)
                          : MonitorFromPoint(kPrimary, MONITOR_DEFAULTTOPRIMARY),
                    &info);
    return info;
}

bool isDown(int key) { return (static_cast<unsigned>(GetKeyState(key)) & 0x8000U) != 0; }

}  // namespace

double DesktopContext::scale() const {
    const UINT dots = panel != nullptr ? GetDpiForWindow(panel) : GetDpiForSystem();
    return dots == 0 ? wanted : wanted * dots / USER_DEFAULT_SCREEN_DPI;
}

RECT DesktopContext::screen() const { return monitorOf(panel).rcMonitor; }

RECT DesktopContext::workArea() const { return monitorOf(panel).rcWork; }

POINT DesktopContext::origin(const Form& form) const {
    if (form.style() == FormStyle::Painted) return {0, 0};
    const RECT counted = screen();
    return {counted.left, counted.top};
}

int DesktopContext::toPixels(Twips twips) const {
    return static_cast<int>(std::lround(static_cast<double>(twips) / static_cast<double>(kTwipsPerPixel) * scale()));
}

Twips DesktopContext::toTwips(double pixels) const {
    return static_cast<Twips>(pixels / scale() * static_cast<double>(kTwipsPerPixel));
}

FormWindow::FormWindow(Form& form, DesktopContext& context) : form_(&form), context_(context) {}

FormWindow::~FormWindow() {
    stopObserving();
    if (handle_ == nullptr) return;
    SetWindowLongPtrW(handle_, GWLP_USERDATA, 0);
    DestroyWindow(handle_);
}

void FormWindow::create(DWORD style, DWORD extendedStyle) {
    const HINSTANCE program = GetModuleHandleW(nullptr);
    static const ATOM known = [program] {
        WNDCLASSEXW made{};
        made.cbSize = sizeof made;
        made.style = CS_DBLCLKS;
        made.lpfnWndProc = &FormWindow::procedure;
        made.hInstance = program;
        made.hIcon = LoadIconW(program, MAKEINTRESOURCEW(kProgramIcon));
        made.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        made.lpszClassName = kFormClass;
        return RegisterClassExW(&made);
    }();
    (void)known;
    handle_ = CreateWindowExW(extendedStyle, kFormClass, toWide(form_->Caption.get()).c_str(), style, 0, 0, 1, 1,
                              nullptr, nullptr, program, nullptr);
    SetWindowLongPtrW(handle_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
}

FormWindow* FormWindow::of(HWND handle) {
    wchar_t name[32] = {};
    if (handle == nullptr || GetClassNameW(handle, name, 32) == 0 || std::wstring_view(name) != kFormClass) {
        return nullptr;
    }
    return reinterpret_cast<FormWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
}

LRESULT CALLBACK FormWindow::procedure(HWND handle, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(handle, GWLP_USERDATA));
    return self != nullptr ? self->message(message, first, second) : DefWindowProcW(handle, message, first, second);
}

LRESULT FormWindow::message(UINT message, WPARAM first, LPARAM second) {
    switch (message) {
        case WM_CLOSE:
            requestClose();  // the form decides
            return 0;
        case WM_QUERYENDSESSION:
            if (context_.sessionAsked) context_.sessionAsked();
            return TRUE;
        case WM_ENDSESSION:
            if (first != 0 && context_.sessionEnds) context_.sessionEnds();
            return 0;
        case WM_DPICHANGED:
            if (isBound()) takeScale();
            return 0;
        default:
            return DefWindowProcW(handle_, message, first, second);
    }
}

void FormWindow::bind() {
    form_->addObserver(this);
    for (Control* control : form_->controls()) control->addObserver(this);
    observing_ = true;
    onBound();
}

void FormWindow::unbind() {
    if (!isBound()) return;
    stopObserving();
    onUnbinding();
    ShowWindow(handle_, SW_HIDE);
    form_ = nullptr;
    alive_.reset();
}

void FormWindow::stopObserving() {
    if (!observing_) return;
    observing_ = false;
    form_->removeObserver(this);
    for (Control* control : form_->controls()) control->removeObserver(this);
}

void FormWindow::activate() {
    SetForegroundWindow(handle_);
    BringWindowToTop(handle_);
}

void FormWindow::run(const EventLoop::Handler& handler) {
    if (isBound()) context_.loop.enter(handler);
}

void FormWindow::later(EventLoop::Handler handler) {
    context_.loop.post([handler = std::move(handler), alive = std::weak_ptr<bool>(alive_)] {
        if (!alive.expired()) handler();
    });
}

void FormWindow::requestClose() {
    if (!isBound()) return;
    const bool alt = isDown(VK_MENU);
    later([this, alt] { form_->CloseRequest.raise(alt); });
}

bool anotherProgramIsInFront() {
    DWORD process = 0;
    const HWND front = GetForegroundWindow();
    return front != nullptr && GetWindowThreadProcessId(front, &process) != 0 && process != GetCurrentProcessId();
}

int shiftState() {
    return (isDown(VK_SHIFT) ? kShiftMask : 0) | (isDown(VK_CONTROL) ? kCtrlMask : 0) |
           (isDown(VK_MENU) ? kAltMask : 0);
}

}  // namespace corvane
