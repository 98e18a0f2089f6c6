// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/native/binder.h"
#include "shell/native/native_form.h"

// Labels and images: what has no keyboard and hands the mouse to its control.

namespace corvane {

namespace {

template <class C, class N>
class MouseBinder : public BinderOf<C, N> {
public:
    using BinderOf<C, N>::BinderOf;
    void mouse(const NativeMouse& mouse) override {
        NativeForm& form = this->form();
        form.run([this, &form, &mouse] {
            C& control = this->own;
            const MouseArgs args = form.args(mouse);
            switch (mouse.act) {
                case NativeMouse::Act::Move:
                    return control.MouseMove.raise(args);
                case NativeMouse::Act::Release:
                    if (mouse.button == kLeftButton && mouse.inside) control.Click.raise();
                    if (form.bound()) control.MouseUp.raise(args);
                    return;
                case NativeMouse::Act::Press:
                    return control.MouseDown.raise(args);
                case NativeMouse::Act::DoubleClick:
                    control.MouseDown.raise(args);
                    if (form.bound()) control.DblClick.raise();
                    return;
            }
        });
    }
};

class LabelBinder : public MouseBinder<Label, NativeLabel> {
public:
    LabelBinder(NativeForm& form, Label& label) : MouseBinder(form, label, form.surface(), &NativeSurface::makeLabel) {}
    void changed(PropertyId property) override {
        if (property == PropertyId::Caption) {
            shown->setText(own.Labels != nullptr ? marked(own.Caption) : own.Caption.get());
        }
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Caption);
        if (own.Labels != nullptr) shown->leadTo(*own.Labels);
        Binder::takeAll();
    }
    PixelSize wanted() const override {
        const PixelSize text = shown->textSize(own.Caption);
        return {text.width + 2, text.height};
    }
};

/// A mark takes clicks for its field whether it is seen or not: only that field's focus lets it be seen.
class MarkBinder : public MouseBinder<Image, NativeMark> {
public:
    MarkBinder(NativeForm& form, Image& image) : MouseBinder(form, image, form.surface(), &NativeSurface::makeMark) {}
    void changed(PropertyId property) override {
        const bool isHandle = own.MouseMove.isTied();
        if (property == PropertyId::Visible && !isHandle) return shown->light(own.Visible);
        Binder::changed(property);
    }
};

}  // namespace

std::unique_ptr<Binder> makeLabelBinder(NativeForm& form, Label& label) {
    return std::make_unique<LabelBinder>(form, label);
}

std::unique_ptr<Binder> makeMarkBinder(NativeForm& form, Image& image) {
    return std::make_unique<MarkBinder>(form, image);
}

}  // namespace corvane
