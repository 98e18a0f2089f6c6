// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "forms/form.h"
#include "forms/lists.h"
#include "windows/api.h"

namespace corvane {

class NativeWindow;

/// Keeps one control of the system and its control of the form in step. What the user does reaches the form's control
/// through NativeWindow::apply; what the control's properties say reaches the system's control, whose echo is left out.
/// The form's control is touched only while the window is bound. The system's control belongs to the window.
class Binder {
public:
    /// className, style: of the system's control, which is a child of the window.
    Binder(NativeWindow& window, Control& control, const wchar_t* className, DWORD style, DWORD extendedStyle = 0);
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;
    virtual ~Binder();

    Control& control() const { return control_; }
    HWND widget() const { return widget_; }
    NativeWindow& window() const { return window_; }

    /// A property of the control has changed.
    virtual void changed(PropertyId property);
    /// Shows what changed() has put off.
    virtual void flush();
    /// Takes every property over.
    virtual void takeAll();
    /// The room that the text needs, screen pixels; 0: no wish.
    virtual SIZE wanted() const { return {0, 0}; }
    /// The control notifies its window: WM_COMMAND's code.
    virtual void command(int /*code*/) {}
    /// WM_HSCROLL of the control.
    virtual void scroll(int /*code*/, int /*position*/) {}
    /// WM_DRAWITEM of the control.
    virtual void draw(const DRAWITEMSTRUCT& /*item*/) {}
    /// A message to the control itself, before it sees it; a value: it was handled.
    virtual std::optional<LRESULT> message(UINT message, WPARAM first, LPARAM second);
    /// Enter means something to the control itself.
    virtual bool takesEnter() const { return false; }

    Twips designWidth() const { return designWidth_; }
    Twips designHeight() const { return designHeight_; }

protected:
    void flushSoon();
    void show(const std::string& caption);  ///< as the control's text, its access key marked
    std::string text() const;               ///< of the system's control
    SIZE textSize(const std::string& caption) const;
    RECT place() const;  ///< screen pixels of the window's client area
    /// The focus came or went inside the window: the control's event.
    virtual void focusChanged(bool got);

private:
    static LRESULT CALLBACK procedure(HWND widget, UINT message, WPARAM first, LPARAM second, UINT_PTR id,
                                      DWORD_PTR self);

    NativeWindow& window_;
    Control& control_;
    HWND widget_;
    Twips designWidth_;
    Twips designHeight_;
};

/// The binder for the control's kind; null for kinds that a dialog does not show.
std::unique_ptr<Binder> makeBinder(NativeWindow& window, Control& control);

// One a group of kinds.
std::unique_ptr<Binder> makeButtonBinder(NativeWindow& window, Control& control);
std::unique_ptr<Binder> makeMarkBinder(NativeWindow& window, MouseControl& control);
std::unique_ptr<Binder> makeTextBinder(NativeWindow& window, TextBox& box);
std::unique_ptr<Binder> makeStepperBinder(NativeWindow& window, ScrollBar& bar);
std::unique_ptr<Binder> makeChoiceBinder(NativeWindow& window, ItemsControl& control);
std::unique_ptr<Binder> makeListBinder(NativeWindow& window, ItemsControl& control);

}  // namespace corvane
