// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <limits>

#include "engine/mdlPublicFunction.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

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

TEST(MsecToText, KeepsTheSignOfEachPart) {
    EXPECT_EQ(MsecToText(-61000), "-01:-01");
    EXPECT_EQ(MsecToText(-500), "00:00");
    EXPECT_EQ(MsecToText(-32536), "00:-32");
    EXPECT_EQ(MsecToText(std::numeric_limits<std::int32_t>::min()), "-35791:-23");
}

TEST(TmsfToText, ReadsTheMinutesAndSecondsBytes) {
    EXPECT_EQ(TmsfToText(0), "00:00");
    EXPECT_EQ(TmsfToText(0x00221E05), "30:34");
    EXPECT_EQ(TmsfToText(0x003B4A01), "74:59");
    EXPECT_EQ(TmsfToText(0x4A3B0001), "00:59");
    EXPECT_EQ(TmsfToText(0x00FFFF00), "255:255");
    EXPECT_EQ(TmsfToText(4000), "15:00");
}

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

TEST_F(SliderWidth, IsTheShareOfTheFullWidth) {
    player.gSlideWidth = 3000;
    EXPECT_EQ(sliderWidth(player, 500, 1000), 1500.0F);
    EXPECT_EQ(sliderWidth(player, 1000, 1000), 3000.0F);
    EXPECT_EQ(sliderWidth(player, 0, 1000), 0.0F);
    EXPECT_EQ(sliderWidth(player, 1, 3), 1000.0F);
}

TEST_F(SliderWidth, IsOnePixelWithoutALength) {
    player.gSlideWidth = 3000;
    EXPECT_EQ(sliderWidth(player, 500, 0), 15.0F);
}

}  // namespace
}  // namespace corvane
