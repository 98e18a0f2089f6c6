// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "forms/keyboard_focus.h"
#include "shell/pointer.h"
#include "windows/drop.h"
#include "windows/windowing/form_window.h"
#include "windows/windowing/tool_tip.h"

namespace corvane {

class AccessibleForm;

inline constexpr UINT kTakeGeometry = WM_APP;  ///< the window's own: the form's place or size has changed

/// A borderless window whose controls are drawn, not windows. This class is its geometry, window state and input; the
/// deriving classes say where controls are and paint them.
class CanvasWindow : public FormWindow, protected Pointer::Host {
public:
    CanvasWindow(Form& form, DesktopContext& context, DWORD extendedStyle = 0);
    ~CanvasWindow() override;

    int textWidth(const std::string& text) override;
    /// Moves the window with the pointer until the button's release; what was grabbed stays under the pointer.
    void beginDrag() override { pointer_.beginDrag(); }
    void takeScale() override;
    void refresh() override;
    /// Files from elsewhere (another start of the program) as a drop on this form.
    void dropFiles(const DropData& dropped);
    bool takesFiles() const;
    /// Who takes what is dragged onto the window; null: the thread has no OLE.
    IDropTarget* dropTarget() const { return dropTarget_.asked(); }
    void askToClose() { requestClose(); }
    /// The keyboard's focus came or went.
    void focusCame(bool got);

    // Input of a surface elsewhere on the screen, in the place of this window's own.
    bool mouse(UINT message, WPARAM keys, LPARAM place);
    bool key(UINT message, WPARAM code, LPARAM details);
    // For assistive programs. What they ask for is done as an event of its own, and only where the mouse could do it.
    void pressSoon(Control& control);
    void setValueSoon(MouseControl& control, double value);
    /// The control that has the keyboard focus, with its ring; null: none, every key is the form's.
    Control* focused() const { return keyboard_.control(); }
    RECT screenPlace(const Control& control) const;  ///< pixels of the client area

    /// A box or a menu is up, or the window was minimised: it gets the release.
    void loseMouse();

protected:
    /// Paints the part of the client area that must be painted anew.
    virtual void paint(HDC screen, const RECT& dirty) = 0;
    /// What to say when the pointer rests on a control.
    virtual std::string toolTip(const Control& control) const { return control.ToolTipText; }
    /// A drag begins with the press; else once the pointer has left its place.
    virtual bool dragsAtOnce() const { return false; }
    /// Files of a list open it, not the user's hand.
    virtual bool opensByItself() const { return false; }
    /// A control's appearance or place changed.
    virtual void controlChanged(Control& control, PropertyId property) = 0;

    const Control* pressed() const { return pointer_.pressed(); }
    Rectangle ring() const;                   ///< around the control with the keyboard focus, pixels; empty: none
    void invalidate(const Rectangle& twips);  ///< to be painted anew
    Rectangle pixels(const Rectangle& twips) const;

    // Pointer::Host; the rest is for the deriving class.
    bool bound() const override { return isBound(); }
    Form& form() const override { return shownForm(); }
    void enter(const EventLoop::Handler& handler) override { run(handler); }
    void post(EventLoop::Handler handler) override { later(std::move(handler)); }

    void onBound() override;
    void onUnbinding() override;
    void propertyChanged(Control& control, PropertyId property) override;
    LRESULT message(UINT message, WPARAM first, LPARAM second) override;

private:
    void formChanged(PropertyId property);
    void geometryChanged();
    void takeGeometry();
    void takeVisibility();
    void takeWindowState();
    void putOnAScreen();
    void placeChanged();
    void sizeChanged(WPARAM kind);
    void paintDirty();
    void typed(char32_t character);
    PictureBox* keyBox() const;
    void dropped(const DropData& data, POINT at);
    bool takeFocusKey(const KeyArgs& key, bool isRepeat);
    void setFocused(Control* control);
    void focusMoved();
    bool takesMouse() const;
    void clickMiddle(Control& control);
    bool dragStep(POINT at);
    Pointer::Place placeOfMouse(LPARAM place) const;
    POINT screenPoint(LPARAM place) const;

    Pointer pointer_;
    KeyboardFocus keyboard_;
    AccessibleForm* accessible_;  ///< shared with those who ask
    ToolTip tip_;
    DropTarget dropTarget_;
    POINT pressedAt_{};    ///< of the screen
    POINT windowAt_{};     ///< the window's place at the press
    bool stale_ = false;   ///< the form's place or size has changed since the window took it
    bool taking_ = false;  ///< the window itself changes the form's properties
    wchar_t high_ = 0;     ///< first half of a character that comes in two
};

}  // namespace corvane
