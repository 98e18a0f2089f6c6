// SPDX-License-Identifier: GPL-3.0-or-later
#include "skintool/skin_check.h"

#include <gtest/gtest.h>

#include "skintool/template_skin.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

constexpr BitmapSize kBitmap{500, 400};

/// A skin in order, of 41 lines behind a heading: record n stands in line n + 2.
std::vector<std::string> wholeSkin() {
    std::vector<std::string> lines = {"Element,Record,Left,Top,Clip X,Clip Y,Width,Height,Use"};
    for (int number = 0; number <= 40; ++number) {
        const bool isPanel = number < 2;
        const bool isColour = (number >= 28 && number <= 33) || number == 40;
        lines.push_back("x," + std::to_string(number) +
                        (isPanel        ? ",0,0,0,0,300,100,"
                         : number == 21 ? ",100,20,30,40,50,60,"
                                        : ",10,20,30,40,50,60,") +
                        (isColour ? "WHITE" : "1"));
    }
    return lines;
}

/// What the check says of the skin with one line changed or, for a line behind the last, added.
std::vector<SkinMistake> checkWith(std::size_t line, const std::string& changed,
                                   std::optional<BitmapSize> bitmap = kBitmap) {
    std::vector<std::string> lines = wholeSkin();
    lines.resize(std::max(lines.size(), line));
    lines[line - 1] = changed;
    std::string text;
    for (const std::string& each : lines) text += each + "\r\n";
    return checkSkin(text, bitmap);
}

/// Exactly one mistake, of that line, whose text holds the words.
testing::AssertionResult isOne(const std::vector<SkinMistake>& found, std::size_t line, bool isError,
                               const std::string& words) {
    if (found.size() == 1 && found[0].line == line && found[0].keepsPanelAway == isError &&
        found[0].text.find(words) != std::string::npos) {
        return testing::AssertionSuccess();
    }
    auto result = testing::AssertionFailure() << found.size() << " mistakes";
    for (const SkinMistake& each : found) {
        result << "\n" << each.line << (each.keepsPanelAway ? " error: " : " warning: ") << each.text;
    }
    return result;
}
constexpr bool kError = true, kWarning = false;

TEST(SkinCheck, ASkinInOrderHasNoMistakes) {
    EXPECT_TRUE(checkWith(1, wholeSkin()[0]).empty());
    EXPECT_TRUE(checkWith(43, "").empty()) << "an empty line is none";
    EXPECT_TRUE(checkWith(43, "notes,of,the,author").empty());
}

TEST(SkinCheck, TooFewFields) {
    EXPECT_TRUE(
        isOne(checkWith(14, "x,12,10,20,30,40,50,60"), 14, kError, "record 12 (Stop) has 8 fields instead of nine"));
    EXPECT_TRUE(isOne(checkWith(43, "x,12"), 43, kError, "has 2 fields"));
}

TEST(SkinCheck, TooManyFields) {
    EXPECT_TRUE(isOne(checkWith(14, "x,12,10,20,30,40,50,60,1,note"), 14, kWarning, "more than nine fields"));
}

TEST(SkinCheck, ATextWhereANumberBelongs) {
    EXPECT_TRUE(
        isOne(checkWith(43, "x,12,10,20,wide,40,50,60,1"), 43, kError, "clip x \"wide\" is not a whole number"));
    EXPECT_TRUE(isOne(checkWith(43, "x,12,10,99999,30,40,50,60,1"), 43, kError, "top \"99999\""));
}

TEST(SkinCheck, NumbersOfAPartThatIsNotUsedAreNotAskedFor) { EXPECT_TRUE(checkWith(14, "x,12,,,,,wide,,0").empty()); }

TEST(SkinCheck, UnknownRecords) {
    EXPECT_TRUE(isOne(checkWith(43, "x,41,10,20,30,40,50,60,1"), 43, kWarning, "unknown record 41"));
    EXPECT_TRUE(isOne(checkWith(43, "x,-1,10,20,30,40,50,60,1"), 43, kWarning, "unknown record -1"));
}

TEST(SkinCheck, ARecordWhoseNumberIsAWord) {
    EXPECT_TRUE(isOne(checkWith(43, "x,twelve,10,20,30,40,50,60,1"), 43, kWarning, "\"twelve\" is not a number"));
}

TEST(SkinCheck, APictureOutsideTheBitmap) {
    for (const char* line : {"x,12,10,20,451,40,50,60,1", "x,12,10,20,30,341,50,60,1", "x,12,10,20,-1,40,50,60,1"}) {
        EXPECT_TRUE(isOne(checkWith(14, line), 14, kError, "reach out of the bitmap of 500 x 400")) << line;
        EXPECT_TRUE(checkWith(14, line, std::nullopt).empty()) << "without a bitmap it is not asked";
    }
    EXPECT_TRUE(isOne(checkWith(14, "x,12,10,20,30,40,0,60,1"), 14, kError, "has no area"));
    EXPECT_TRUE(isOne(checkWith(2, "x,0,0,0,300,0,300,100,1"), 2, kWarning, "the opening shows no picture"));
}

