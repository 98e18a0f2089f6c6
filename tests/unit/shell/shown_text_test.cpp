// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/shown_text.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane {
namespace {

/// As in a font whose letters are all of one width.
std::u16string shownLinesOf(std::u16string_view text, std::size_t widest) {
    return shownLines(text, [widest](const std::u16string& word) { return word.size() <= widest; });
}

TEST(ShownLine, LineBreaksAreBlanksAndOtherControlCharactersAreSeen) {
    EXPECT_EQ(shownLine(u"a\nb\r\tc\vd\fe"), u"a b  c d e");
    EXPECT_EQ(shownLine(u"a\u2028b\u2029c\u0085d"), u"a b c d");
    EXPECT_EQ(shownLine(std::u16string(u"\x1b[31m\x7f\0\u009f", 8)), u"\uFFFD[31m\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(shownLine(u"あ é \U0001F600\u00A0"), u"あ é \U0001F600\u00A0");
}

/// "song\u202E3pm.exe" would be read as "songexe.mp3".
TEST(ShownLine, NoNameTurnsTheWritingAround) {
    for (const char16_t turn : u"\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069") {
        if (turn == 0) break;
        EXPECT_EQ(shownLine(std::u16string(u"song") + turn + u"3pm.exe"), u"song\uFFFD3pm.exe");
    }
    EXPECT_EQ(shownLine(u"שלום.mp3"), u"שלום.mp3") << "names that are written that way stay as they are";
    EXPECT_EQ(shownLine(u"\u200E\u200F\u2029\u2065\u206A"), u"\u200E\u200F \u2065\u206A");
}

TEST(ShownLines, KeepTheirBreaks) {
    EXPECT_EQ(shownLinesOf(u"two\r\nlines\tof\u202Etext", 99), u"two\nlines of\uFFFDtext");
    EXPECT_EQ(shownLinesOf(u"", 99), u"");
    EXPECT_EQ(shownLinesOf(u"a\n\nb\n", 99), u"a\n\nb\n");
    EXPECT_EQ(shownLinesOf(u"a\rb\r", 99), u"a b ");
}

TEST(ShownLines, AWordThatIsTooWideIsCutInItsMiddle) {
    EXPECT_EQ(shownLinesOf(u"0123456789.mp3 Can't open!!", 9), u"0123\u2026.mp3 Can't open!!");
    EXPECT_EQ(shownLinesOf(u"a  " + std::u16string(40, u'w'), 4), u"a  w\u2026ww");
    EXPECT_EQ(shownLinesOf(u"wide", 0), u"\u2026") << "where nothing fits";
}

TEST(ShownLines, NeitherALineNorTheirNumberIsWithoutAnEnd) {
    const std::u16string one = shownLinesOf(u"begin " + std::u16string(4000, u'w') + u" end", 9999);
    EXPECT_EQ(one.size(), 300U);
    EXPECT_TRUE(one.starts_with(u"begin w"));
    EXPECT_TRUE(one.ends_with(u"w end"));
    std::u16string many;
    for (int i = 0; i < 12; ++i) many += u"line\n";
    many.pop_back();
    EXPECT_EQ(shownLinesOf(many, 99), many);
    EXPECT_EQ(shownLinesOf(many + u"\nlast", 99), many + u"\n\u2026");
}

TEST(ShownTip, IsOneLineThatDoesNotFillTheScreen) {
    EXPECT_EQ(shownTip(u"C:\\a\u202Eb\nc"), u"C:\\a\uFFFDb c");
    const std::u16string tip = shownTip(u"first" + std::u16string(100000, u'w') + u"last");
    EXPECT_EQ(tip.size(), 600U);
    EXPECT_TRUE(tip.starts_with(u"first") && tip.ends_with(u"last"));
}

/// FAULT-68: Of a row that is longer than any list is wide the desktop gets its beginning and its end alone
TEST(ShownRow, IsNoLongerThanCanBeSeen) {
    EXPECT_EQ(shownRow(u"a\u202Eb\nc"), u"a\uFFFDb c");
    const std::u16string name = std::u16string(799, u'n') + u"e";
    EXPECT_EQ(shownRow(name), name);
    const std::u16string row = shownRow(u"first" + std::u16string(100000, u'w') + u"last");
    EXPECT_EQ(row.size(), 800U);
    EXPECT_TRUE(row.starts_with(u"first") && row.ends_with(u"last"));
}

/// FAULT-68
TEST(ShownRow, HasNoMorePicturesThanAreSeen) {
    std::u16string joined;
    for (int count = 0; count < 4000; ++count) joined += u"\U0001F469\u200d";
    const std::u16string row = shownRow(u"first" + joined + u"last");
    const auto pictures = std::count(row.begin(), row.end(), u'\xD83D');
    EXPECT_LE(pictures, 100);
    EXPECT_GE(pictures, 90);
    EXPECT_TRUE(row.starts_with(u"first") && row.ends_with(u"last"));
    const std::u16string few = joined.substr(0, 300);
    EXPECT_EQ(shownRow(few), few);
}

TEST(CutInMiddle, TakesNoPairApart) {
    const std::u16string faces = u"\U0001F600\U0001F600\U0001F600\U0001F600";
    EXPECT_EQ(cutInMiddle(faces, 8), faces);
    EXPECT_EQ(cutInMiddle(faces, 7), u"\U0001F600\u2026\U0001F600");
    EXPECT_EQ(cutInMiddle(faces, 3), u"\u2026");
    EXPECT_EQ(cutInMiddle(faces, 1), u"\u2026");
}

}  // namespace
}  // namespace corvane
