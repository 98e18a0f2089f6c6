// SPDX-License-Identifier: GPL-3.0-or-later
// Readers of texts at their limits.
#include <gtest/gtest.h>

#include "engine/mdlPublicFunction.h"
#include "engine/text.h"

namespace corvane {
namespace {

using mdlPublicFunction::parseNumber;

TEST(TextLimits, CapitalsAreMadeOfLettersAlone) {
    EXPECT_EQ(text::upper('a'), 'A');
    EXPECT_EQ(text::upper('z'), 'Z');
    EXPECT_EQ(text::upper('`'), '`');
    EXPECT_EQ(text::upper('{'), '{');
    EXPECT_FALSE(text::sameWithoutCase("x{", "x["));
    EXPECT_FALSE(text::sameWithoutCase("x`", "x@"));
}

TEST(TextLimits, OneDigitIsEnoughForAPatternOfBits) {
    EXPECT_EQ(parseNumber("&H1"), 1);
    EXPECT_EQ(parseNumber("&O7"), 7);
    EXPECT_EQ(parseNumber("&H"), std::nullopt);
    EXPECT_EQ(parseNumber("&"), std::nullopt);
    EXPECT_EQ(parseNumber("&H&"), std::nullopt);
}

}  // namespace
}  // namespace corvane