TEST(SkinCheck, TextsAndSliderNeedNoPicture) {
    EXPECT_TRUE(checkWith(35, "x,33,10,20,900,900,50,60,RED").empty());
    EXPECT_TRUE(checkWith(42, "x,40,10,20,900,900,50,6,RED").empty());
}

TEST(SkinCheck, BadColours) {
    EXPECT_TRUE(isOne(checkWith(35, "x,33,10,20,30,40,50,60,PINK"), 35, kWarning, "\"PINK\" is no colour"));
    EXPECT_TRUE(isOne(checkWith(42, "x,40,10,20,30,40,50,60,#FF0000"), 42, kWarning, "is no colour"));
    EXPECT_TRUE(isOne(checkWith(42, "x,40,10,20,30,40,50,60,&H1FF0000"), 42, kWarning, "outside 0 to &HFFFFFF"));
    EXPECT_TRUE(checkWith(42, "x,40,10,20,30,40,50,60,&HFFFFFF").empty());
}

TEST(SkinCheck, AUseThatIsNeither0Nor1) {
    EXPECT_TRUE(isOne(checkWith(14, "x,12,10,20,30,40,50,60,yes"), 14, kWarning, "use \"yes\""));
}

TEST(SkinCheck, ARecordThatIsMissing) {
    EXPECT_TRUE(isOne(checkWith(14, ""), 0, kWarning, "record 12 (Stop) is missing"));
    EXPECT_TRUE(isOne(checkWith(2, ""), 0, kWarning, "record 0 (panel) is missing: the panel becomes 512 x 128"));
    EXPECT_EQ(checkSkin("", kBitmap).size(), 41U);
}

TEST(SkinCheck, ARecordGivenTwice) {
    EXPECT_TRUE(isOne(checkWith(43, wholeSkin()[13]), 43, kWarning, "was given in line 14 already; this one counts"));
    EXPECT_TRUE(isOne(checkWith(43, wholeSkin()[1]), 43, kWarning, "was given in line 2 already; that one counts"));
}

TEST(SkinCheck, ThePanelsSize) {
    EXPECT_TRUE(isOne(checkWith(2, "x,0,0,0,0,0,0,100,0"), 2, kWarning, "a side has 1 to 4096"));
    EXPECT_TRUE(isOne(checkWith(2, "x,0,0,0,0,0,300,5000,0"), 2, kWarning, "a side has 1 to 4096"));
}

TEST(SkinCheck, PicturesOfAPairThatDiffer) {
    EXPECT_TRUE(isOne(checkWith(11, "x,9,11,20,30,40,50,60,1"), 11, kWarning, "differ in place or size"));
    EXPECT_TRUE(isOne(checkWith(11, "x,9,10,20,30,40,50,61,1"), 11, kWarning, "differ in place or size"));
    EXPECT_TRUE(isOne(checkWith(11, "x,9,,,,,,,0"), 11, kWarning, "only one is used"));
    EXPECT_TRUE(isOne(checkWith(37, "x,35,10,20,30,40,51,60,1"), 37, kWarning, "differ in size"));
    EXPECT_TRUE(checkWith(37, "x,35,99,9,30,40,50,60,1").empty()) << "a lamp's place comes from its first record";
}

TEST(SkinCheck, APartOutsideThePanel) {
    EXPECT_TRUE(
        isOne(checkWith(14, "x,12,251,20,30,40,50,60,1"), 14, kWarning, "reaches out of the panel of 300 x 100"));
    EXPECT_TRUE(isOne(checkWith(14, "x,12,10,-1,30,40,50,60,1"), 14, kWarning, "reaches out of the panel"));
}

TEST(SkinCheck, ALampBehindTheDisplay) {
    EXPECT_TRUE(isOne(checkWith(24, "x,22,51,20,30,40,50,60,1"), 24, kWarning, "covered by record 21 (display)"));
    EXPECT_TRUE(checkWith(24, "x,22,50,20,30,40,50,60,1").empty());
}

TEST(SkinCheck, AKnobThatIsTooSmall) {
    EXPECT_TRUE(isOne(checkWith(26, "x,24,10,20,30,40,13,60,1"), 26, kWarning, "its mark needs 14 to turn"));
}

TEST(SkinCheck, MistakesComeInTheOrderOfTheirLines) {
    const auto found = checkSkin("a,41,0,0,0,0,1,1,1\n\nb,12,x,0,0,0,1,1,1\n", kBitmap);
    ASSERT_EQ(found.size(), 42U) << "record 12 is there, though malformed";
    EXPECT_EQ(found[0].line, 1U);
    EXPECT_EQ(found[1].line, 3U);
    EXPECT_EQ(found[2].line, 0U);
}

TEST(SkinTemplate, IsInOrder) {
    test::offscreenApplication();
    const TemplateSkin skin = templateSkin();
    const auto found = checkSkin(skin.text, BitmapSize{skin.bitmap.width(), skin.bitmap.height()});
    EXPECT_TRUE(found.empty()) << found.front().line << " " << found.front().text;
}

}  // namespace
}  // namespace corvane
