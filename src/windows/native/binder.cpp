// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/binder.h"

#include "windows/native/native_form_window.h"
#include "windows/text.h"

namespace corvane {

Binder::Binder(NativeWindow& window, Control& control, const wchar_t* className, DWORD style, DWORD extendedStyle)
    : window_(window), control_(control), designWidth_(control.Width), designHeight_(control.Height) {
    const DWORD tab = control.TabIndex >= 0 ? WS_TABSTOP : 0;
    widget_ = CreateWindowExW(extendedStyle, className, nullptr, WS_CHILD | style | tab, 0, 0, 1, 1, window.handle(),
                              window.numberOf(control), GetModuleHandleW(nullptr), nullptr);
    SendMessageW(widget_, WM_SETFONT, reinterpret_cast<WPARAM>(window.font()), FALSE);
    SetWindowSubclass(widget_, &Binder::procedure, 0, reinterpret_cast<DWORD_PTR>(this));
}

Binder::~Binder() { RemoveWindowSubclass(widget_, &Binder::procedure, 0); }

LRESULT CALLBACK Binder::procedure(HWND widget, UINT message, WPARAM first, LPARAM second, UINT_PTR /*id*/,
                                   DWORD_PTR self) {
    auto& binder = *reinterpret_cast<Binder*>(self);
    if (binder.window_.isBound()) {
        if (const auto answer = binder.message(message, first, second)) return *answer;
    }
    const LRESULT answer = DefSubclassProc(widget, message, first, second);
    if ((message == WM_SETFOCUS || message == WM_KILLFOCUS) && binder.window_.isBound()) {
        // Another window in front takes nothing from the control.
        const auto other = reinterpret_cast<HWND>(first);
        if (other != nullptr && GetAncestor(other, GA_ROOT) == binder.window_.handle() && other != widget &&
            IsChild(widget, other) == 0) {
            binder.focusChanged(message == WM_SETFOCUS);
        }
    }
    return answer;
}

std::optional<LRESULT> Binder::message(UINT /*message*/, WPARAM /*first*/, LPARAM /*second*/) { return std::nullopt; }

void Binder::focusChanged(bool got) {
    window_.apply([&] { (got ? control_.GotFocus : control_.LostFocus).raise(); });
}

void Binder::changed(PropertyId property) {
    switch (property) {
        case PropertyId::Left:
        case PropertyId::Top:
        case PropertyId::Width:
        case PropertyId::Height:
            flushSoon();
            break;
        case PropertyId::Visible:
            ShowWindow(widget_, control_.Visible ? SW_SHOWNA : SW_HIDE);
            break;
        case PropertyId::Enabled:
            EnableWindow(widget_, control_.Enabled ? TRUE : FALSE);
            break;
        case PropertyId::ToolTipText:
            window_.setTip(widget_, control_.ToolTipText);
            break;
        case PropertyId::Focus:
            SetFocus(widget_);
            break;
        default:
            break;
    }
}

RECT Binder::place() const {
    Twips left = control_.Left;
    Twips top = control_.Top;
    for (const Control* outer = control_.Container; outer != nullptr; outer = outer->Container) {
        left += outer->Left;
        top += outer->Top;
    }
    const FormScale& scale = window_.scale();
    return {scale.x(left), scale.y(top), scale.x(left + control_.Width), scale.y(top + control_.Height)};
}

void Binder::flush() {
    const RECT at = place();
    ::SetWindowPos(widget_, nullptr, at.left, at.top, at.right - at.left, at.bottom - at.top,
                   SWP_NOZORDER | SWP_NOACTIVATE);
}

void Binder::takeAll() {
    for (const PropertyId each : {PropertyId::Visible, PropertyId::Enabled, PropertyId::ToolTipText}) changed(each);
    flush();
}

void Binder::flushSoon() { window_.flushSoon(*this); }

void Binder::show(const std::string& caption) {
    SetWindowTextW(widget_, toWide(window_.keys().marked(control_, caption)).c_str());
    InvalidateRect(widget_, nullptr, TRUE);
}

std::string Binder::text() const {
    std::wstring wide(static_cast<std::size_t>(GetWindowTextLengthW(widget_)) + 1, L'\0');
    wide.resize(static_cast<std::size_t>(GetWindowTextW(widget_, wide.data(), static_cast<int>(wide.size()))));
    return fromWide(wide);
}

SIZE Binder::textSize(const std::string& caption) const { return window_.measure(caption); }

std::unique_ptr<Binder> makeBinder(NativeWindow& window, Control& control) {
    switch (control.kind()) {
        case ControlKind::CommandButton:
        case ControlKind::CheckBox:
        case ControlKind::OptionButton:
        case ControlKind::Frame:
            return makeButtonBinder(window, control);
        case ControlKind::Label:
        case ControlKind::Image:
            return makeMarkBinder(window, static_cast<MouseControl&>(control));
        case ControlKind::TextBox:
            return makeTextBinder(window, static_cast<TextBox&>(control));
        case ControlKind::ScrollBar:
            return makeStepperBinder(window, static_cast<ScrollBar&>(control));
        case ControlKind::ComboBox:
        case ControlKind::DriveBox:
            return makeChoiceBinder(window, static_cast<ItemsControl&>(control));
        case ControlKind::ListBox:
        case ControlKind::FolderBox:
        case ControlKind::FileBox:
            return makeListBinder(window, static_cast<ItemsControl&>(control));
        default:
            return nullptr;
    }
}

}  // namespace corvane
