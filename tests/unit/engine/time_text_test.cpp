// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "engine/mdlPublicFunction.h"
#include "fake/player_fixture.h"
#include "types/numbers.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

/// TIME-01: Milliseconds: minutes are the whole part of 60000ths, seconds the rest's whole thousands; 999 is 00:00,
///     60000 is 01:00
/// TIME-02: Each has two digits at least; minutes never wrap: 100 minutes are 100:00
TEST(MsecToText, GivesMinutesAndSeconds) {
    EXPECT_EQ(MsecToText(0), "00:00");
    EXPECT_EQ(MsecToText(999), "00:00");
    EXPECT_EQ(MsecToText(59999), "00:59");
    EXPECT_EQ(MsecToText(60000), "01:00");
    EXPECT_EQ(MsecToText(61000), "01:01");
    EXPECT_EQ(MsecToText(3723000), "62:03");
    EXPECT_EQ(MsecToText(6000000), "100:00");
    EXPECT_EQ(MsecToText(std::numeric_limits<std::int32_t>::max()), "35791:23");
}

/// TIME-03: Both parts keep the sign: -61000 is -01:-01
TEST(MsecToText, KeepsTheSignOfEachPart) {
    EXPECT_EQ(MsecToText(-61000), "-01:-01");
    EXPECT_EQ(MsecToText(-500), "00:00");
    EXPECT_EQ(MsecToText(-32536), "00:-32");
    EXPECT_EQ(MsecToText(std::numeric_limits<std::int32_t>::min()), "-35791:-23");
}

/// TIME-04: Packed: minutes are bits 8 to 15, seconds bits 16 to 23; 0 is 00:00, minute 74 and second 59 are 74:59
/// TIME-05: Frames and track do not count
TEST(TmsfToText, ReadsTheMinutesAndSecondsBytes) {
    EXPECT_EQ(TmsfToText(0), "00:00");
    EXPECT_EQ(TmsfToText(0x00221E05), "30:34");
    EXPECT_EQ(TmsfToText(0x003B4A01), "74:59");
    EXPECT_EQ(TmsfToText(0x4A3B0001), "00:59");
    EXPECT_EQ(TmsfToText(0x00FFFF00), "255:255");
    EXPECT_EQ(TmsfToText(4000), "15:00");
}

/// TIME-06: A negative packed value is read by its digits: 80020103 is 01:02
TEST(TmsfToText, ReadsANegativeValueByItsDigits) {
    EXPECT_EQ(TmsfToText(static_cast<std::int32_t>(0x80020103U)), "01:02");
}

TEST(TmsfSecondBack, GoesToSecond59OfTheMinuteBefore) {
    EXPECT_EQ(TmsfToText(tmsfSecondBack(0x00050205)), "02:04");
    EXPECT_EQ(TmsfToText(tmsfSecondBack(0x00000205)), "01:59");
    EXPECT_EQ(tmsfSecondBack(0x00000205) & 0xFF, 5) << "the track stays";
    EXPECT_EQ(TmsfToText(tmsfSecondBack(0x00000005)), "00:00");
    EXPECT_EQ(TmsfToText(tmsfSecondBack(static_cast<std::int32_t>(0x80000105U))), "00:59");
}

/// TIME-07: A plain number is written in its short form
TEST(NumberText, IsTheShortFormOfAFloatingPointNumber) {
    EXPECT_EQ(numberText(0), "0");
    EXPECT_EQ(numberText(12), "12");
    EXPECT_EQ(numberText(12.5), "12.5");
    EXPECT_EQ(numberText(0.1 + 0.2), "0.3");
    EXPECT_EQ(numberText(-3), "-3");
    EXPECT_EQ(numberText(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(numberText(1e20), "1E+20");
}

using SliderWidth = PlayerFixture;

/// TIME-08: The slider's width is the position's share of the full width, and one pixel without a length
TEST_F(SliderWidth, IsTheShareOfTheFullWidth) {
    player.gSlideWidth = 3000;
    EXPECT_EQ(sliderWidth(player, 500, 1000), 1500.0F);
    EXPECT_EQ(sliderWidth(player, 1000, 1000), 3000.0F);
    EXPECT_EQ(sliderWidth(player, 0, 1000), 0.0F);
    EXPECT_EQ(sliderWidth(player, 1, 3), 1000.0F);
}

/// MOVIE-26: A length of 0 gives a slider of one pixel
/// TIME-08
TEST_F(SliderWidth, IsOnePixelWithoutALength) {
    player.gSlideWidth = 3000;
    EXPECT_EQ(sliderWidth(player, 500, 0), 15.0F);
}

}  // namespace
}  // namespace corvane
