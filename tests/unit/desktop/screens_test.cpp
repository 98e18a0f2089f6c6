// SPDX-License-Identifier: GPL-3.0-or-later
// What a panel does when the screens under it change.
#include <QScreen>

#include "unit/desktop/window_rig.h"

namespace corvane {
namespace {

struct ScreensTest : test::WindowRig {
    ScreensTest() : WindowRig(FormStyle::Painted) { form.Picture = test::plain(200, 100, Qt::darkBlue); }

    static QScreen& screen() { return *QGuiApplication::primaryScreen(); }
    bool isWhollyIn() { return screen().availableGeometry().contains(widget().geometry()); }
    void roomChanged() {
        emit screen().availableGeometryChanged(screen().availableGeometry());
        test::waitUntil([this] { return isWhollyIn(); }, 500);
        settle();
    }
};

TEST_F(ScreensTest, AWindowShownBeyondThemComesBackWhole) {
    form.Left = 9000 * kTwipsPerPixel;
    form.Top = 20 * kTwipsPerPixel;
    attach();
    EXPECT_TRUE(isWhollyIn()) << widget().x();
    EXPECT_EQ(widget().y(), 20);
    EXPECT_EQ(form.Left, static_cast<Twips>(widget().x()) * kTwipsPerPixel) << "and its form knows";
}

TEST_F(ScreensTest, WhatNoneShowsAnyMoreComesBackWhenTheyChange) {
    attach();
    widget().move(screen().geometry().right() - 10, 30);
    settle();
    ASSERT_FALSE(isWhollyIn());
    roomChanged();
    EXPECT_TRUE(isWhollyIn()) << widget().x();
    EXPECT_EQ(form.Left, static_cast<Twips>(widget().x()) * kTwipsPerPixel);
}

TEST_F(ScreensTest, WhatAHandCanGrabStays) {
    attach();
    const QPoint place(screen().geometry().right() - 50, 30);
    widget().move(place);
    roomChanged();
    EXPECT_EQ(widget().pos(), place);
}

TEST_F(ScreensTest, AMinimisedWindowComesBackWhenItIsRestored) {
    attach();
    form.WindowState = WindowState::Minimized;
    widget().move(-190, 30);
    settle();
    form.WindowState = WindowState::Normal;
    EXPECT_TRUE(test::waitUntil([this] { return isWhollyIn(); })) << widget().x();
}

}  // namespace
}  // namespace corvane
