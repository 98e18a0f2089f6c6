// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/skin_records.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "panel/skin_builder.h"

namespace corvane {
namespace {

std::vector<int> numbers(const std::string& text, int first = 1, int last = 40) {
    SkinRecords records(text);
    std::vector<int> found;
    while (const auto record = records.next(first, last)) found.push_back(record->number);
    if (records.failed()) found.push_back(-999);
    return found;
}

using Numbers = std::vector<int>;
constexpr int kFailed = -999;

/// SKIN-01: A record is a line of nine fields with commas between
TEST(SkinRecords, HaveNineFields) {
    SkinRecords records("Play,8,1,2,3,4,5,6,1\r\n");
    const auto record = records.next(0, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 8);
    EXPECT_EQ(record->left, 1);
    EXPECT_EQ(record->top, 2);
    EXPECT_EQ(record->clipX, 3);
    EXPECT_EQ(record->clipY, 4);
    EXPECT_EQ(record->width, 5);
    EXPECT_EQ(record->height, 6);
    EXPECT_EQ(record->use, "1");
    EXPECT_TRUE(record->used);
    EXPECT_FALSE(records.next(0, 40));
    EXPECT_FALSE(records.failed());
}

/// SKIN-04: A line whose second field is no number is skipped, a heading among them
TEST(SkinRecords, AHeadingIsSkipped) {
    EXPECT_EQ(numbers("LABEL,No,LEFT,TOP,X,Y,W,H,USE\n\n,,,\nx,8,0,0,0,0,1,1,1\n"), Numbers{8});
}

/// SKIN-05: Numbers outside 0 to 40, such as 41 and -1, are skipped
TEST(SkinRecords, NumbersOutsideTheAskedRangeAreSkipped) {
    EXPECT_EQ(numbers("a,41,0,0,0,0,1,1,1\nb,-1,0,0,0,0,1,1,1\nc,0,0,0,0,0,1,1,1\nd,40,0,0,0,0,1,1,1"), Numbers{40});
    EXPECT_EQ(numbers("c,1,0,0,0,0,1,1,1\nd,0,0,0,0,0,1,1,1", 0, 0), Numbers{0});
}

/// SKIN-10: Every line end, a mark in front and a missing last line end are read
TEST(SkinRecords, EveryLineEndAMarkAndAMissingLastOneAreRead) {
    EXPECT_EQ(numbers("\xEF\xBB\xBF\"a,b\",1,0,0,0,0,1,1,1\r\nb,2,0,0,0,0,1,1,1\rc,3,0,0,0,0,1,1,1\nd,4,0,0,0,0,1,1,1"),
              (Numbers{1, 2, 3, 4}));
}

/// SKIN-02: A field may stand in quotes, and a quoted one may hold commas
TEST(SkinRecords, QuotedFieldsHoldCommasAndEndAtTheirQuote) {
    SkinRecords records(
        "\"Play, pressed\" , \"8\" ,\"1\",2,3,4,5,6,\"white\"\nthe \"b\",9,0,0,0,0,1,1,1\n\"a \"\"b\"\", "
        "c\",10,0,0,0,0,1,1, 1 ");
    const auto record = records.next(0, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 8);
    EXPECT_EQ(record->left, 1);
    EXPECT_EQ(record->use, "white");
    EXPECT_EQ(records.next(0, 40)->number, 9);
    EXPECT_EQ(records.next(0, 40)->number, 10);
    EXPECT_FALSE(records.failed());
}

/// SKIN-02
TEST(SkinRecords, AQuoteThatNeverClosesEndsWithItsLine) {
    EXPECT_EQ(numbers("\"open,8,0,0,0,0,1,1,1\nb,9,0,0,0,0,1,1,1"), Numbers{9});
}

/// SKIN-07: A ninth field of 0 means that the element is not used; any other text means that it is
TEST(SkinRecords, OnlyZeroMeansNotUsed) {
    for (const auto& [use, used] : {std::pair("0", false),
                                    {" 0 ", false},
                                    {"\"0\"", false},
                                    {"1", true},
                                    {"00", true},
                                    {"&H0", true},
                                    {"BLACK", true},
                                    {"", true}}) {
        const std::string line = std::string("a,28,0,0,0,0,1,1,") + use;
        const auto record = SkinRecords(line).next(1, 40);
        ASSERT_TRUE(record) << use;
        EXPECT_EQ(record->used, used) << use;
    }
}

/// SKIN-08: Another malformed number of a record that is used is an error
TEST(SkinRecords, AUsedRecordWithAMalformedNumberFails) {
    EXPECT_EQ(numbers("a,8,x,0,0,0,1,1,1\nb,9,0,0,0,0,1,1,1"), Numbers{kFailed});
    EXPECT_EQ(numbers("a,8,0,0,0,0,1,1 px,1\n"), Numbers{kFailed});
    EXPECT_EQ(numbers("a,8,0,40000,0,0,1,1,1\n"), Numbers{kFailed});
    EXPECT_EQ(numbers("a,8,0,-99999999999,0,0,1,1,1\n"), Numbers{kFailed});
}

/// SKIN-01
TEST(SkinRecords, ARecordThatLacksFieldsFails) {
    EXPECT_EQ(numbers("a,8,0,0,0,0,1,1\n"), Numbers{kFailed});
    EXPECT_EQ(numbers("a,8"), Numbers{kFailed});
    EXPECT_EQ(numbers("a,8,0,0,0,0,1,1,\n"), Numbers{8}) << "an empty last field is a field";
}

/// SKIN-04
TEST(SkinRecords, ALineThatLacksFieldsIsSkippedWithoutANumber) { EXPECT_EQ(numbers("a\nb,c,1\n,\n"), Numbers{}); }

/// SKIN-09: Numbers of skipped and unused records are not looked at; blank ones are 0
TEST(SkinRecords, MalformedNumbersOfSkippedAndUnusedRecordsDoNotMatter) {
    EXPECT_EQ(numbers("a,41,x,0,0,0,1,1,1\nb,0,x,0,0,0,1,1,1\nc,9,x,y,z,,,,0\n"), Numbers{9});
}

/// SKIN-09
TEST(SkinRecords, BlankNumbersAreZeroAndFurtherFieldsAreDropped) {
    const auto record = SkinRecords("a,28,5,, ,0,,0,WHITE,more,\"and more\"").next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->left, 5);
    EXPECT_EQ(record->top, 0);
    EXPECT_EQ(record->width, 0);
    EXPECT_EQ(record->use, "WHITE");
}

/// SKIN-21
TEST(SkinRecords, ThePanelsSizeIsReadThoughItHasNoBackground) {
    const auto record = SkinRecords("a,0,0,0,0,0,300,90,0").next(0, 0);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->width, 300);
    EXPECT_EQ(record->height, 90);
    EXPECT_FALSE(record->used);
}

