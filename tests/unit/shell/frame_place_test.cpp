// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/media/frame_place.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

constexpr PixelSize kWide{200, 100};

TEST(FramePlace, KeepsThePicturesShapeInTheMiddle) {
    EXPECT_EQ(fittedInto(kWide, {10, 20, 100, 100}), (Rectangle{10, 45, 100, 50}));
    EXPECT_EQ(fittedInto(kWide, {0, 0, 400, 100}), (Rectangle{100, 0, 200, 100}));
    EXPECT_EQ(fittedInto({100, 400}, {0, 0, 100, 100}), (Rectangle{37.5, 0, 25, 100}));
}

TEST(FramePlace, NothingIsSeenWithoutAPictureOrAnArea) {
    EXPECT_TRUE(fittedInto({0, 100}, {0, 0, 50, 50}).empty());
    EXPECT_TRUE(fittedInto({100, 0}, {0, 0, 50, 50}).empty());
    EXPECT_TRUE(fittedInto(kWide, {0, 0, 0, 50}).empty());
    EXPECT_EQ(framePixels({{}, {0, 0, 50, 50}}), PixelSize());
    EXPECT_EQ(frameCovers({{}, {5, 5, 50, 50}}), PixelRect());
    EXPECT_EQ(frameCovers({kWide, {5, 5, 50, 0}}), PixelRect());
    EXPECT_EQ(frameShown({kWide, {5, 5, 0, 50}}).size(), PixelSize());
}

TEST(FramePlace, IsDrawnInTheScreensPixels) {
    EXPECT_EQ(framePixels({kWide, {7, 7, 100, 100}}), (PixelSize{100, 50}));
    EXPECT_EQ(framePixels({kWide, {7, 7, 100, 100}, 1.5}), (PixelSize{150, 75}));
    // What the window told counts before what the area comes to.
    EXPECT_EQ(framePixels({kWide, {7, 7, 100, 100}, 1.5, {151, 151}}), (PixelSize{151, 76}));
}

TEST(FramePlace, LiesOnWholePixelsWhereTheAreaIsWhatTheWindowTold) {
    const FrameRoom told{{100, 99}, {0, 0, 100, 101}, 1, {100, 101}};
    EXPECT_EQ(framePixels(told), (PixelSize{100, 99}));
    EXPECT_EQ(framePlace(told, {100, 99}), (Rectangle{0, 1, 100, 99}));
    const FrameRoom odd{{100, 98}, {0, 0, 100, 101}, 1, {100, 101}};
    EXPECT_EQ(framePlace(odd, framePixels(odd)), (Rectangle{0, 2, 100, 98}));
    const FrameRoom other{{100, 98}, {0, 0, 100, 101}, 1, {50, 50}};
    EXPECT_EQ(framePlace(other, framePixels(other)), (Rectangle{0, 1.5, 100, 98}));
    const FrameRoom dense{{100, 98}, {0, 0, 100, 101}, 2, {200, 202}};
    EXPECT_EQ(framePixels(dense), (PixelSize{200, 196}));
    EXPECT_EQ(framePlace(dense, {200, 196}), (Rectangle{0, 1.5, 100, 98})) << "half a unit is a whole pixel";
}

TEST(FramePlace, CoversNoPixelThatItFillsInPart) {
    EXPECT_EQ(frameCovers({{100, 98}, {0, 0, 100, 101}}), (PixelRect{0, 2, 100, 97}));
    EXPECT_EQ(frameCovers({kWide, {10, 20, 100, 100}}), (PixelRect{10, 45, 100, 50}));
    // Rounded up, a frame would lie over the area's edge: beyond it nothing is covered.
    EXPECT_EQ(frameCovers({{3, 2}, {0, 0, 5, 3}, 1, {5, 3}}).right(), 5);
}

TEST(FramePlace, IsShownOnWholePixelsOfTheWindow) {
    EXPECT_EQ(frameShown({{100, 98}, {10, 10, 100, 101}}), (PixelRect{10, 12, 100, 98}));
    EXPECT_EQ(frameShown({kWide, {10, 10, 101, 101}, 2}), (PixelRect{20, 71, 202, 101}));
}

}  // namespace
}  // namespace corvane
