// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "shell/native/binder.h"
#include "shell/native/native_form.h"

namespace corvane {

namespace {

class StepperBinder : public BinderOf<ScrollBar, NativeStepper> {
public:
    StepperBinder(NativeForm& form, ScrollBar& bar)
        : BinderOf(form, bar, form.surface(), &NativeSurface::makeStepper) {}

    void changed(PropertyId property) override {
        if (property == PropertyId::Min || property == PropertyId::Max) shown->setRange(own.Min, own.Max);
        if (property == PropertyId::Value) shown->setValue(own.Value);
        Binder::changed(property);
    }
    void takeAll() override {
        changed(PropertyId::Min);
        changed(PropertyId::Value);
        Binder::takeAll();
    }

    void stepTo(int value) override {
        form().run([this, value] { own.Value = std::clamp(value, own.Min.get(), own.Max.get()); });
        // It has stepped by itself, and the form may want another value.
        if (form().bound()) shown->setValue(own.Value);
    }
    void stepBy(int steps) override {
        if (form().bound()) stepTo(own.Value + steps);
    }
    /// The ends are a step beyond the numbers, from where those wrap.
    void stepToEnd(bool last) override {
        if (form().bound()) stepTo(last ? own.Max - 1 : own.Min + 1);
    }
};

}  // namespace

std::unique_ptr<Binder> makeStepperBinder(NativeForm& form, ScrollBar& bar) {
    return std::make_unique<StepperBinder>(form, bar);
}

}  // namespace corvane
