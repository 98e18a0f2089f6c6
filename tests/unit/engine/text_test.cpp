// SPDX-License-Identifier: GPL-3.0-or-later
// Capitals and numbers, at their limits.
#include "types/text.h"
#include "types/numbers.h"

#include "fake/player_fixture.h"

namespace corvane {
namespace {

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

/// KIND-21: Letters beyond ASCII have their capitals; none becomes a letter of ASCII
TEST(TextCapitals, AreMadeOfLettersOfManyAlphabets) {
    const std::vector<std::pair<const char*, const char*>> pairs = {{"mp3", "MP3"},
                                                                    {"éàöøþ÷ßÿ", "ÉÀÖØÞ÷ßŸ"},
                                                                    {"āĳĺňŋźž", "ĀĲĹŇŊŹŽ"},
                                                                    {"ǎǟǵȁȣ", "ǍǞǴȀȢ"},
                                                                    {"άέήίαρςσϊόύώ", "ΆΈΉΊΑΡΣΣΪΌΎΏ"},
                                                                    {"абвяёџҋӂӏӑ", "АБВЯЁЏҊӁӀӐ"},
                                                                    {"աֆ", "ԱՖ"},
                                                                    {"ḁẕạỹ", "ḀẔẠỸ"},
                                                                    {"ａｚ", "ＡＺ"},
                                                                    {"ⅰⓐ", "ⅠⒶ"},
                                                                    {"日本語", "日本語"},
                                                                    {"ĀÉАΩ×Ÿ", "ĀÉАΩ×Ÿ"},
                                                                    {"😀a", "😀A"}};
    for (const auto& [small, large] : pairs) {
        EXPECT_EQ(text::capitals(small), large);
        EXPECT_EQ(text::capitals(large), large);
    }
}

/// Otherwise a file of another name would be taken for one of the player's kinds.
/// KIND-21
TEST(TextCapitals, NoLetterBeyondAsciiBecomesOneOfAscii) {
    EXPECT_EQ(text::capitals("m\xC4\xB1"
                             "d"),
              "M\xC4\xB1"
              "D")
        << "a dotless i";
    EXPECT_EQ(text::capitals("\xC5\xBFnd"), "\xC5\xBFND") << "a long s";
}

/// KIND-21
TEST(TextCapitals, BytesThatAreNoUtf8Stay) {
    for (const std::string bytes : {"\xE9", "\xC3", "\xC3(", "\xE1\xB8", "\xFF\xFE", "\xF0\x9F\x98", "\xC1\xA1"}) {
        EXPECT_EQ(text::capitals(bytes), bytes);
        EXPECT_EQ(text::capitals(bytes + "."), bytes + ".");
    }
}

}  // namespace
}  // namespace corvane
