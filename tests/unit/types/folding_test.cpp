// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/folding.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace corvane::text {
namespace {

bool finds(std::string_view wanted, std::string_view text) { return holdsAll(folded(text), wordsToFind(wanted)); }

struct Looked {
    const char* wanted;
    const char* text;
    bool found;
};

void expectFound(std::initializer_list<Looked> table) {
    for (const auto& [wanted, text, found] : table) EXPECT_EQ(finds(wanted, text), found) << wanted << " in " << text;
}

/// FIND-01: What is typed is found anywhere in a text, without case and without accents
/// FIND-02: A letter and its accent are found alike as one character and as two
/// FIND-03: Wide and narrow letters, and both kinds of kana, are the same
/// FIND-04: Each of several words must stand somewhere; blanks alone find everything
TEST(Folding, WhatIsFound) {
    expectFound({
        {"bjork", "Björk - Jóga", true},
        {"JÓGA", "bjork - joga", true},
        {"smorrebrod", "SMØRREBRØD", true},
        {"łódź", "Lodz", true},
        {"Nguyen", "Nguyễn Văn", true},
        {"αθηνα", "Αθήνα", true},
        {"ЕЩЕ", "ещё не", true},
        {"чайковскии", "Чайковский", true},
        {"jorga", "Jóga", false},
        {"cafe\xCC\x81", "Café", true},
        {"café", "cafe\xCC\x81", true},
        {"か\xE3\x82\x99", "が", true},
        {"abc1", "ＡＢＣ１", true},
        {"ａｂｃ", "Abc", true},
        {"さくら", "サクラ", true},
        {"サクラ", "ｻｸﾗ", true},
        {"ﾊﾞﾗ", "ばら", true},
        {"ほん", "ぼん", true},
        {"はははひひひふふふへへへほほほ", "はばぱひびぴふぶぷへべぺほぼぽ", true},
        {"さくら", "桜", false},
        {"桜", "夜の桜", true},
        {"joga bjork", "Björk - Jóga", true},
        {"joga blur", "Björk - Jóga", false},
        {"", "x", true},
        {"  \t", "x", true},
        {"夜　桜", "夜の桜", true},  // a wide blank parts words as well
    });
}

/// FIND-24: Letters that are written as one are found as the letters, and the other way round
TEST(Folding, LettersWrittenAsOne) {
    expectFound({
        {"strasse", "Die Straße", true},
        {"straße", "STRASSE", true},
        {"STRAẞE", "strasse", true},
        {"aegir", "Ægir", true},
        {"æther", "Aether", true},
        {"ǽ", "ae", true},
        {"coeur", "Cœur", true},
        {"ijssel", "Ĳssel", true},
        {"ǆep", "DZEP", true},
        {"office", "oﬃce", true},
        {"ﬂag", "flag", true},
        {"masse", "Maße", true},
        {"mase", "Maße", false},
    });
}

/// FIND-25: The parts of Korean syllables are found as the syllables, and the other way round
TEST(Folding, KoreanSyllables) {
    const char* const parts = "\u1109\u1165\u110B\u116E\u11AF";  // two syllables, the second with an end
    expectFound({
        {parts, "서울의 봄", true},
        {"서울", parts, true},
        {parts, parts, true},
        {"서우", parts, false},
        {"서\uC6B0\u11AF", "서울", true},        // a syllable, and the end that belongs to it
        {"\uC6B8\u11AF", "서울", false},         // it has one
        {"\u1109", "\u1109\u1109\u1165", true},  // a part that makes none
        {"\u1112\u1175\u11C2", "힣", true},      // the last one
        {"\u1100\u1161", "가", true},
        {"\u1113\u1161", "가", false},  // an old letter, of which no syllable has one character
    });
}

/// FIND-26: Points, vowels and other signs at letters of Hebrew and Arabic do not count, nor does what only widens
TEST(Folding, PointsAndVowels) {
    expectFound({
        {"שלום", "שָׁלוֹם", true},
        {"שָׁלוֹם", "שלום", true},
        {"\uFB2A\uFB31", "שב", true},  // letters with their point as one character
        {"\uFB4A", "\u05EA", true},
        {"محمد", "مُحَمَّد", true},
        {"مُحَمَّد", "محمد", true},
        {"سلام", "ســـلام", true},
        {"احمد", "أحمد", true},
        {"أحمد", "ا\u0654حمد", true},
        {"مؤمن", "مو\u0654من", true},
        {"فارسي", "فارسی", true},
        {"كتاب", "کتاب", true},
        {"سلم", "سلام", false},
    });
}

/// FIND-05: Bytes that are no UTF-8 stay as they are, and a text never grows
TEST(Folding, BytesOfNoEncodingStay) {
    for (const std::string_view odd : {"\xFF\xC3", "a\xE3\x82", "\xE3", "\x80\x80", "\xF0\x9F\x8E\xB5", "\xC0\x80"}) {
        EXPECT_LE(folded(odd).size(), odd.size());
        EXPECT_TRUE(finds(odd, odd));
    }
    EXPECT_EQ(folded("\xFF"), "\xFF");
    EXPECT_EQ(folded("♪\xF0\x9F\x8E\xB5"), "♪\xF0\x9F\x8E\xB5");
    for (unsigned letter = 0x80; letter < 0x10000; ++letter) {
        std::string text;
        if (letter < 0x800) {
            text = {static_cast<char>(0xC0U | letter >> 6U), static_cast<char>(0x80U | (letter & 0x3FU))};
        } else {
            text = {static_cast<char>(0xE0U | letter >> 12U), static_cast<char>(0x80U | (letter >> 6U & 0x3FU)),
                    static_cast<char>(0x80U | (letter & 0x3FU))};
        }
        ASSERT_LE(folded(text).size(), text.size()) << letter;
        ASSERT_EQ(folded(folded(text)), folded(text)) << letter;
    }
}

}  // namespace
}  // namespace corvane::text
