// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/windowing/drawn_window.h"
#include "shell/windowing/pixel_brush.h"
#include "windows/drop.h"
#include "windows/windowing/form_window.h"
#include "windows/windowing/tool_tip.h"

namespace corvane {

class AccessibleForm;

/// The surface of a window whose controls are drawn. Pixels are the screen's.
class CanvasWindow : public SystemWindow, public Surface {
public:
    explicit CanvasWindow(DesktopContext& context);
    ~CanvasWindow() override;

    WindowFrame& frame() override { return *this; }
    int textWidth(const std::string& text) override;
    void takeScale() override;
    /// Who takes what is dragged onto the window; null: the thread has no OLE.
    IDropTarget* dropTarget() const { return dropTarget_.asked(); }

    // Input of a surface elsewhere on the screen, in the place of this window's own. True: it was the form's.
    bool mouse(UINT message, LPARAM place);
    bool wheel(HWND over, UINT message, WPARAM turned, LPARAM place);
    bool key(UINT message, WPARAM code, LPARAM details);
    void keyboardCame(bool here);
    void askToClose() override;

    bool isBound() const { return live() != nullptr; }

    // Surface
    void setCaption(const std::string& text) override;
    void setUsable(bool usable) override { EnableWindow(handle(), usable ? TRUE : FALSE); }
    void showUp() override;
    void showMinimised() override;
    void restore() override;
    bool isMinimised() const override { return IsIconic(handle()) != 0; }
    bool takesInput() const override { return IsWindowEnabled(handle()) != 0; }
    bool isAltDown() const override { return isAltHeld(); }
    void takeKeyboard() override { SetFocus(handle()); }
    PixelPlace place() const override;
    void setPlace(const PixelPlace& place) override;
    void moveTo(PixelPoint corner) override;
    void placeWanted() override;
    bool isDrag(int across, int down) const override;
    void letMouseGo() override;
    void paintAnew(const PixelPlace& part) override;
    void paintAllAnew() override { InvalidateRect(handle(), nullptr, FALSE); }
    void showRing(const Rectangle& place) override;
    double labelWidth(const std::string& text, double height) const override;
    void focusChanged() override;
    void later(EventLoop::Handler handler) override;

protected:
    /// Files of a list open it, not the user's hand: it leaves the keyboard to another program.
    virtual bool opensByItself() const { return false; }

    LRESULT message(UINT message, WPARAM first, LPARAM second) override;
    bool hasForm() const override { return live() != nullptr; }

private:
    bool staysAside() const;
    void sizeTold(WPARAM kind);
    void paint();
    void typed(wchar_t unit);
    void dropped(const DropData& data, POINT at);
    std::string tipUnderPointer() const;
    void tipOver(DrawnWindow::Place at);

    AccessibleForm* accessible_;  ///< shared with those who ask
    ToolTip tip_;
    DropTarget dropTarget_;
    StretchedPicture stretched_;
    Rectangle ring_;          ///< empty: there is none
    bool minimised_ = false;  ///< as it was told last
    wchar_t high_ = 0;        ///< first half of a character that comes in two
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
};

}  // namespace corvane
