// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/native_form_window.h"

namespace corvane {

namespace {

class PushControl : public SystemControl, public NativeButton {
public:
    PushControl(NativeWindow& window, const Control& control, NativeEvents& told)
        : SystemControl(window, control, told, WC_BUTTONW, BS_PUSHBUTTON) {}
    void setText(const std::string& text) override { setWindowText(text); }
    void setDefault(bool isDefault) override {
        ask(BM_SETSTYLE, static_cast<WPARAM>(isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), TRUE);
    }
    PixelSize ownSize() const override {
        constexpr int kAround = 6;
        return {0, textSize("Ag").height + kAround};
    }
    void command(int code) override {
        if (code == BN_CLICKED) events().pressed();
    }
};

/// A check box or an option; class C: the form's.
template <class C>
class ToggleControl : public SystemControl, public NativeButton {
public:
    ToggleControl(NativeWindow& window, const C& toggle, NativeEvents& told, DWORD style)
        : SystemControl(window, toggle, told, WC_BUTTONW, style), toggle_(toggle) {}
    void setText(const std::string& text) override { setWindowText(text); }
    void setOn(bool on) override { ask(BM_SETCHECK, on ? BST_CHECKED : BST_UNCHECKED); }
    PixelSize ownSize() const override {
        constexpr int kMarkRoom = 22;
        const PixelSize text = textSize(toggle_.Caption);
        return {text.width + kMarkRoom, text.height};
    }
    void command(int code) override {
        if (code == BN_CLICKED) events().toggled(ask(BM_GETCHECK) == BST_CHECKED);
    }

private:
    const C& toggle_;
};

class FrameControl : public SystemControl, public NativeButton {
public:
    // Transparent: its inside is the window's to paint.
    FrameControl(NativeWindow& window, const Control& frame, NativeEvents& told)
        : SystemControl(window, frame, told, WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT) {}
    void setText(const std::string& text) override { setWindowText(text); }
};

/// The first option of a container begins the group that the arrow keys go round in.
DWORD groupStart(const OptionButton& option) {
    for (const Control* each : option.form()->controls()) {
        if (each->kind() == ControlKind::OptionButton && each->Container == option.Container) {
            return each == &option ? WS_GROUP : 0;
        }
    }
    return 0;
}

}  // namespace

std::unique_ptr<NativeButton> NativeWindow::makeButton(const Control& control, NativeEvents& events) {
    switch (control.kind()) {
        case ControlKind::CheckBox:
            return std::make_unique<ToggleControl<CheckBox>>(*this, static_cast<const CheckBox&>(control), events,
                                                             WS_GROUP | BS_AUTOCHECKBOX);
        case ControlKind::OptionButton: {
            const auto& option = static_cast<const OptionButton&>(control);
            return std::make_unique<ToggleControl<OptionButton>>(*this, option, events,
                                                                 groupStart(option) | BS_AUTORADIOBUTTON);
        }
        case ControlKind::Frame:
            return std::make_unique<FrameControl>(*this, control, events);
        default:
            return std::make_unique<PushControl>(*this, control, events);
    }
}

}  // namespace corvane
