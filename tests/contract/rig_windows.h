// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/ports.h"

namespace corvane::test {

/// A screen of 1000 by 800 pixels and no windows.
class RigWindows : public Windows {
public:
    void attach(Form& /*form*/) override {}
    void detach(Form& /*form*/) override {}
    Twips screenWidth() override { return 15000; }
    Twips screenHeight() override { return 12000; }
    int doubleClickTimeMs() override { return 500; }
    bool prefersReducedMotion() override { return false; }
    void SetWindowPos(Form& /*form*/, int /*insertAfter*/, std::uint32_t /*flags*/) override {}
    void beginDrag(Form& /*form*/) override {}
    void activate(Form& /*form*/) override {}
    void refresh(Form& /*form*/) override {}
    int textWidth(Form& /*form*/, const std::string& /*text*/) override { return 0; }
};

}  // namespace corvane::test
