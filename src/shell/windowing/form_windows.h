// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <memory>
#include <optional>

#include "platform/ports.h"
#include "shell/windowing/drawn_window.h"

namespace corvane {

/// The windows of the forms: one BoundWindow a form, chosen by the form's style.
class FormWindows : public Windows {
public:
    /// Both outlive it.
    FormWindows(EventLoop& loop, const Screens& screens) : loop_(loop), screens_(screens) {}
    ~FormWindows() override;

    void attach(Form& form) override;
    void detach(Form& form) override;
    Twips screenWidth() override;
    Twips screenHeight() override;
    void SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) override;
    void beginDrag(Form& form) override;
    void activate(Form& form) override;
    void refresh(Form& form) override;
    int textWidth(Form& form, const std::string& text) override;

    /// The form's window, or null.
    BoundWindow* windowOf(const Form& form) const;
    /// A drop on the painted form that takes files; kept until there is one.
    void dropFiles(const DropData& dropped);
    /// Restores and shows in front, as an event of its own, what the user would use now: the form that takes files, or
    /// the dialogs that stand before it.
    void bringForward();
    /// Asks the painted forms to close, as a window manager does.
    void requestClose();
    /// What is held by the mouse is let go: a box or a menu is up.
    void loseMouse();
    void screensChanged();
    void hideAll();

protected:
    /// The window for a form's style; null: it has none.
    virtual std::unique_ptr<BoundWindow> makeWindow(Form& form) = 0;
    /// The window of the painted form that came last; null: there is none.
    virtual void panelIs(BoundWindow* panel) = 0;
    /// Destroys a window when no code of it runs any more.
    virtual void bury(std::unique_ptr<BoundWindow> gone) = 0;

private:
    DrawnWindow* fileTaker() const;
    void offerWaitingFiles();
    template <class Act>
    void eachDrawn(const Act& act) const;

    EventLoop& loop_;
    const Screens& screens_;
    std::map<const Form*, std::unique_ptr<BoundWindow>> windows_;
    BoundWindow* panel_ = nullptr;
    std::optional<DropData> waiting_;
};

}  // namespace corvane
