// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/native_form_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "windows/windowing/shown_text.h"

namespace corvane {

namespace {

constexpr UINT kFirstNumber = 1000;

DWORD styleOf(const Form& form) {
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    return form.Resizable ? style | WS_THICKFRAME | WS_MAXIMIZEBOX : style;
}

constexpr DWORD kExtendedStyle = WS_EX_APPWINDOW | WS_EX_CONTROLPARENT;

}  // namespace

NativeWindow::NativeWindow(Form& form, DesktopContext& context)
    : DialogWindow(form, context.loop, context, native_, context), native_(context.loop, *this) {
    create(styleOf(form), kExtendedStyle, form.Caption);
    tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0,
                            0, handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

NativeWindow::~NativeWindow() {
    DestroyWindow(tips_);
    DeleteObject(font_);
}

void NativeWindow::onBound() {
    makeFont();
    native_.bind(form());
}

void NativeWindow::takeScale() { native_.rescale(); }

void NativeWindow::setTextShare(double share) { makeFont(share); }

void NativeWindow::makeFont(double share) {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    // The metrics are those of the system's dots per inch.
    const double factor = share * context().scale() * USER_DEFAULT_SCREEN_DPI / GetDpiForSystem();
    LOGFONTW wanted = metrics.lfMessageFont;
    wanted.lfHeight = static_cast<LONG>(std::lround(wanted.lfHeight * factor));
    const HFONT before = std::exchange(font_, CreateFontIndirectW(&wanted));
    for (const auto& [control, made] : controls_) {
        SendMessageW(made->handle(), WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    }
    DeleteObject(before);
}

// --- Controls ----------------------------------------------------------------------------------------------------

PixelSize NativeWindow::textSize(const std::string& text) const {
    const HDC screen = GetDC(handle());
    const HGDIOBJ before = SelectObject(screen, font_);
    const std::wstring wide = shownText(text);
    SIZE size{};
    GetTextExtentPoint32W(screen, wide.c_str(), static_cast<int>(wide.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(handle(), screen);
    return {static_cast<int>(size.cx), static_cast<int>(size.cy)};
}

/// What the system's own dialogs have for their font.
int NativeWindow::fieldHeight() const {
    const int line = textSize("Ag").height;
    return line + (line + 1) / 2;
}

HWND NativeWindow::widgetOf(const Control& control) const {
    const auto found = controls_.find(&control);
    return found == controls_.end() ? nullptr : found->second->handle();
}

SystemControl* NativeWindow::controlOf(HWND widget) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [widget](const auto& each) { return each.second->handle() == widget; });
    return found == controls_.end() ? nullptr : found->second;
}

HMENU NativeWindow::numberOf(const Control& control) {
    const auto& controls = form().controls();
    const auto at = std::find(controls.begin(), controls.end(), &control) - controls.begin();
    return reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kFirstNumber + static_cast<UINT>(at)));
}

/// The system goes from control to control in the order in which they lie over each other.
void NativeWindow::orderTabs(const std::vector<const Control*>& order) {
    HWND above = HWND_TOP;
    for (const Control* each : order) {
        const HWND widget = widgetOf(*each);
        if (widget == nullptr) continue;
        ::SetWindowPos(widget, above, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        above = widget;
    }
    SendMessageW(handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0);
}

void NativeWindow::setTip(HWND widget, const std::string& text) {
    std::wstring wide = shownTip(text);
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = handle();
    tool.uId = reinterpret_cast<UINT_PTR>(widget);
    tool.lpszText = wide.data();
    SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty()) SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

// --- The window --------------------------------------------------------------------------------------------------

void NativeWindow::setTitle(const std::string& text) { SetWindowTextW(handle(), shownText(text).c_str()); }

void NativeWindow::show(bool shown) {
    ShowWindow(handle(), shown ? SW_SHOW : SW_HIDE);
    if (shown) activate();
}

void NativeWindow::setState(WindowState state) {
    ShowWindow(handle(), state == WindowState::Minimized   ? SW_MINIMIZE
                         : state == WindowState::Maximized ? SW_MAXIMIZE
                                                           : SW_RESTORE);
}

/// With the frame and the title that the system puts around a client area of that size.
PixelSize NativeWindow::windowSize(PixelSize inner) const {
    RECT around{0, 0, inner.width, inner.height};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(handle(), GWL_STYLE));
    AdjustWindowRectExForDpi(&around, style, FALSE, kExtendedStyle, GetDpiForWindow(handle()));
    return {static_cast<int>(around.right - around.left), static_cast<int>(around.bottom - around.top)};
}

void NativeWindow::setInner(PixelSize size, PixelSize least) {
    least_ = windowSize(least);
    const PixelSize whole = windowSize(size);
    const bool was = std::exchange(sizing_, true);
    ::SetWindowPos(handle(), nullptr, 0, 0, whole.width, whole.height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    sizing_ = was;
}

PixelSize NativeWindow::outer() const {
    RECT own{};
    GetWindowRect(handle(), &own);
    return {static_cast<int>(own.right - own.left), static_cast<int>(own.bottom - own.top)};
}

void NativeWindow::moveOuter(const PixelRect& place) {
    ::SetWindowPos(handle(), nullptr, place.left, place.top, place.width, place.height, SWP_NOZORDER | SWP_NOACTIVATE);
}

PixelRect NativeWindow::room() const {
    const RECT work = context().workArea();
    return {static_cast<int>(work.left), static_cast<int>(work.top), static_cast<int>(work.right - work.left),
            static_cast<int>(work.bottom - work.top)};
}

void NativeWindow::placeChanged() {
    if (IsWindowVisible(handle()) == 0 || IsIconic(handle()) != 0) return;
    RECT at{};
    GetWindowRect(handle(), &at);
    cornerIs({static_cast<int>(at.left), static_cast<int>(at.top)});
}

void NativeWindow::sizeChanged(WPARAM kind) {
    if (sizing_) return;
    native_.stateIs(kind == SIZE_MINIMIZED   ? WindowState::Minimized
                    : kind == SIZE_MAXIMIZED ? WindowState::Maximized
                                             : WindowState::Normal);
    RECT client{};
    GetClientRect(handle(), &client);
    if (kind != SIZE_MINIMIZED) native_.sized({static_cast<int>(client.right), static_cast<int>(client.bottom)});
}

}  // namespace corvane
