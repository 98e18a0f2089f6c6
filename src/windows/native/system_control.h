// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "shell/native/native_controls.h"
#include "winapi/api.h"

namespace corvane {

class NativeWindow;

/// A native control as a control of the system, which is a child of the window and belongs to it. Tells of the focus;
/// what else the user does is told by the classes of the kinds, while the window has its form.
class SystemControl : public virtual NativeControl {
public:
    /// className, style: of the system's control.
    SystemControl(NativeWindow& window, const Control& control, NativeEvents& events, const wchar_t* className,
                  DWORD style, DWORD extendedStyle = 0);
    SystemControl(const SystemControl&) = delete;
    SystemControl& operator=(const SystemControl&) = delete;
    ~SystemControl() override;

    HWND handle() const { return handle_; }

    void place(const PixelRect& room) override;
    void show(bool shown) override { ShowWindow(handle_, shown ? SW_SHOWNA : SW_HIDE); }
    void enable(bool enabled) override { EnableWindow(handle_, enabled ? TRUE : FALSE); }
    void setTip(const std::string& text) override;
    void focus() override { SetFocus(handle_); }
    PixelSize textSize(const std::string& text) const override;

    /// The control notifies its window: WM_COMMAND's code.
    virtual void command(int /*code*/) {}
    /// WM_HSCROLL of the control.
    virtual void scroll(int /*code*/, int /*position*/) {}
    /// WM_DRAWITEM of the control.
    virtual void draw(const DRAWITEMSTRUCT& /*item*/) {}
    /// Enter means something to the control itself.
    virtual bool takesEnter() const { return false; }

protected:
    /// A message to the control itself, before it sees it; a value: it was handled.
    virtual std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second);
    /// The focus comes or went inside the window.
    virtual void focusChanged(bool got) { events_.focused(got); }

    LRESULT ask(UINT message, WPARAM first = 0, LPARAM second = 0) const {
        return SendMessageW(handle_, message, first, second);
    }
    void setWindowText(const std::string& text) const;  ///< and draws it anew
    std::wstring windowText() const;
    PixelSize clientSize() const;

    NativeWindow& window() const { return window_; }
    NativeEvents& events() const { return events_; }

private:
    static LRESULT CALLBACK procedure(HWND widget, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                      DWORD_PTR self);

    NativeWindow& window_;
    NativeEvents& events_;
    HWND handle_;
};

}  // namespace corvane
