// SPDX-License-Identifier: GPL-3.0-or-later
#include "pictures/pixels.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

using Line = std::vector<std::uint32_t>;
constexpr std::uint32_t kBlack = 0xFF000000, kRed = 0xFFFF0000, kBlue = 0xFF0000FF, kGrey = 0xFF808080;

Line allOf(PixelBuffer& buffer) { return {buffer.row(0), buffer.row(0) + buffer.width() * buffer.height()}; }

TEST(Pixels, ABufferIsBlackAndOpaqueAndNeverSmallerThanNothing) {
    PixelBuffer buffer(2, 2);
    EXPECT_EQ(allOf(buffer), Line(4, kBlack));
    PixelBuffer none(-1, -5);
    EXPECT_EQ(none.width(), 0);
    EXPECT_EQ(none.height(), 0);
    EXPECT_EQ(buffer.view().at(1, 1), kBlack);
    EXPECT_EQ(buffer.view().width, 2);
}

TEST(Pixels, FillsWhatLiesInside) {
    PixelBuffer buffer(4, 3);
    buffer.fill(1, 1, 2, 1, 0xFF0000);
    const Line one{kBlack, kBlack, kBlack, kBlack, kBlack, kRed, kRed, kBlack, kBlack, kBlack, kBlack, kBlack};
    EXPECT_EQ(allOf(buffer), one);
    buffer.fill(4, 0, 2, 3, 0xFF);
    buffer.fill(-3, 0, 3, 3, 0xFF);
    buffer.fill(0, 3, 4, 1, 0xFF);
    buffer.fill(3, 0, 0, 3, 0xFF);
    EXPECT_EQ(allOf(buffer), one) << "outside of it";
    buffer.fill(-1, -1, 2, 2, 0xFF);
    buffer.fill(3, 2, 9, 9, 0xFF);
    EXPECT_EQ(allOf(buffer),
              (Line{kBlue, kBlack, kBlack, kBlack, kBlack, kRed, kRed, kBlack, kBlack, kBlack, kBlack, kBlue}));
}

TEST(Pixels, DrawsAPictureOverWhatIsThereAndNoMoreOfItThanAsked) {
    const Line dots{kRed, kBlue, kGrey, 0xFF010203, 0xFF040506, 0xFF070809};
    const PixelsView picture{dots.data(), 3, 2};
    PixelBuffer buffer(4, 3);
    buffer.draw(picture, 1, 1, 9, 9);
    EXPECT_EQ(allOf(buffer), (Line{kBlack, kBlack, kBlack, kBlack, kBlack, kRed, kBlue, kGrey, kBlack, 0xFF010203,
                                   0xFF040506, 0xFF070809}));
    buffer.fill(0, 0, 4, 3, 0);
    buffer.draw(picture, -1, -1, 3, 2);
    EXPECT_EQ(allOf(buffer), (Line{0xFF040506, 0xFF070809, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack,
                                   kBlack, kBlack, kBlack}));
    buffer.fill(0, 0, 4, 3, 0);
    buffer.draw(picture, 3, 2, 2, 1);
    buffer.draw(picture, 0, 0, 2, 1);
    EXPECT_EQ(allOf(buffer),
              (Line{kRed, kBlue, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kBlack, kRed}));
}

TEST(Pixels, WhatIsSeenThroughIsMixedWithWhatLiesBeneath) {
    const Line dots{0x00000000, 0x80400000, 0xFF0A0B0C, 0x80FF0000};
    PixelBuffer buffer(4, 1);
    buffer.fill(0, 0, 4, 1, 0x2040FF);
    buffer.draw({dots.data(), 4, 1}, 0, 0, 4, 1);
    // Of what lies beneath 127 of 255 parts are seen: 0x20 gives 16, 0x40 gives 32, 0xFF gives 127; what is too much is
    // full.
    EXPECT_EQ(allOf(buffer), (Line{0xFF2040FF, 0xFF50207F, 0xFF0A0B0C, 0xFFFF207F}));
}

