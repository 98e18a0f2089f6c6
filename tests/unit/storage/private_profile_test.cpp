// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/private_profile.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace corvane {
namespace {

using namespace std::string_literals;

std::string get(const std::string& text, const std::string& key, const std::string& section = "S") {
    return ProfileSection(text, section).get(key);
}

std::string set(const std::string& text, const std::string& key, const std::string& value) {
    return withProfileKeys(text, "S", {{key, value}});
}

/// SET-04: Sections and keys are found whatever the case of their letters
TEST(ReadingAProfile, FindsSectionAndKeyWithoutCase) {
    EXPECT_EQ(get("[kAdO]\nAutoPlay=ON\n", "AUTOPLAY", "KADO"), "ON");
}

/// SET-08
TEST(ReadingAProfile, GivesTheDefaultForAMissingFileSectionOrKey) {
    EXPECT_EQ(get("", "K"), "");
    EXPECT_EQ(get("[T]\nK=1\n", "K"), "");
    EXPECT_EQ(get("[S]\nL=1\n", "K"), "");
    EXPECT_EQ(ProfileSection("[S]\nL=1\n", "S").get("K", "none"), "none");
}

TEST(ReadingAProfile, AnEmptyValueIsNotTheDefault) { EXPECT_EQ(ProfileSection("[S]\nK=\n", "S").get("K", "none"), ""); }

/// SET-42: Blanks around section, key and value do not count; one pair of quotes around a value is taken off
TEST(ReadingAProfile, TakesBlanksOffSectionKeyAndValue) {
    EXPECT_EQ(get(" \t[ S ] \n \t K \t=\t  two words \t \n", "K"), "two words");
}

/// SET-42
TEST(ReadingAProfile, TakesOneMatchingPairOfQuotesOff) {
    EXPECT_EQ(get("[S]\nK=\"  x \"\n", "K"), "  x ");
    EXPECT_EQ(get("[S]\nK='x'\n", "K"), "x");
    EXPECT_EQ(get("[S]\nK=\"\"x\"\"\n", "K"), "\"x\"");
    EXPECT_EQ(get("[S]\nK=\"x'\n", "K"), "\"x'");
    EXPECT_EQ(get("[S]\nK=\"\n", "K"), "\"");
    EXPECT_EQ(get("[S]\nK=x\"\n", "K"), "x\"");
    EXPECT_EQ(get("[S]\nK=\"\"\n", "K"), "");
}

/// SET-43: Of several sections or keys of one name the first counts
TEST(ReadingAProfile, TheFirstOfTwoSectionsOrKeysWins) {
    EXPECT_EQ(get("[S]\nK=1\nk=2\n[T]\nK=3\n[s]\nK=4\nL=5\n", "K"), "1");
    EXPECT_EQ(get("[S]\nK=1\n[T]\n[S]\nL=5\n", "L"), "");
}

/// SET-43
TEST(ReadingAProfile, TheFirstOfManyEqualKeysWins) {
    std::string text = "[S]\n";
    for (int i = 0; i < 1'000; ++i) text += "k" + std::to_string(i % 5) + "=" + std::to_string(i) + "\n";
    for (int i = 0; i < 5; ++i) EXPECT_EQ(get(text, "K" + std::to_string(i)), std::to_string(i));
}

/// SET-60
TEST(ReadingAProfile, KeysBelongToTheSectionInFrontOfThem) {
    EXPECT_EQ(get("K=0\n[T]\nK=1\n[S]\nK=2\n[U]\nK=3\n", "K"), "2");
}

/// SET-59: Every line end and a mark in front are read
TEST(ReadingAProfile, ReadsEveryLineEndAndAMark) {
    EXPECT_EQ(get("\xEF\xBB\xBF[S]\r\nA=1\nB=2\rC=3\r\nD=4", "A"), "1");
    for (const char* key : {"A", "B", "C", "D"}) {
        EXPECT_EQ(get("\xEF\xBB\xBF[S]\r\nA=x\nB=x\rC=x\r\nD=x", key), "x") << key;
    }
}

/// SET-58: Comments and lines of any other form mean nothing and are kept
TEST(ReadingAProfile, PassesOverCommentsAndOtherLines) {
    EXPECT_EQ(get("[S]\n;K=1\n  ; K=2\nrubbish\n[unclosed\n=4\nK=3\n", "K"), "3");
    EXPECT_EQ(get("[S]\n;K=1\n", ";K"), "");
}

/// SET-60: The first equals sign divides key and value; keys belong to the section in front of them
TEST(ReadingAProfile, TheFirstEqualsSignDivides) { EXPECT_EQ(get("[S]\nK=a=b\n", "K"), "a=b"); }

/// SET-40
TEST(ReadingAProfile, CutsAValueAt511Bytes) {
    EXPECT_EQ(get("[S]\nK=" + std::string(511, 'x') + "\n", "K").size(), 511U);
    EXPECT_EQ(get("[S]\nK=" + std::string(513, 'x') + "\n", "K"), std::string(511, 'x'));
    EXPECT_EQ(get("[S]\nK=\"" + std::string(600, 'x') + "\"\n", "K"), std::string(511, 'x'));
    EXPECT_EQ(ProfileSection("[S]\nK=abcdef\n", "S").get("K", "", 4), "abc");
    EXPECT_EQ(ProfileSection("[S]\nK=abcdef\n", "S").get("K", "", 0), "");
}

/// SET-41: A value ends at its first NUL
TEST(ReadingAProfile, AValueEndsAtItsFirstNul) { EXPECT_EQ(get("[S]\nK=ON\0rest\nL=1\n"s, "K"), "ON"); }

/// SET-61: Bytes that are not UTF-8 are kept
TEST(ReadingAProfile, KeepsBytesThatAreNotUtf8) { EXPECT_EQ(get("[S]\nK=\x82\xA0\xFF\n", "K"), "\x82\xA0\xFF"); }

/// SET-45
TEST(ReadingAProfile, SurvivesBinaryText) {
    std::string noise;
    for (int i = 0; i < 100'000; ++i) noise += static_cast<char>((i * 7919 + i / 13) & 0xFF);
    EXPECT_EQ(get(noise, "K"), "");
    EXPECT_EQ(get(noise + "\n[S]\nK=1", "K"), "1");
}

TEST(ReadingAProfile, FindsEachOfTenThousandKeys) {
    std::string text = "[S]\r\n";
    for (int i = 0; i < 10'000; ++i) text += "KEY" + std::to_string(i * 7 % 10'000) + "=" + std::to_string(i) + "\r\n";
    const ProfileSection section(text, "S");
    for (int i = 0; i < 10'000; ++i) {
        ASSERT_EQ(section.get("key" + std::to_string(i * 7 % 10'000)), std::to_string(i));
    }
}

/// SET-47
TEST(WritingAProfile, MakesAMissingFile) { EXPECT_EQ(set("", "K", "v"), "[S]\r\nK=v\r\n"); }

/// SET-48: A key that exists is replaced in its place; a new one follows the section's last line
TEST(WritingAProfile, ReplacesAKeyInPlaceUnderItsOldSpelling) {
    EXPECT_EQ(set("[s]\r\nA=1\r\n kEy = old ; x\r\nB=2\r\n", "KEY", "new"), "[s]\r\nA=1\r\nkEy=new\r\nB=2\r\n");
}

/// SET-64
TEST(WritingAProfile, ReplacesTheFirstOfTwoKeys) {
    EXPECT_EQ(set("[S]\r\nK=1\r\nK=2\r\n[S]\r\nK=3\r\n", "K", "9"), "[S]\r\nK=9\r\nK=2\r\n[S]\r\nK=3\r\n");
}

/// SET-48
TEST(WritingAProfile, AppendsANewKeyAtTheEndOfItsSection) {
    EXPECT_EQ(set("[S]\r\nA=1\r\n; last\r\n\r\n[T]\r\nK=2\r\n", "K", "v"),
              "[S]\r\nA=1\r\n; last\r\nK=v\r\n\r\n[T]\r\nK=2\r\n");
    EXPECT_EQ(set("[T]\r\n[S]\r\n", "K", "v"), "[T]\r\n[S]\r\nK=v\r\n");
    EXPECT_EQ(set("[S]", "K", "v"), "[S]\r\nK=v\r\n");
}

/// SET-64: A missing section is put at the end; of two keys the first is replaced; writing twice is writing once
TEST(WritingAProfile, AppendsAMissingSectionAtTheEnd) {
    EXPECT_EQ(set("[T]\r\nK=1", "K", "v"), "[T]\r\nK=1\r\n[S]\r\nK=v\r\n");
}

/// SET-58
TEST(WritingAProfile, NeverTakesACommentForAKey) {
    EXPECT_EQ(set("[S]\r\n;K=1\r\n", "K", "v"), "[S]\r\n;K=1\r\nK=v\r\n");
}

/// SET-49: Everything else in the file stays as it is
TEST(WritingAProfile, KeepsTheMarkCommentsAndOddLinesAndWritesCrLf) {
    EXPECT_EQ(set("\xEF\xBB\xBF; mine\n\n[S]\nodd\n\xFF\xFE=\x80\nK=1", "K", "2"),
              "\xEF\xBB\xBF; mine\r\n\r\n[S]\r\nodd\r\n\xFF\xFE=\x80\r\nK=2\r\n");
}

/// SET-62
TEST(WritingAProfile, AValueEndsAtItsFirstNul) { EXPECT_EQ(set("", "K", "a\0b"s), "[S]\r\nK=a\r\n"); }

/// SET-62: A line break in a value is written as a blank, and a value ends at its first NUL
TEST(WritingAProfile, LineBreaksInAValueBecomeBlanks) {
    const std::string text = set("[S]\r\nA=1\r\n", "K", "x\r\n[T]\nA=2");
    EXPECT_EQ(text, "[S]\r\nA=1\r\nK=x  [T] A=2\r\n");
}

/// SET-55: A value that reading would change is written in quotes, so that it comes back
TEST(WritingAProfile, ValuesComeBackAsTheyWereGiven) {
    for (const std::string value : {"plain", "", " outer blanks ", "\t", " ", "\"quoted\"", "'quoted'", "\"", "\"half",
                                    "\"\"", "' '", "a=b", ";x", "[T]", "\x82\xA0", "\"a' b\""}) {
        EXPECT_EQ(get(set("[S]\r\nK=old\r\n", "K", value), "K"), value);
    }
}

TEST(WritingAProfile, OnlyValuesThatReadingWouldChangeAreQuoted) {
    EXPECT_EQ(set("", "K", "it's \"x\" so"), "[S]\r\nK=it's \"x\" so\r\n");
    EXPECT_EQ(set("", "K", "\""), "[S]\r\nK=\"\r\n");
    EXPECT_EQ(set("", "K", " x"), "[S]\r\nK=\" x\"\r\n");
    EXPECT_EQ(set("", "K", "'x'"), "[S]\r\nK=\"'x'\"\r\n");
}

/// SET-63
TEST(WritingAProfile, ManyKeysInOnePassEqualSingleOnes) {
    const std::string start =
        "\xEF\xBB\xBF;c\n[FILELIST]\nlist003=x|y\nOther=1\nLIST003=second\n\n\n[T]\nLIST000=z\n[filelist]\nLIST001=n";
    std::vector<ProfileKey> keys{{"LISTNAME", " name "}};
    for (int i = 0; i < 256; ++i) keys.emplace_back("LIST" + std::to_string(i / 100) + std::to_string(i % 100), "v|p");
    keys.emplace_back("listname", "later");
    for (const std::string& text : {start, std::string(), std::string("[FILELIST]"), std::string("\r\r\r")}) {
        std::string single = text;
        for (const auto& key : keys) single = withProfileKeys(single, "FILELIST", {key});
        EXPECT_EQ(withProfileKeys(text, "FILELIST", keys), single);
    }
}

TEST(WritingAProfile, NoKeysChangeNothing) { EXPECT_EQ(withProfileKeys("a\nb", "S", {}), "a\nb"); }

/// SET-64
TEST(WritingAProfile, WritingTwiceIsWritingOnce) {
    const std::string once = set("[T]\n\n\n[S]\nA=1\n\n", "K", "v");
    EXPECT_EQ(set(once, "K", "v"), once);
}

/// SET-49
TEST(WritingAProfile, KeepsEveryOtherLineOfBinaryText) {
    std::string noise;
    for (int i = 0; i < 5'000; ++i) noise += static_cast<char>((i * 7919 + i / 13) & 0xFF);
    std::string kept = set(noise, "K", "v");
    std::string expected = noise;
    for (std::string* text : {&kept, &expected}) std::erase_if(*text, [](char c) { return c == '\r' || c == '\n'; });
    EXPECT_EQ(kept, expected + "[S]K=v");
}

}  // namespace
}  // namespace corvane
