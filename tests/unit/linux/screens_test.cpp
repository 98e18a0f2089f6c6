// SPDX-License-Identifier: GPL-3.0-or-later
// What a panel does when the screens under it change.
#include <QScreen>

#include "unit/linux/window_rig.h"

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

/// A panel of one colour, of another one on dense screens, with a button cut out of it.
struct DensityTest : ScreensTest {
    DensityTest() {
        const Picture skin = pictures.paired(test::plain(200, 100, Qt::darkBlue), [this] {
            ++asked;
            return test::plain(400, 200, Qt::darkRed);
        });
        form.Picture = skin;
        place(button, 10, 10, 40, 20);
        button.Picture = pictures.cut(skin, {20, 30, 40, 20});
    }
    QColor panelColour() { return shown().pixelColor(150, 80); }
    QColor buttonColour() { return shown().pixelColor(20, 20); }
    QtPictures pictures;
    CommandButton button{&form, "cmdTried"};
    int asked = 0;
};

TEST_F(DensityTest, PicturesAreAskedForWhenTheDensityCrossesTheLimitAndOnlyOnce) {
    attach();
    context.scale = 1.49;
    EXPECT_EQ(panelColour(), QColor(Qt::darkBlue));
    EXPECT_EQ(asked, 0);
    context.scale = 1.5;
    EXPECT_EQ(panelColour(), QColor(Qt::darkRed));
    EXPECT_EQ(buttonColour(), QColor(Qt::darkRed));
    context.scale = 1;
    EXPECT_EQ(panelColour(), QColor(Qt::darkBlue));
    EXPECT_EQ(buttonColour(), QColor(Qt::darkBlue));
    context.scale = 2;
    EXPECT_EQ(panelColour(), QColor(Qt::darkRed));
    EXPECT_EQ(asked, 1);
}

struct CountPaints : QObject {
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++count;
        return false;
    }
    int count = 0;
};

TEST_F(DensityTest, AWindowIsPaintedAnewOnAnotherScreenAndInAnotherDensity) {
    attach();
    CountPaints paints;
    widget().installEventFilter(&paints);
    settle();
    const int before = paints.count;
    emit screen().logicalDotsPerInchChanged(144);
    EXPECT_TRUE(test::waitUntil([&] { return paints.count > before; }));
    const int then = paints.count;
    QEvent other(QEvent::ScreenChangeInternal);
    QCoreApplication::sendEvent(&widget(), &other);
    EXPECT_TRUE(test::waitUntil([&] { return paints.count > then; }));
    widget().removeEventFilter(&paints);
}

}  // namespace
}  // namespace corvane
