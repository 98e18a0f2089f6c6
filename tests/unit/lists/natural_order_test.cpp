// SPDX-License-Identifier: GPL-3.0-or-later
#include "lists/natural_order.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane {
namespace {

/// LIST-56: Files of a folder come in the order in which people number them: 2 before 10, letters without case
TEST(NaturalOrder, NumbersCountAsNumbers) {
    const std::vector<std::string> sorted{
        "",    "01", "1",  "2",   "10", "99999999999999999999998", "99999999999999999999999", "a", "A1 b", "a2", "a02b",
        "A10", "Á",  "é2", "É10", "夜"};
    std::vector<std::string> names = sorted;
    std::reverse(names.begin(), names.end());
    sortNaturally(names);
    EXPECT_EQ(names, sorted);
    for (std::size_t i = 0; i < sorted.size(); ++i) {
        for (std::size_t k = 0; k < sorted.size(); ++k) {
            EXPECT_EQ(isBeforeNaturally(sorted[i], sorted[k]), i < k) << sorted[i] << " and " << sorted[k];
        }
    }
}

TEST(NaturalOrder, EqualNumbersGoOnBehindThem) {
    EXPECT_TRUE(isBeforeNaturally("track 01 a", "track 1 b"));
    EXPECT_TRUE(isBeforeNaturally("track 1 a", "track 01 b"));
    EXPECT_FALSE(isBeforeNaturally("track 1", "track 1"));
    EXPECT_TRUE(isBeforeNaturally("disc 0", "disc 1"));
    EXPECT_TRUE(isBeforeNaturally("disc 00", "disc 1"));
}

}  // namespace
}  // namespace corvane
