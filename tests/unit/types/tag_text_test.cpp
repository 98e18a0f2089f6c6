// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/tag_text.h"

#include <gtest/gtest.h>

#include <string>

#include "types/characters.h"
#include "types/text_encoding.h"

namespace corvane {
namespace {

std::string shown(std::string_view raw) { return tagText(raw); }

/// The text's code points below 256 as the UTF-8 that a program makes of bytes which it takes for Latin letters.
std::string asLatin(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) text::appendUtf8(text, static_cast<unsigned char>(c));
    return text;
}

// "I love you" in syllables, "cruel painting" in signs alone, "Privet"
constexpr std::string_view kSyllables = "\x82\xA0\x82\xA2\x82\xB5\x82\xC4\x82\xE9";
constexpr std::string_view kSigns = "\x8E\x63\x8D\x93\x89\xE6";
constexpr std::string_view kRussian = "\xCF\xF0\xE8\xE2\xE5\xF2";

/// TEXT-01: A tag in UTF-8 is kept, whatever its language
TEST(TagText, Utf8IsKept) {
    for (const std::string_view text :
         {"Plain words", "Café del Mar", "Ænima", "ÄÖÜ", "“Quoted” – well…", "残酷な天使のテーゼ", "عنوان الأغنية",
          "Привет, мир", "🎵 Emoji 👩‍🎤", "It’s", "Motörhead", "Über alles", "être là", "Sigur Rós – ( )"}) {
        EXPECT_EQ(shown(text), text);
    }
}

/// TEXT-02: A tag of other bytes is read as what it looks like: western, Cyrillic, Japanese
TEST(TagText, OtherBytesAreReadAsWhatTheyLookLike) {
    EXPECT_EQ(shown("Caf\xE9 del Mar"), "Café del Mar");
    EXPECT_EQ(shown("It\x92s \x93quoted\x94\x85"), "It’s “quoted”…");
    EXPECT_EQ(shown("l\x92\xE9t\xE9, l\xE9g\xE8re"), "l’été, légère");
    EXPECT_EQ(shown(kSyllables), "あいしてる");
    EXPECT_EQ(shown(kSigns), "残酷画");
    EXPECT_EQ(shown("01 " + std::string(kSyllables) + " (Live)"), "01 あいしてる (Live)");
    EXPECT_EQ(shown(kRussian), "Привет");
    EXPECT_EQ(shown("\xA8\xEB\xEA\xE0, \xB8\xEB\xEA\xE0 \xB9"
                    "7"),
              "Ёлка, ёлка №7");
    EXPECT_EQ(shown("\xAB\xEB\xEA\xE0\xBB\xA0\x97\xA0\xEB\xEA\xE0\x85"), "«лка»\u00A0—\u00A0лка…");
    EXPECT_EQ(shown("\xC4\xD6\xDC"), "ÄÖÜ");
}

/// TEXT-02
TEST(TagText, BytesThatAProgramTookForLatinLettersAreReadAnew) {
    EXPECT_EQ(shown(asLatin(kSyllables)), "あいしてる");
    EXPECT_EQ(shown(asLatin(kRussian)), "Привет");
    EXPECT_EQ(shown(asLatin("It\x92s")), "It’s");
    EXPECT_EQ(shown(asLatin("Caf\xE9")), "Café");
    EXPECT_EQ(shown(asLatin("Café")), "Café") << "UTF-8 twice";
}

/// TEXT-03: A tag is one line of a bounded length, without control characters or those that turn the direction
TEST(TagText, OneHarmlessLine) {
    EXPECT_EQ(shown("  a\r\n\tb   c \n"), "a b c");
    EXPECT_EQ(shown("a\x01\x1B[31m\x7F"
                    "b"),
              "a[31mb");
    EXPECT_EQ(shown("evil\u202Egpj.exe\u2066x\u2069"), "evilgpj.exex");
    EXPECT_EQ(shown("\uFEFFa\u2028b\uFEFF"), "a b");
    EXPECT_EQ(shown(std::string_view("a\0b", 3)), "a");
    EXPECT_EQ(shown(""), "");
    EXPECT_EQ(shown(" \n\t"), "");
    EXPECT_EQ(shown("\u200Fa"), "\u200Fa") << "a mark of direction turns nothing else around";
}

/// TEXT-03
TEST(TagText, ALongOneEndsWithAnEllipsis) {
    const std::string whole(kMostTagCharacters, 'a');
    EXPECT_EQ(shown(whole), whole);
    EXPECT_EQ(shown(whole + "b"), whole + "…");
    std::string wide;
    for (int i = 0; i < 1000; ++i) wide += "😀";
    const std::string cut = shown(wide);
    EXPECT_TRUE(text::isUtf8(cut));
    EXPECT_EQ(cut.size(), 4 * kMostTagCharacters + 3);
    EXPECT_EQ(shown(std::string(10'000'000, 'x')).size(), kMostTagCharacters + 3);
    EXPECT_EQ(shown(std::string(1'000'000, '\x01')), "");
}

TEST(Characters, WhatIsNoneIsToldApart) {
    for (const std::string_view none : {"\x80", "\xC0\x80", "\xC3", "\xE0\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                                        "\xF0\x80\x80\x80", "\xFF", "\xE3\x81"}) {
        EXPECT_EQ(text::firstCharacter(none).bytes, 0U);
        EXPECT_FALSE(text::isUtf8(none));
    }
    EXPECT_EQ(text::firstCharacter("").bytes, 0U);
    for (const std::uint32_t code :
         {0x00U, 0x7FU, 0x80U, 0x7FFU, 0x800U, 0xD7FFU, 0xE000U, 0xFFFFU, 0x10000U, 0x10FFFFU}) {
        std::string text;
        text::appendUtf8(text, code);
        EXPECT_EQ(text::firstCharacter(text).code, code);
        EXPECT_EQ(text::firstCharacter(text).bytes, text.size());
    }
}

}  // namespace
}  // namespace corvane
