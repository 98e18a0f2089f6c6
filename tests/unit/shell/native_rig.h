// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include "fake/fake_loop.h"
#include "fake/fake_native.h"
#include "shell/native/native_form.h"
#include "shell/native/tab_order.h"

namespace corvane::test {

constexpr Twips px(int pixels) { return static_cast<Twips>(pixels) * kTwipsPerPixel; }

/// A dialog form on a window in memory. Its controls are made by the test before bind().
struct NativeFormRig : ::testing::Test, private ControlObserver {
    ~NativeFormRig() override {
        if (!native.bound()) return;
        unbind();
    }
    void bind() {
        form.addObserver(this);
        for (Control* each : form.controls()) each->addObserver(this);
        native.bind(form);
    }
    void unbind() {
        native.unbind();
        form.removeObserver(this);
    }
    void propertyChanged(Control& control, PropertyId property) override {
        if (native.bound()) native.changed(control, property);
    }

    FakeLoop loop;
    FakeSurface surface;
    NativeForm native{loop, surface};
    Form form{"frmTried", FormStyle::Dialog};
};

}  // namespace corvane::test
