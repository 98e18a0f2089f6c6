// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/list_column.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace corvane::mdlDefinePublic {
namespace {

/// LIST-38: The columns of the play list hold 256 entries from the beginning and grow to 9,999 with what is written
TEST(ListColumn, GrowsWithWhatIsWrittenAndReadsEmptyElsewhere) {
    ListColumn<std::string> names;
    EXPECT_EQ(names.size(), std::size_t{kMaxFiles});
    names[kMaxLongFiles - 1] = "last";
    EXPECT_EQ(names.size(), std::size_t{kMaxLongFiles});
    EXPECT_EQ(names[300], "");
    const auto& read = names;
    EXPECT_EQ(read[kMaxLongFiles - 1], "last");
    EXPECT_EQ(read[kMaxLongFiles], "");
    EXPECT_EQ(read[static_cast<std::size_t>(-1)], "");
}

TEST(ListColumn, WhatIsWrittenBehindTheLastEntryIsNowhere) {
    ListColumn<std::int32_t> numbers;
    numbers[kMaxLongFiles] = 5;
    numbers[static_cast<std::size_t>(std::int16_t{-1})] = 6;
    EXPECT_EQ(numbers[kMaxLongFiles], 0);
    EXPECT_EQ(numbers.size(), std::size_t{kMaxFiles});
}

TEST(ListColumn, AReferenceStaysWhileTheColumnGrows) {
    ListColumn<std::string> names;
    const std::string& first = names[0] = "first";
    for (std::size_t i = kMaxFiles; i < kMaxLongFiles; ++i) names[i] = "more";
    EXPECT_EQ(&first, &names[0]);
    EXPECT_EQ(first, "first");
}

TEST(ListColumn, IsFilledBehindTheListsEndAsWell) {
    ListColumn<std::int32_t> numbers;
    numbers[1000] = 7;
    numbers.fill(3);
    EXPECT_EQ(numbers[kMaxFiles - 1], 3);
    EXPECT_EQ(numbers[1000], 3);
    EXPECT_EQ(numbers[1001], 0);
}

}  // namespace
}  // namespace corvane::mdlDefinePublic
