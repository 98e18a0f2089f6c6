// SPDX-License-Identifier: GPL-3.0-or-later
// Orders of the editor's rows, and finding one.
#include "listedit/row_order.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Order = std::vector<int>;

std::vector<ListEntry> named(const std::vector<std::string>& names) {
    std::vector<ListEntry> rows;
    for (const std::string& each : names) rows.push_back({each, "/" + std::to_string(9 - rows.size()) + "/" + each});
    return rows;
}

/// EDIT-69: Sorting by names takes no notice of capitals and knows numbers by their value; what is alike stays in order
TEST(RowOrder, SortsNamesWithoutCaseAndNumbersByValue) {
    EXPECT_EQ(orderByName(named({"b.mp3", "A.mp3", "a.mp3", "B.mp3"})), (Order{1, 2, 0, 3}));
    EXPECT_EQ(orderByName(named({"Track 10", "Track 9", "track 1", "Track 09"})), (Order{2, 1, 3, 0}));
    EXPECT_EQ(orderByName(named({"Track 9", "Track 010", "Track 08"})), (Order{2, 0, 1})) << "zeros in front";
    EXPECT_EQ(orderByName(named({"x2y10", "x2y9", "x", ""})), (Order{3, 2, 1, 0}));
    EXPECT_EQ(orderByName(named({"Über", "ähnlich", "Zebra"})), (Order{2, 1, 0}));
    EXPECT_EQ(orderByName(named({"12345678901234567890123", "12345678901234567890122"})), (Order{1, 0}));
    EXPECT_EQ(orderByName({}), Order{});
}

/// EDIT-69
TEST(RowOrder, SortsByPaths) { EXPECT_EQ(orderByPath(named({"a", "b", "c"})), (Order{2, 1, 0})); }

/// EDIT-70: Chosen rows are moved together in front of a row, in their order
TEST(RowOrder, MovesChosenRowsTogether) {
    EXPECT_EQ(orderMoved(5, {1, 3}, 0), (Order{1, 3, 0, 2, 4}));
    EXPECT_EQ(orderMoved(5, {1, 3}, 5), (Order{0, 2, 4, 1, 3}));
    EXPECT_EQ(orderMoved(5, {1, 3}, 3), (Order{0, 2, 1, 3, 4}));
    EXPECT_EQ(orderMoved(5, {1}, 2), (Order{0, 1, 2, 3, 4}));
    EXPECT_EQ(orderMoved(5, {1}, -7), (Order{1, 0, 2, 3, 4}));
    EXPECT_EQ(orderMoved(5, {1}, 99), (Order{0, 2, 3, 4, 1}));
}

/// EDIT-71: Chosen rows go one place up or down each; at the end they gather
TEST(RowOrder, StepsChosenRows) {
    EXPECT_EQ(orderStepped(5, {2, 3}, -1), (Order{0, 2, 3, 1, 4}));
    EXPECT_EQ(orderStepped(5, {2, 3}, 1), (Order{0, 1, 4, 2, 3}));
    EXPECT_EQ(orderStepped(5, {0, 2}, -1), (Order{0, 2, 1, 3, 4}));
    EXPECT_EQ(orderStepped(5, {0, 1}, -1), (Order{0, 1, 2, 3, 4}));
    EXPECT_EQ(orderStepped(5, {2, 4}, 1), (Order{0, 1, 3, 2, 4}));
    EXPECT_TRUE(isUnchanged(orderStepped(5, {3, 4}, 1)));
}

/// EDIT-70
TEST(RowOrder, TellsWhereRowsStandAfterwards) { EXPECT_EQ(placesAfter({2, 0, 3, 1}, {0, 3}), (Order{1, 2})); }

/// EDIT-72: A search finds what holds each word in its name, else in its path, from a place on and round the end,
///     without case and accents
TEST(RowOrder, FindsNamesBeforePaths) {
    const std::vector<std::string> names = {"one.mp3", "Two.mp3", "ÜBER.mp3", "two again.mp3"};
    const std::vector<std::string> paths = {"/two/one.mp3", "/b/Two.mp3", "/b/ÜBER.mp3", "/Album X/two again.mp3"};
    EXPECT_EQ(findRow(names, paths, "TWO", 0), 1);
    EXPECT_EQ(findRow(names, paths, "two", 2), 3);
    EXPECT_EQ(findRow(names, paths, "two", 4), 1);
    EXPECT_EQ(findRow(names, paths, "uber", 0), 2);
    EXPECT_EQ(findRow(names, paths, "again TWO", 0), 3);
    EXPECT_EQ(findRow(names, paths, "album x", 0), 3);
    EXPECT_EQ(findRow(names, paths, "nowhere", 0), -1);
    EXPECT_EQ(findRow(names, paths, "", 0), -1);
    EXPECT_EQ(findRow({}, {}, "x", 3), -1);
}

}  // namespace
}  // namespace corvane
