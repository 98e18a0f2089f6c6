// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "shell/windowing/bound_window.h"
#include "shell/windowing/screens.h"
#include "winapi/api.h"
#include "winapi/program/windows_loop.h"

namespace corvane {

/// What every window of this desktop needs besides its form. Not owned; outlives the windows.
struct DesktopContext final : Screens {
    explicit DesktopContext(WindowsLoop& ownLoop, double ownScale = 1.0, HWND shownPanel = nullptr)
        : loop(ownLoop), wanted(ownScale), panel(shownPanel) {}

    /// What is wanted, at the dots per inch of the panel's screen.
    double factor() const override;
    Rectangle ofPanel() const override;
    Rectangle primary() const override;
    std::vector<ScreenArea> areas() const override;

    double scale() const { return factor(); }
    RECT screen() const;    ///< the panel's; the primary one before it is shown
    RECT workArea() const;  ///< of that screen, without the task bar

    WindowsLoop& loop;
    double wanted;  ///< size of the windows, 0.5 to 4; from CORVANE_SCALE
    HWND panel;     ///< the window of the painted form that was attached last

    std::function<void()> sessionAsked = {};     ///< the system asks whether its session may end
    std::function<void()> sessionEnds = {};      ///< it ends: what is to be put back is, when this returns
    std::function<void(WPARAM)> powerTold = {};  ///< of the machine's sleep, by every window
    std::function<void()> screensChange = {};    ///< they come, go, or leave other room, by every window
};

/// A window of the system as the frame of a form.
class SystemWindow : public WindowFrame {
public:
    explicit SystemWindow(DesktopContext& context) : context_(context) {}
    SystemWindow(const SystemWindow&) = delete;
    SystemWindow& operator=(const SystemWindow&) = delete;

    HWND handle() const { return handle_; }
    DesktopContext& context() const { return context_; }
    /// The window that a handle belongs to; null: none of ours.
    static SystemWindow* of(HWND handle);

    void activate() override;
    void putAway() override { ShowWindow(handle_, SW_HIDE); }
    bool isShown() const override { return IsWindowVisible(handle_) != 0; }
    void refresh() override { UpdateWindow(handle_); }
    void stack(int insertAfter, std::uint32_t flags) override;

    /// A key of the window that its controls need for themselves (Tab, Enter); true: it was handled.
    virtual bool filter(MSG& /*message*/) { return false; }
    /// The dots per inch have changed, or the panel went to a screen with others.
    virtual void takeScale() = 0;

protected:
    virtual ~SystemWindow();
    /// Makes the window, hidden. Messages come to message() from now on.
    void create(DWORD style, DWORD extendedStyle, const std::string& title);
    virtual LRESULT message(UINT message, WPARAM first, LPARAM second);
    virtual bool hasForm() const = 0;
    virtual void askToClose() = 0;  ///< the form decides

private:
    static LRESULT CALLBACK procedure(HWND handle, UINT message, WPARAM first, LPARAM second);

    DesktopContext& context_;
    HWND handle_ = nullptr;
};

/// Another program's window has the keyboard: what opens by itself leaves it there.
bool anotherProgramIsInFront();

bool isAltHeld();  ///< for the message being handled
int shiftState();  ///< kShiftMask, kCtrlMask, kAltMask as they are held for the message being handled

}  // namespace corvane
