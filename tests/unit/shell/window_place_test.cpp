// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/window_place.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

ScreenArea screen(double x, double y, double width, double height, double bar = 0) {
    return {{x, y, width, height}, {x, y + bar, width, height - bar}};
}

const ScreenArea kLeft = screen(0, 0, 1000, 800, 30);
const ScreenArea kRight = screen(1000, 100, 1000, 600);

TEST(WindowPlace, StaysWhileAGrabbablePartIsSeen) {
    for (const Rectangle& window : {Rectangle{300, 300, 400, 100}, Rectangle{-376, -76, 400, 100},
                                    Rectangle{1976, 676, 400, 100}, Rectangle{0, 5, 400, 100}}) {
        EXPECT_EQ(placeInSight(window, {kLeft, kRight}), window) << window.x;
    }
}

TEST(WindowPlace, ComesBackWhollyWhenLessIsSeen) {
    EXPECT_EQ(placeInSight({-377, 300, 400, 100}, {kLeft, kRight}), (Rectangle{0, 300, 400, 100}));
    EXPECT_EQ(placeInSight({300, 777, 400, 100}, {kLeft, kRight}), (Rectangle{300, 700, 400, 100}));
    EXPECT_EQ(placeInSight({300, -77, 400, 100}, {kLeft, kRight}), (Rectangle{300, 30, 400, 100})) << "below the bar";
}

TEST(WindowPlace, OfARemovedScreenIsTheNearestOne) {
    EXPECT_EQ(placeInSight({1500, 300, 400, 100}, {kLeft}), (Rectangle{600, 300, 400, 100}));
    const ScreenArea below = screen(0, 3000, 1000, 800);
    EXPECT_EQ(placeInSight({1500, 2500, 400, 100}, {kLeft, below}), (Rectangle{600, 3000, 400, 100}));
}

TEST(WindowPlace, IsTheScreenThatShowsMostOfIt) {
    // 10 pixels of it on the left, 20 on the right, each too few.
    const ScreenArea apartRight = screen(1370, 0, 1000, 800);
    EXPECT_EQ(placeInSight({990, 300, 400, 100}, {kLeft, apartRight}), (Rectangle{1370, 300, 400, 100}));
}

TEST(WindowPlace, OfASmallWindowNeedsAllOfIt) {
    const Rectangle first{0, 0, 1, 1};  // of the opening
    EXPECT_EQ(placeInSight(first, {kLeft}), first);
    EXPECT_EQ(placeInSight({-1, 40, 10, 10}, {kLeft}), (Rectangle{0, 40, 10, 10}));
}

TEST(WindowPlace, OfAWindowTooLargeShowsItsCorner) {
    EXPECT_EQ(placeInSight({-3000, 5000, 1200, 900}, {kLeft}), (Rectangle{0, 30, 1200, 900}));
}

/// DESK-14: On screens far beyond what a display's numbers hold a window stays where it is seen, and comes back from
/// where none
///     is
TEST(WindowPlace, OnThirtyTwoScreensIsTheOneThatShowsIt) {
    std::vector<ScreenArea> screens;
    for (int i = 0; i < 32; ++i) screens.push_back(screen(i * 2560.0, 0, 2560, 1440, 30));
    for (const double x : {0.0, 32'700.0, 32'800.0, 40'000.0, 65'500.0, 81'500.0}) {
        const Rectangle window{x, 700, 400, 100};
        EXPECT_EQ(placeInSight(window, screens), window) << x;
        EXPECT_EQ(placeInSight(window, {screens.front()}).right() <= 2560, true) << x;
    }
    EXPECT_EQ(placeInSight({90'000, 700, 400, 100}, screens), (Rectangle{81'520, 700, 400, 100}));
    EXPECT_EQ(placeInSight({-1e9, 1e9, 400, 100}, screens), (Rectangle{0, 1340, 400, 100}));
}

TEST(WindowPlace, WithoutAScreenStays) {
    const Rectangle window{5000, 5000, 400, 100};
    EXPECT_EQ(placeInSight(window, {}), window);
}

}  // namespace
}  // namespace corvane