/// SKIN-11: Noise is survived
TEST(SkinRecords, SurviveNoise) {
    std::string noise;
    for (int i = 0; i < 200'000; ++i) noise += "\",\n0123 x\0&H-."[(i * 7919 + i / 13) % 15];
    numbers(noise);
    EXPECT_EQ(numbers(std::string(1'000'000, ',')), Numbers{});
    EXPECT_EQ(numbers(std::string(1'000'000, '"')), Numbers{});
    EXPECT_EQ(numbers(std::string(10'000, '\0')), Numbers{});
}

/// SKIN-12: BLACK, RED, GREEN, YELLOW, BLUE, MAGENTA, CYAN and WHITE have their values, red in the low byte
/// SKIN-13: A colour's name counts in any case: lower-case white is white
TEST(SkinColours, HaveNamesInAnyCase) {
    EXPECT_EQ(skinColour("BLACK"), 0);
    EXPECT_EQ(skinColour("RED"), 255);
    EXPECT_EQ(skinColour("GREEN"), 65280);
    EXPECT_EQ(skinColour("YELLOW"), 65535);
    EXPECT_EQ(skinColour("BLUE"), 16711680);
    EXPECT_EQ(skinColour("MAGENTA"), 16711935);
    EXPECT_EQ(skinColour("CYAN"), 16776960);
    EXPECT_EQ(skinColour("WHITE"), 16777215);
    EXPECT_EQ(skinColour("white"), 16777215);
    EXPECT_EQ(skinColour(" White "), 16777215);
}

/// SKIN-14: A number is a colour too, decimal or with &H in front: &HFF is red
TEST(SkinColours, MayBeNumbers) {
    EXPECT_EQ(skinColour("&HFF"), 255);
    EXPECT_EQ(skinColour("&h00ff00"), 65280);
    EXPECT_EQ(skinColour("16711680"), 16711680);
    EXPECT_EQ(skinColour("&HFFFFFFFF"), 0xFFFFFF) << "24 bits count";
}

/// SKIN-15: A text that is neither leaves the colour as it was
TEST(SkinColours, OtherTextsAreNone) {
    for (const char* text : {"", "1x", "GREY", "#FF0000", "WHITES", "&HXYZ"}) EXPECT_FALSE(skinColour(text)) << text;
}

SkinRecord cellAt(int x, int y, int width, int height) {
    SkinRecord record;
    record.number = 2;
    record.clipX = x;
    record.clipY = y;
    record.width = width;
    record.height = height;
    record.used = true;
    return record;
}

/// SKIN-56: A cell lies inside the bitmap with each of its sides
TEST(SkinCells, LieInsideWithEachOfTheirSides) {
    EXPECT_TRUE(liesInside(cellAt(0, 0, 100, 50), 100, 50));
    EXPECT_TRUE(liesInside(cellAt(99, 49, 1, 1), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(-1, 0, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, -1, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 0, 0, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 0, 10, 0), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(91, 0, 10, 10), 100, 50));
    EXPECT_FALSE(liesInside(cellAt(0, 41, 10, 10), 100, 50));
}

/// SKIN-55: A panel's sides are 1 to 4096 pixels; anything else is a reading error
TEST(PanelSizes, AreFromOnePixelToTheLargestSide) {
    EXPECT_TRUE(isPanelSize(1, 1));
    EXPECT_TRUE(isPanelSize(4096, 4096));
    EXPECT_FALSE(isPanelSize(0, 10));
    EXPECT_FALSE(isPanelSize(10, 0));
    EXPECT_FALSE(isPanelSize(4097, 10));
    EXPECT_FALSE(isPanelSize(10, 4097));
}

/// SKIN-58: A doubled quote inside a quoted field does not end it
TEST(SkinRecords, DoubledQuotesMayStandBesideEachOtherAndBeforeTheEnd) {
    SkinRecords records("\"a\"\"\",5,0,0,0,0,1,1,1\n\"\"\"\"\"\",6,0,0,0,0,1,1,1\n");
    auto record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 5);
    record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->number, 6);
}

TEST(SkinRecords, WhatIsNotUsedHasNoSize) {
    SkinRecords records("k,24,1,2,3,4,20,20,0\n");
    const auto record = records.next(1, 40);
    ASSERT_TRUE(record);
    EXPECT_FALSE(record->used);
    EXPECT_EQ(record->left + record->top + record->clipX + record->clipY, 0);
    EXPECT_EQ(record->width, 0);
    EXPECT_EQ(record->height, 0);
}

}  // namespace
}  // namespace corvane
