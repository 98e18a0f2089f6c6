// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/text_encoding.h"

#include <gtest/gtest.h>

#include "types/shift_jis.h"

namespace corvane::text {
namespace {

std::string utf16(std::u16string_view text, bool highFirst) {
    std::string bytes;
    for (const char16_t unit : text) {
        const auto high = static_cast<char>(unit >> 8U);
        const auto low = static_cast<char>(unit & 0xFFU);
        bytes += highFirst ? high : low;
        bytes += highFirst ? low : high;
    }
    return bytes;
}

/// LIST-39: The bytes of a list that others wrote are UTF-8, UTF-16, Shift-JIS or the Windows form of Latin-1, by a
/// mark or
///     by what they look like
TEST(TextEncoding, AMarkSaysIt) {
    EXPECT_EQ(toUtf8("\xEF\xBB\xBF"
                     "caf\xC3\xA9"),
              "café");
    EXPECT_EQ(toUtf8("\xFF\xFE" + utf16(u"夜.mp3 😀", false)), "夜.mp3 😀");
    EXPECT_EQ(toUtf8("\xFE\xFF" + utf16(u"夜.mp3 😀", true)), "夜.mp3 😀");
    EXPECT_EQ(toUtf8("\xEF\xBB\xBF"
                     "caf\xE9"),
              "caf\uFFFD")
        << "whatever the mark says";
}

TEST(TextEncoding, Utf16WithoutAMarkIsSeenByItsZeros) {
    const std::u16string text = u"#EXTM3U\r\n音楽\\夜.mp3\r\nsong.mp3\r\n";
    EXPECT_EQ(toUtf8(utf16(text, false)), "#EXTM3U\r\n音楽\\夜.mp3\r\nsong.mp3\r\n");
    EXPECT_EQ(toUtf8(utf16(text, true)), "#EXTM3U\r\n音楽\\夜.mp3\r\nsong.mp3\r\n");
}

TEST(TextEncoding, HalvesOfPairsAreNoCharacters) {
    EXPECT_EQ(toUtf8(std::string("\xFF\xFE\x3D\xD8"
                                 "a\0",
                                 6)),
              "\uFFFDa");
}

TEST(TextEncoding, JapaneseOfShiftJis) {
    EXPECT_EQ(toUtf8("\x89\xB9\x8A\x79\\\x96\xE9\x82\xCC\x89\xCC.mp3"), "音楽\\夜の歌.mp3");
    EXPECT_EQ(toUtf8("\x83\x5C\x83\x93\x83\x4F.mp3"), "ソング.mp3") << "a second byte that is a backslash in ASCII";
    EXPECT_EQ(toUtf8("\xB6\xC0\xB6\xC5 \x83\x4A\x83\x5E\x83\x4A\x83\x69"), "ｶﾀｶﾅ カタカナ");
}

TEST(TextEncoding, AccentedLettersOfLatinAreNoJapanese) {
    EXPECT_EQ(toUtf8("caf\xE9.mp3"), "café.mp3");
    EXPECT_EQ(toUtf8("M\xE9moire d'\xE9t\xE9.mp3"), "Mémoire d'été.mp3");
    EXPECT_EQ(toUtf8("\xC4rzte - \xDC"
                     "ber.mp3\nBj\xF6rk.mp3"),
              "Ärzte - Über.mp3\nBjörk.mp3");
    EXPECT_EQ(toUtf8("it\x92s \x80"
                     "5.mp3"),
              "it’s €5.mp3");
}

TEST(TextEncoding, Utf8IsTakenByItsShortestFormAlone) {
    EXPECT_TRUE(isUtf8("aé夜😀"));
    for (const char* bytes : {"\xC0\x80", "\xE0\x80\x80", "\xF0\x80\x80\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
                              "\xF5\x80\x80\x80", "\x80", "\xC3", "\xE5\xA4", "\xF0\x9F\x98"}) {
        EXPECT_FALSE(isUtf8(bytes)) << testing::PrintToString(std::string(bytes));
    }
    EXPECT_EQ(validUtf8("a\xE5\xA4"
                        "b"),
              "a\uFFFD\uFFFD"
              "b");
}

TEST(TextEncoding, ACharacterThatThereCannotBe) {
    std::string text;
    appendUtf8(text, 0x110000);
    appendUtf8(text, 0xD800);
    appendUtf8(text, 0x10FFFF);
    EXPECT_EQ(text, "\uFFFD\uFFFD\U0010FFFF");
}

TEST(ShiftJis, PairsOfTheTablesEdges) {
    EXPECT_EQ(shiftJis(0x81, 0x40), U'\u3000');
    EXPECT_EQ(shiftJis(0x81, 0x7E), U'×');
    EXPECT_EQ(shiftJis(0x81, 0x7F), U'\0');
    EXPECT_EQ(shiftJis(0x81, 0x80), U'÷');
    EXPECT_EQ(shiftJis(0x81, 0xFC), U'◯');
    EXPECT_EQ(shiftJis(0x81, 0xFD), U'\0');
    EXPECT_EQ(shiftJis(0x81, 0x3F), U'\0');
    EXPECT_EQ(shiftJis(0x80, 0x40), U'\0');
    EXPECT_EQ(shiftJis(0x88, 0x9F), U'亜');
    EXPECT_EQ(shiftJis(0x81, 0xAD), U'\0') << "a hole";
}

}  // namespace
}  // namespace corvane::text
