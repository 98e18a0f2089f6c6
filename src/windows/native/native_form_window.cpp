// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/native_form_window.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "windows/text.h"

namespace corvane {

namespace {

constexpr const char* kSampleText = "Aa Gg 0123456789 Page List";
constexpr UINT kFirstNumber = 1000;

DWORD styleOf(const Form& form) {
    const DWORD style = WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX | WS_CLIPCHILDREN;
    return form.Resizable ? style | WS_THICKFRAME | WS_MAXIMIZEBOX : style;
}

/// The order of the dialog's keys: frames, then each field with its label in front, then what no key reaches.
std::vector<Control*> inTabOrder(const Form& form) {
    std::vector<Control*> frames;
    std::vector<Control*> reached;
    std::vector<Control*> rest;
    for (Control* each : form.controls()) {
        const bool isFrame = each->kind() == ControlKind::Frame;
        (isFrame ? frames : each->TabIndex >= 0 ? reached : rest).push_back(each);
    }
    std::stable_sort(reached.begin(), reached.end(),
                     [](const Control* a, const Control* b) { return a->TabIndex < b->TabIndex; });
    std::vector<Control*> order = std::move(frames);
    for (Control* field : reached) {
        for (Control* each : rest) {
            if (each->kind() == ControlKind::Label && static_cast<Label*>(each)->Labels == field) order.push_back(each);
        }
        order.push_back(field);
    }
    for (Control* each : rest) {
        if (std::find(order.begin(), order.end(), each) == order.end()) order.push_back(each);
    }
    return order;
}

}  // namespace

NativeWindow::NativeWindow(Form& form, DesktopContext& context) : FormWindow(form, context) {
    create(styleOf(form), WS_EX_APPWINDOW | WS_EX_CONTROLPARENT);
    tips_ = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0,
                            0, handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
}

NativeWindow::~NativeWindow() {
    bindersAlive_.reset();
    binders_.clear();
    DestroyWindow(tips_);
    DeleteObject(font_);
}

SIZE NativeWindow::measure(const std::string& text) const {
    const HDC screen = GetDC(handle());
    const HGDIOBJ before = SelectObject(screen, font_);
    const std::wstring wide = toWide(text);
    SIZE size{};
    GetTextExtentPoint32W(screen, wide.c_str(), static_cast<int>(wide.size()), &size);
    SelectObject(screen, before);
    ReleaseDC(handle(), screen);
    return size;
}

/// What the system's own dialogs have for their font.
LONG NativeWindow::fieldHeight() const {
    const LONG line = measure("Ag").cy;
    return line + (line + 1) / 2;
}

int NativeWindow::textWidth(const std::string& text) {
    return static_cast<int>(std::ceil(measure(text).cx / scale_.across()));
}

void NativeWindow::apply(const EventLoop::Handler& handler) {
    run(handler);
    if (isBound() && loop().depth() == 0) flush();
}

void NativeWindow::flushSoon(Binder& binder) {
    if (std::find(waiting_.begin(), waiting_.end(), &binder) != waiting_.end()) return;
    if (waiting_.empty()) {
        loop().afterMessage([this, alive = alive()] {
            if (!alive.expired()) flush();
        });
    }
    waiting_.push_back(&binder);
}

void NativeWindow::flush() {
    if (!isBound()) return;
    for (Binder* each : std::exchange(waiting_, {})) each->flush();
}

HWND NativeWindow::widgetOf(const Control& control) const {
    const auto found = byControl_.find(&control);
    return found == byControl_.end() ? nullptr : found->second->widget();
}

Binder* NativeWindow::binderOf(HWND widget) const {
    const auto found =
        std::find_if(binders_.begin(), binders_.end(), [widget](const auto& each) { return each->widget() == widget; });
    return found == binders_.end() ? nullptr : found->get();
}

HMENU NativeWindow::numberOf(const Control& control) {
    const auto& controls = shownForm().controls();
    const auto at = std::find(controls.begin(), controls.end(), &control) - controls.begin();
    return reinterpret_cast<HMENU>(static_cast<UINT_PTR>(kFirstNumber + static_cast<UINT>(at)));
}

void NativeWindow::setTip(HWND widget, const std::string& text) {
    std::wstring wide = toWide(text);
    TOOLINFOW tool{};
    tool.cbSize = sizeof tool;
    tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
    tool.hwnd = handle();
    tool.uId = reinterpret_cast<UINT_PTR>(widget);
    tool.lpszText = wide.data();
    SendMessageW(tips_, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty()) SendMessageW(tips_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

void NativeWindow::setPlainText(HWND widget, const std::string& text) {
    SetWindowTextW(widget, toWide(text).c_str());
    InvalidateRect(widget, nullptr, TRUE);
}

// --- Binding -----------------------------------------------------------------------------------------------------

void NativeWindow::onBound() {
    keys_ = AccessKeys(shownForm());
    makeFont();
    makeControls();
    takeScale();
    for (const auto& each : binders_) each->takeAll();
    SendMessageW(handle(), WM_CHANGEUISTATE, MAKEWPARAM(UIS_INITIALIZE, 0), 0);
    for (const PropertyId each : {PropertyId::Caption, PropertyId::Enabled, PropertyId::Width, PropertyId::Visible}) {
        formChanged(each);
    }
}

void NativeWindow::makeFont() {
    NONCLIENTMETRICSW metrics{};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoW(SPI_GETNONCLIENTMETRICS, metrics.cbSize, &metrics, 0);
    // The metrics are those of the system's dots per inch.
    const double factor = context().scale() * USER_DEFAULT_SCREEN_DPI / GetDpiForSystem();
    LOGFONTW wanted = metrics.lfMessageFont;
    wanted.lfHeight = static_cast<LONG>(std::lround(wanted.lfHeight * factor));
    const HFONT before = std::exchange(font_, CreateFontIndirectW(&wanted));
    for (const auto& each : binders_) {
        SendMessageW(each->widget(), WM_SETFONT, reinterpret_cast<WPARAM>(font_), TRUE);
    }
    DeleteObject(before);
}

void NativeWindow::makeControls() {
    for (Control* control : inTabOrder(shownForm())) {
        auto binder = makeBinder(*this, *control);
        if (!binder) continue;
        byControl_[control] = binder.get();
        binders_.push_back(std::move(binder));
    }
}

void NativeWindow::takeScale() {
    makeFont();
    const SIZE sample = measure(kSampleText);
    const double least = context().scale();
    scale_ = FormScale(std::max(least, static_cast<double>(sample.cx) / FormScale::kLetters),
                       std::max(least, static_cast<double>(sample.cy) / FormScale::kLine));
    for (const auto& each : binders_) scale_.makeRoom(each->wanted(), each->designWidth(), each->designHeight());
    takeSize();
    for (const auto& each : binders_) each->flush();
}

void NativeWindow::propertyChanged(Control& control, PropertyId property) {
    if (&control == &shownForm()) {
        formChanged(property);
    } else if (const auto found = byControl_.find(&control); found != byControl_.end()) {
        found->second->changed(property);
    }
}

void NativeWindow::formChanged(PropertyId property) {
    if (taking_) return;
    switch (property) {
        case PropertyId::Caption:
            SetWindowTextW(handle(), toWide(shownForm().Caption.get()).c_str());
            break;
        case PropertyId::Enabled:
            EnableWindow(handle(), shownForm().Enabled ? TRUE : FALSE);
            break;
        case PropertyId::Width:
        case PropertyId::Height:
            takeSize();
            break;
        case PropertyId::Visible:
            if (shownForm().Visible && !shownBefore_) putInPlace();
            ShowWindow(handle(), shownForm().Visible ? SW_SHOW : SW_HIDE);
            if (shownForm().Visible) activate();
            break;
        case PropertyId::WindowState:
            ShowWindow(handle(), shownForm().WindowState == WindowState::Minimized   ? SW_MINIMIZE
                                 : shownForm().WindowState == WindowState::Maximized ? SW_MAXIMIZE
                                                                                     : SW_RESTORE);
            break;
        default:
            break;
    }
}

// --- Size and place ----------------------------------------------------------------------------------------------

/// With the frame and the title that the system puts around a client area of that size.
SIZE NativeWindow::windowSize(Twips width, Twips height) const {
    RECT around{0, 0, scale_.x(width), scale_.y(height)};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(handle(), GWL_STYLE));
    AdjustWindowRectExForDpi(&around, style, FALSE, WS_EX_APPWINDOW | WS_EX_CONTROLPARENT, GetDpiForWindow(handle()));
    return {around.right - around.left, around.bottom - around.top};
}

void NativeWindow::takeSize() {
    const SIZE size = windowSize(shownForm().Width, shownForm().Height);
    const bool was = std::exchange(taking_, true);
    ::SetWindowPos(handle(), nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    taking_ = was;
}

void NativeWindow::putInPlace() {
    shownBefore_ = true;
    const RECT room = context().workArea();
    const Form& form = shownForm();
    SIZE size = windowSize(form.Width, form.Height);
    if (form.Resizable) {
        size = {std::min(size.cx, room.right - room.left), std::min(size.cy, room.bottom - room.top)};
    }
    // Around the form's middle: the window may be larger than the form says, when the font is.
    const POINT origin = context().origin(form);
    LONG left = origin.x + context().toPixels(form.Left + form.Width / 2) - size.cx / 2;
    LONG top = origin.y + context().toPixels(form.Top + form.Height / 2) - size.cy / 2;
    left = std::max(room.left, std::min(left, room.right - size.cx));
    top = std::max(room.top, std::min(top, room.bottom - size.cy));
    ::SetWindowPos(handle(), nullptr, left, top, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
    focusFirst();
}

void NativeWindow::focusFirst() {
    const HWND first = GetNextDlgTabItem(handle(), nullptr, FALSE);
    focused_ = first;
    const Binder* const binder = binderOf(first);
    if (binder == nullptr || binder->control().kind() != ControlKind::OptionButton) return;
    for (const auto& each : binders_) {
        if (each->control().kind() != ControlKind::OptionButton) continue;
        const auto& option = static_cast<const OptionButton&>(each->control());
        if (option.Container == binder->control().Container && option.Value) focused_ = each->widget();
    }
}

void NativeWindow::placeChanged() {
    if (!isBound() || IsWindowVisible(handle()) == 0 || IsIconic(handle()) != 0) return;
    RECT at{};
    GetWindowRect(handle(), &at);
    const POINT origin = context().origin(shownForm());
    const bool was = std::exchange(taking_, true);
    shownForm().Move(context().toTwips(at.left - origin.x), context().toTwips(at.top - origin.y));
    taking_ = was;
}

void NativeWindow::sizeChanged(WPARAM kind) {
    if (!isBound() || taking_) return;
    taking_ = true;
    shownForm().WindowState = kind == SIZE_MINIMIZED   ? WindowState::Minimized
                              : kind == SIZE_MAXIMIZED ? WindowState::Maximized
                                                       : WindowState::Normal;
    taking_ = false;
    RECT client{};
    GetClientRect(handle(), &client);
    const Form& form = shownForm();
    if (kind == SIZE_MINIMIZED || (client.right == scale_.x(form.Width) && client.bottom == scale_.y(form.Height))) {
        return;
    }
    apply([&] {
        taking_ = true;
        shownForm().SetSize(scale_.twipsAcross(client.right), scale_.twipsDown(client.bottom));
        taking_ = false;
        shownForm().Resize.raise();
    });
}

}  // namespace corvane
