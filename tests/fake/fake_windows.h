// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "fake/call_log.h"
#include "platform/ports.h"

namespace corvane {

/// Windows that are only remembered. A shown or activated window gets the keyboard focus and its Activate event, and a
/// control that asks for the focus gets it, each through the loop as on a screen.
class FakeWindows : public Windows, private ControlObserver {
public:
    FakeWindows(EventLoop& loop, CallLog& log) : loop_(loop), log_(log) {}
    FakeWindows(const FakeWindows&) = delete;
    FakeWindows& operator=(const FakeWindows&) = delete;
    ~FakeWindows() override;

    void attach(Form& form) override;
    void detach(Form& form) override;
    Twips screenWidth() override { return static_cast<Twips>(screenWidthPixels) * kTwipsPerPixel; }
    Twips screenHeight() override { return static_cast<Twips>(screenHeightPixels) * kTwipsPerPixel; }
    int doubleClickTimeMs() override { return doubleClickMs; }
    bool prefersReducedMotion() override { return reducedMotion; }
    void SetWindowPos(Form& form, int insertAfter, std::uint32_t flags) override;
    void beginDrag(Form& form) override { log_.did("windows.beginDrag " + form.name()); }
    void activate(Form& form) override;
    void refresh(Form& form) override { log_.did("windows.refresh " + form.name()); }
    int textWidth(Form& form, const std::string& text) override;

    int screenWidthPixels = 1024;
    int screenHeightPixels = 768;
    int doubleClickMs = 400;
    bool reducedMotion = false;
    int charWidthPixels = 8;  ///< of each byte of a text

    const std::vector<Form*>& attached() const { return attached_; }
    bool isAttached(const std::string& formName) const { return find(formName) != nullptr; }
    Form* find(const std::string& formName) const;  ///< null: not attached
    Form* active() const { return active_; }        ///< window with the keyboard focus, or null
    Control* focused() const { return focused_; }   ///< control with the keyboard focus, or null

private:
    void propertyChanged(Control& control, PropertyId property) override;
    void focus(Control* control);
    bool isAlive(const Control* control) const;

    EventLoop& loop_;
    CallLog& log_;
    std::vector<Form*> attached_;
    Form* active_ = nullptr;
    Control* focused_ = nullptr;
};

}  // namespace corvane
