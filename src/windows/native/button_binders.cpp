// SPDX-License-Identifier: GPL-3.0-or-later
#include "windows/native/binder.h"
#include "windows/native/native_form_window.h"

namespace corvane {

namespace {

constexpr int kButtonMargin = 12;  ///< left and right of a push button's text
constexpr int kMarkRoom = 22;      ///< of the mark before a choice's text

class PushBinder : public Binder {
public:
    PushBinder(NativeWindow& window, CommandButton& button)
        : Binder(window, button, WC_BUTTONW, static_cast<DWORD>(button.Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON)),
          button_(button) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) show(button_.Caption);
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        Binder::takeAll();
    }
    void command(int code) override {
        if (code == BN_CLICKED) window().apply([this] { button_.Click.raise(); });
    }
    SIZE wanted() const override {
        const SIZE size = textSize(button_.Caption);
        return {size.cx + 2 * kButtonMargin, size.cy + kButtonMargin / 2};
    }

private:
    CommandButton& button_;
};

/// Check boxes and option buttons: both have a Caption and a Value.
template <class C>
class ToggleBinder : public Binder {
public:
    ToggleBinder(NativeWindow& window, C& toggle, DWORD style)
        : Binder(window, toggle, WC_BUTTONW, style), toggle_(toggle) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) show(toggle_.Caption);
        if (property == PropertyId::Value) {
            SendMessageW(widget(), BM_SETCHECK, toggle_.Value ? BST_CHECKED : BST_UNCHECKED, 0);
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        changed(PropertyId::Value);
        Binder::takeAll();
    }
    void command(int code) override {
        if (code != BN_CLICKED) return;
        const bool on = SendMessageW(widget(), BM_GETCHECK, 0, 0) == BST_CHECKED;
        window().apply([this, on] { toggle_.Value = on; });
    }
    SIZE wanted() const override {
        const SIZE size = textSize(toggle_.Caption);
        return {size.cx + kMarkRoom, size.cy};
    }

private:
    C& toggle_;
};

class FrameBinder : public Binder {
public:
    // Transparent: its inside is the window's to paint.
    FrameBinder(NativeWindow& window, Frame& frame)
        : Binder(window, frame, WC_BUTTONW, BS_GROUPBOX, WS_EX_TRANSPARENT), frame_(frame) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) show(frame_.Caption);
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        Binder::takeAll();
    }
    SIZE wanted() const override { return {textSize(frame_.Caption).cx + 2 * kButtonMargin, 0}; }

private:
    Frame& frame_;
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

std::unique_ptr<Binder> makeButtonBinder(NativeWindow& window, Control& control) {
    switch (control.kind()) {
        case ControlKind::CheckBox:
            return std::make_unique<ToggleBinder<CheckBox>>(window, static_cast<CheckBox&>(control),
                                                            WS_GROUP | BS_AUTOCHECKBOX);
        case ControlKind::OptionButton: {
            auto& option = static_cast<OptionButton&>(control);
            return std::make_unique<ToggleBinder<OptionButton>>(window, option,
                                                                groupStart(option) | BS_AUTORADIOBUTTON);
        }
        case ControlKind::Frame:
            return std::make_unique<FrameBinder>(window, static_cast<Frame&>(control));
        default:
            return std::make_unique<PushBinder>(window, static_cast<CommandButton&>(control));
    }
}

}  // namespace corvane