TEST(Pixels, StretchesByTheNearestPixel) {
    const Line dots{kRed, kBlue};
    Line out(8, kBlack);
    stretch({dots.data(), 2, 1}, {0, 0, 4, 2}, 0, 0, 4, 2, false, out.data(), 4);
    EXPECT_EQ(out, (Line{kRed, kRed, kBlue, kBlue, kRed, kRed, kBlue, kBlue}));
    Line part(6, kBlack);  // the middle of it, into longer lines
    stretch({dots.data(), 2, 1}, {-1, 0, 4, 2}, 0, 1, 2, 1, false, part.data() + 1, 3);
    EXPECT_EQ(part, (Line{kBlack, kRed, kBlue, kBlack, kBlack, kBlack}));
    Line beyond(2, kBlack);  // behind the edge its last pixel goes on
    stretch({dots.data(), 2, 1}, {0, 0, 2, 1}, 5, 3, 1, 1, false, beyond.data(), 1);
    EXPECT_EQ(beyond, (Line{kBlue, kBlack}));
    Line none(1, kGrey);
    stretch({dots.data(), 0, 1}, {0, 0, 2, 1}, 0, 0, 1, 1, false, none.data(), 1);
    stretch({dots.data(), 2, 0}, {0, 0, 2, 1}, 0, 0, 1, 1, false, none.data(), 1);
    stretch({dots.data(), 2, 1}, {0, 0, 0, 1}, 0, 0, 1, 1, false, none.data(), 1);
    EXPECT_EQ(none, Line{kGrey});
}

TEST(Pixels, StretchesSmoothlyBetweenPixels) {
    const Line dots{0xFF000000, 0xFF640000, 0xFF0000C8, 0xFF6400C8};  // 100 to the right, 200 downwards
    Line out(16, kBlack);
    stretch({dots.data(), 2, 2}, {0, 0, 4, 4}, 0, 0, 4, 4, true, out.data(), 4);
    const std::uint32_t across[] = {0, 25, 75, 100}, down[] = {0, 50, 150, 200};
    for (std::size_t y = 0; y < 4; ++y) {
        for (std::size_t x = 0; x < 4; ++x)
            EXPECT_EQ(out[y * 4 + x], kBlack | across[x] << 16U | down[y]) << x << ", " << y;
    }
    Line same(4, kBlack);
    stretch({dots.data(), 2, 2}, {0, 0, 2, 2}, 0, 0, 2, 2, true, same.data(), 2);
    EXPECT_EQ(same, dots) << "at its own size nothing is mixed";
}

TEST(Pixels, MadeSmallerEachPixelIsTheAverageOfThoseItStandsFor) {
    const Line dots{0xFF000000, 0xFF040200, 0xFF000000, 0xFF00000A, 0xFF000000, 0xFF000000,
                    0xFF000003, 0x00000000, 0xFF000000, 0xFF000000, 0xFF000000, 0xFF0A0000};
    const PixelsView picture{dots.data(), 6, 2};
    // Of four: 4 gives 1, 2 gives a half, which counts as 1, as does 3; three of four opaque; 10 gives 2 and a half.
    EXPECT_EQ(reduced(picture, 3, 1), (Line{0xBF010101, 0xFF000003, 0xFF030000}));
    EXPECT_EQ(reduced(picture, 6, 2), dots);
    EXPECT_EQ(reduced(picture, 1, 2).size(), 2U);
    EXPECT_EQ(reduced(picture, 4, 1)[0], 0xFF000002) << "the first column alone, 3 giving 1 and a half";
}

TEST(Pixels, BetweenTwoColoursByAShare) {
    EXPECT_EQ(between(0xFF102030, 0x00FFFFFF, 0), 0xFF102030);
    EXPECT_EQ(between(0xFF102030, 0x01FF0099, 256), 0x01FF0099U);
    EXPECT_EQ(between(0x00000000, 0xFF00FF01, 128), 0x80008001U);
    EXPECT_EQ(between(0x00000064, 0x00000000, 64), 0x0000004BU);
    EXPECT_EQ(between(0x00000000, 0x000000FF, 1), 0x00000001U);
}

TEST(Pixels, AnEllipseCoversItsPixelsWhollyPartlyOrNotAtAll) {
    const Rectangle place{1, 1, 8, 4};
    EXPECT_EQ(ellipseCover(place, 4, 2), 256U);
    EXPECT_EQ(ellipseCover(place, 0, 2), 0U);
    EXPECT_EQ(ellipseCover({0, 0, 16, 16}, 0, 0), 0U) << "the corner of its rectangle";
    EXPECT_EQ(ellipseCover(place, 9, 2), 0U);
    for (const auto& [x, y] : {std::pair{2, 1}, {7, 1}, {2, 4}, {7, 4}}) {  // the same on every side
        EXPECT_EQ(ellipseCover(place, x, y), ellipseCover(place, 2, 1)) << x << ", " << y;
    }
    EXPECT_EQ(ellipseCover({0, 0, 2, 2}, 0, 0), 208U) << "13 of 16 points of a quarter of a circle";
    EXPECT_EQ(ellipseCover({0, 0, 0, 2}, 0, 0), 0U);
    EXPECT_EQ(ellipseCover({0, 0, 2, 0}, 0, 0), 0U);
}

}  // namespace
}  // namespace corvane
