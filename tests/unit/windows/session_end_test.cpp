// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "shell/windowing/make_drawn.h"
#include "windows/windowing/media_canvas.h"

namespace corvane {
namespace {

struct SessionEnd : ::testing::Test {
    SessionEnd() {
        context.sessionAsked = [this] { ++asked; };
        context.sessionEnds = [this] {
            loop.post([this] { put = true; });
            loop.afterMessage([this] { afterwards = true; });
            inTime = loop.pumpInside([this] { return put; }, 2000);
            early = afterwards;
        };
        window->bind();
    }
    ~SessionEnd() override { window->unbind(); }

    WindowsLoop loop;
    DesktopContext context{loop, 1.0, nullptr};
    Form form{"frmTried", FormStyle::Painted};
    std::unique_ptr<DrawnWindow> window = makeDrawn<CanvasWindow, MediaCanvas>(form, context);
    CanvasWindow& canvas = static_cast<CanvasWindow&>(window->surface());
    int asked = 0;
    bool put = false;
    bool inTime = false;
    bool afterwards = false;
    bool early = false;
};

/// WIN-37: The end of the system's session closes the player as its power button does, before the system is answered
TEST_F(SessionEnd, WhatIsToBePutBackIsBeforeTheAnswer) {
    EXPECT_EQ(SendMessageW(canvas.handle(), WM_QUERYENDSESSION, 0, 0), TRUE);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(put);
    SendMessageW(canvas.handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(put) << "an event that was posted has run";
    EXPECT_TRUE(inTime);
    EXPECT_FALSE(early) << "a window whose message is being handled is not taken away";
    loop.runUntil([this] { return afterwards; }, 2000);
    EXPECT_TRUE(afterwards);
}

/// WIN-37
TEST_F(SessionEnd, ASessionThatGoesOnEndsNothing) {
    SendMessageW(canvas.handle(), WM_ENDSESSION, FALSE, 0);
    EXPECT_FALSE(put);
}

}  // namespace
}  // namespace corvane
