// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/native/dialog_window.h"
#include "windows/native/system_control.h"
#include "windows/windowing/form_window.h"

namespace corvane {

/// The window of a dialog form, a control of the system for each of its controls.
class NativeWindow : public DialogWindow<SystemWindow> {
public:
    NativeWindow(Form& form, DesktopContext& context);
    ~NativeWindow() override;

    void beginDrag() override;
    void takeScale() override;
    bool filter(MSG& message) override;

    // Each beside the class of its control.
    std::unique_ptr<NativeButton> makeButton(const Control& control, NativeEvents& events) override;
    std::unique_ptr<NativeLabel> makeLabel(const Label& label, NativeEvents& events) override;
    std::unique_ptr<NativeMark> makeMark(const Image& image, NativeEvents& events) override;
    std::unique_ptr<NativeField> makeField(const TextBox& box, NativeEvents& events) override;
    std::unique_ptr<NativeStepper> makeStepper(const ScrollBar& bar, NativeEvents& events) override;
    std::unique_ptr<NativeChoice> makeChoice(const ItemsControl& control, NativeEvents& events) override;
    std::unique_ptr<NativeList> makeList(const ItemsControl& control, NativeEvents& events) override;

    bool framesHold() const override { return false; }
    PixelSize textSize(const std::string& text) const override;
    double leastScale() const override { return context().scale(); }
    void setTextShare(double share) override;
    void orderTabs(const std::vector<const Control*>& order) override;
    void focusFirst(const Control& control) override { focused_ = widgetOf(control); }
    void setTitle(const std::string& text) override;
    void enable(bool enabled) override { EnableWindow(handle(), enabled ? TRUE : FALSE); }
    void show(bool shown) override;
    void setState(WindowState state) override;
    void setInner(PixelSize size, PixelSize least) override;
    PixelSize outer() const override;
    void moveOuter(const PixelRect& place) override;
    PixelRect room() const override;
    void soon(EventLoop::Handler handler) override { context().loop.afterMessage(std::move(handler)); }

    // For the controls.
    void add(const Control& control, SystemControl& made) { controls_[&control] = &made; }
    HWND widgetOf(const Control& control) const;  ///< null: it has none
    HMENU numberOf(const Control& control);       ///< a number for the system's control
    HFONT font() const { return font_; }
    int fieldHeight() const;  ///< of a field with one line of text, screen pixels
    void setTip(HWND widget, const std::string& text);
    /// The pointer moves while the form asked to be moved with it; true: the move is the drag's.
    bool dragStep();
    const FormScale& scale() const { return native_.scale(); }

protected:
    void onBound() override;
    bool hasForm() const override { return bound(); }
    void askToClose() override { native_.askToClose(isAltHeld()); }
    LRESULT message(UINT message, WPARAM first, LPARAM second) override;

private:
    void makeFont(double share = 1);  ///< of the system's size
    PixelSize windowSize(PixelSize inner) const;
    std::optional<LRESULT> controlMessage(UINT message, WPARAM first, LPARAM second);
    void placeChanged();
    void sizeChanged(WPARAM kind);
    void mouse(const NativeMouse& mouse);
    bool takeHelpKey(const MSG& message);
    bool takeFormKey(const MSG& message);
    bool command(WPARAM first, LPARAM second);
    LRESULT defaultNumber() const;
    SystemControl* controlOf(HWND widget) const;

    std::map<const Control*, SystemControl*> controls_;
    HFONT font_ = nullptr;
    HWND tips_ = nullptr;
    HWND focused_ = nullptr;  ///< gets the focus back when the window is activated
    PixelSize least_;         ///< of the whole window
    POINT pressedAt_{};       ///< of the screen, when the form asked to be moved
    POINT windowAt_{};        ///< the window's place then
    bool dragging_ = false;   ///< it asked, and the button is held
    bool moved_ = false;      ///< the window follows the pointer
    bool sizing_ = false;     ///< to a size that the form has
    NativeForm native_;
};

/// A mouse message as it is told, to a window with a client area of that size; none: it is another message.
std::optional<NativeMouse> nativeMouse(UINT message, LPARAM place, PixelSize client);

}  // namespace corvane
