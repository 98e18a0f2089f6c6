// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "shell/access_keys.h"
#include "windows/native/binder.h"
#include "windows/native/form_scale.h"
#include "windows/windowing/form_window.h"

namespace corvane {

/// The window of a dialog form: a control of the system for each of its controls, kept in step by a binder. Enter
/// presses the form's Default button, Escape its Cancel button. Of the form's own key events F1 alone is raised:
/// its controls take the others.
class NativeWindow : public FormWindow {
public:
    NativeWindow(Form& form, DesktopContext& context);
    ~NativeWindow() override;

    int textWidth(const std::string& text) override;
    void beginDrag() override;
    /// The pointer moves while the form asked to be moved with it; true: the move is the drag's.
    bool dragStep();
    void takeScale() override;
    bool filter(MSG& message) override;

    /// Runs a handler of the form, then brings the controls in step. For input of the controls.
    void apply(const EventLoop::Handler& handler);
    /// Posts a handler of the form (a drop).
    void post(EventLoop::Handler handler) { later(std::move(handler)); }
    /// The binder's flush() is called soon: several changes of a control are shown as one.
    void flushSoon(Binder& binder);
    WindowsLoop& loop() const { return context().loop; }
    std::weak_ptr<bool> alive() const { return bindersAlive_; }

    const FormScale& scale() const { return scale_; }
    const AccessKeys& keys() const { return keys_; }
    HFONT font() const { return font_; }
    SIZE measure(const std::string& text) const;  ///< in the dialog's font, screen pixels
    LONG fieldHeight() const;                     ///< of a field with one line of text, screen pixels
    /// A number for the system's control, and back.
    HMENU numberOf(const Control& control);
    void setTip(HWND widget, const std::string& text);
    void setPlainText(HWND widget, const std::string& text);

    /// The system's control of a control, or null.
    HWND widgetOf(const Control& control) const;

protected:
    void onBound() override;
    void propertyChanged(Control& control, PropertyId property) override;
    LRESULT message(UINT message, WPARAM first, LPARAM second) override;

private:
    void makeControls();
    void makeControl(Control& control);
    void makeFont();
    void formChanged(PropertyId property);
    SIZE windowSize(Twips width, Twips height) const;
    void takeSize();
    void putInPlace();
    void focusFirst();
    void flush();
    void sizeChanged(WPARAM kind);
    void placeChanged();
    void mouse(UINT message, LPARAM place);
    bool takeHelpKey(const MSG& message);
    bool command(WPARAM first, LPARAM second);
    void pressCancel();
    Binder* binderOf(HWND widget) const;

    std::vector<std::unique_ptr<Binder>> binders_;
    std::map<const Control*, Binder*> byControl_;
    std::vector<Binder*> waiting_;  ///< to be flushed
    std::shared_ptr<bool> bindersAlive_ = std::make_shared<bool>(true);
    FormScale scale_;
    AccessKeys keys_;
    HFONT font_ = nullptr;
    HWND tips_ = nullptr;
    HWND focused_ = nullptr;  ///< gets the focus back when the window is activated
    POINT pressedAt_{};       ///< of the screen, when the form asked to be moved
    POINT windowAt_{};        ///< the window's place then
    bool dragging_ = false;   ///< it asked, and the button is held
    bool moved_ = false;      ///< the window follows the pointer
    bool shownBefore_ = false;
    bool taking_ = false;  ///< the window itself changes the form's properties
};

}  // namespace corvane
