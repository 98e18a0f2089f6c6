// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"
#include "shell/native/native_form.h"

namespace corvane {

namespace {

constexpr int kMargin = 12;  ///< left and right of the text of a push button or a frame

/// What has a caption; class C: its control.
template <class C>
class CaptionBinder : public BinderOf<C, NativeButton> {
public:
    CaptionBinder(NativeForm& form, C& control)
        : BinderOf<C, NativeButton>(form, control, form.surface(), &NativeSurface::makeButton) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) this->shown->setText(this->marked(this->own.Caption));
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        Binder::takeAll();
    }

protected:
    int captionWidth() const { return this->shown->textSize(this->own.Caption).width; }
};

class PushBinder : public CaptionBinder<CommandButton> {
public:
    using CaptionBinder::CaptionBinder;
    void changed(PropertyId property) override {
        if (property == PropertyId::Default) shown->setDefault(own.Default);
        CaptionBinder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Default);
        CaptionBinder::takeAll();
    }
    PixelSize wanted() const override { return {captionWidth() + 2 * kMargin, shown->ownSize().height}; }
    void pressed() override { form().command(own.Click); }
};

/// Check boxes and option buttons.
template <class C>
class ToggleBinder : public CaptionBinder<C> {
public:
    using CaptionBinder<C>::CaptionBinder;
    void changed(PropertyId property) override {
        if (property == PropertyId::Value) this->shown->setOn(this->own.Value);
        CaptionBinder<C>::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Value);
        CaptionBinder<C>::takeAll();
    }
    PixelSize wanted() const override { return this->shown->ownSize(); }
    void toggled(bool on) override {
        this->form().run([this, on] { this->own.Value = on; });
    }
};

class FrameBinder : public CaptionBinder<Frame> {
public:
    using CaptionBinder::CaptionBinder;
    PixelSize wanted() const override { return {captionWidth() + 2 * kMargin, 0}; }
};

}  // namespace

std::unique_ptr<Binder> makeButtonBinder(NativeForm& form, Control& control) {
    switch (control.kind()) {
        case ControlKind::CheckBox:
            return std::make_unique<ToggleBinder<CheckBox>>(form, static_cast<CheckBox&>(control));
        case ControlKind::OptionButton:
            return std::make_unique<ToggleBinder<OptionButton>>(form, static_cast<OptionButton&>(control));
        case ControlKind::Frame:
            return std::make_unique<FrameBinder>(form, static_cast<Frame&>(control));
        default:
            return std::make_unique<PushBinder>(form, static_cast<CommandButton&>(control));
    }
}

}  // namespace corvane
