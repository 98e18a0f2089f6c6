// SPDX-License-Identifier: GPL-3.0-or-later
// Changes of a list: made, taken back, made again, kept within bounds.
#include "listedit/edit_history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace corvane {

static bool operator==(const ListEntry& a, const ListEntry& b) { return a.name == b.name && a.path == b.path; }

namespace {

using Kind = ListChange::Kind;
using Rows = std::vector<ListEntry>;

Rows rowsNamed(const std::string& letters) {
    Rows rows;
    for (const char each : letters) rows.push_back({std::string(1, each), std::string("/") + each});
    return rows;
}

std::string letters(const Rows& rows) {
    std::string all;
    for (const ListEntry& each : rows) all += each.name;
    return all;
}

ListChange change(Kind kind, const std::string& rows, std::vector<int> at) {
    return {kind, rowsNamed(rows), std::move(at), "", ""};
}

/// EDIT-66: Rows come in and go at any places and stand in any order; each change the other way round is as before
TEST(ListChanges, EachOneIsTakenBackByItsReverse) {
    const std::vector<std::pair<ListChange, std::string>> cases = {
        {change(Kind::CameIn, "xy", {0, 5}), "xabcdy"},
        {change(Kind::CameIn, "x", {2}), "abxcd"},
        {change(Kind::Went, "ad", {0, 3}), "bc"},
        {change(Kind::Went, "abcd", {0, 1, 2, 3}), ""},
        {change(Kind::Reordered, "", {2, 0, 3, 1}), "cadb"},
    };
    for (const auto& [each, after] : cases) {
        Rows rows = rowsNamed("abcd");
        ASSERT_TRUE(applyChange(rows, each));
        EXPECT_EQ(letters(rows), after);
        ASSERT_TRUE(applyChange(rows, reversed(each)));
        EXPECT_EQ(rows, rowsNamed("abcd"));
    }
}

/// EDIT-66
TEST(ListChanges, WhatDoesNotFitTheRowsChangesNothing) {
    const std::vector<ListChange> wrong = {
        change(Kind::CameIn, "x", {6}),
        change(Kind::CameIn, "xy", {1}),
        change(Kind::CameIn, "xy", {1, 1}),
        change(Kind::Went, "a", {4}),
        change(Kind::Went, "ab", {1, 0}),
        change(Kind::Went, "a", {-1}),
        change(Kind::Reordered, "", {0, 1, 2}),
        change(Kind::Reordered, "", {0, 1, 2, 2}),
        change(Kind::Reordered, "", {0, 1, 2, 4}),
    };
    for (const ListChange& each : wrong) {
        Rows rows = rowsNamed("abcd");
        EXPECT_FALSE(applyChange(rows, each));
        EXPECT_EQ(rows, rowsNamed("abcd"));
    }
}

/// EDIT-67: The last hundred changes are kept; a new one forgets what had been taken back
TEST(EditHistoryTest, KeepsAHundredChanges) {
    EditHistory history;
    for (int i = 0; i < 130; ++i) history.add(change(Kind::CameIn, "x", {i}));
    int undone = 0;
    int last = 0;
    while (const ListChange* const each = history.undo()) last = each->at.front(), ++undone;
    EXPECT_EQ(undone, 100);
    EXPECT_EQ(last, 30);
    EXPECT_EQ(history.redo()->at.front(), 30);
    history.add(change(Kind::CameIn, "y", {7}));
    EXPECT_FALSE(history.canRedo());
    EXPECT_EQ(history.undo()->at.front(), 7);
}

/// EDIT-67
TEST(EditHistoryTest, ForgetsTheOldestWhereTheyAreLarge) {
    EditHistory history;
    const std::string mebibyte(std::size_t{1} << 20U, 'x');
    for (int i = 0; i < 80; ++i) history.add({Kind::CameIn, {{"x", mebibyte}}, {i}, "", ""});
    int undone = 0;
    while (history.undo() != nullptr) ++undone;
    EXPECT_GT(undone, 55);
    EXPECT_LT(undone, 64);
    history.add({Kind::CameIn, {{"x", std::string(EditHistory::kMostBytes, 'x')}}, {0}, "", ""});
    EXPECT_TRUE(history.canUndo());
}

/// EDIT-68: A list is unsaved once it has been changed, until it is saved or every change has been taken back
TEST(EditHistoryTest, KnowsWhetherTheListIsSaved) {
    EditHistory history;
    EXPECT_TRUE(history.isSaved());
    history.add(change(Kind::CameIn, "x", {0}));
    EXPECT_FALSE(history.isSaved());
    history.undo();
    EXPECT_TRUE(history.isSaved());
    history.redo();
    history.markSaved();
    EXPECT_TRUE(history.isSaved());
    history.undo();
    EXPECT_FALSE(history.isSaved());
    history.add(change(Kind::CameIn, "y", {0}));
    EXPECT_FALSE(history.isSaved());  // what was saved cannot be reached any more
    history.undo();
    EXPECT_FALSE(history.isSaved());
    history.clear();
    EXPECT_TRUE(history.isSaved());
}

/// EDIT-68
TEST(EditHistoryTest, WhatWasSavedBeforeTheOldestKeptChangeIsNotReachedAgain) {
    EditHistory history;
    for (int i = 0; i < 130; ++i) history.add(change(Kind::CameIn, "x", {i}));
    while (history.undo() != nullptr) EXPECT_FALSE(history.isSaved());
    EXPECT_FALSE(history.isSaved());
}

/// EDIT-66
TEST(ListChanges, ARandomWalkLeadsBackToItsStart) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        EditHistory history;
        Rows rows = rowsNamed("abcdefgh");
        for (int step = 0; step < 100; ++step) {
            const int count = static_cast<int>(rows.size());
            ListChange next;
            if (random() % 3 == 0 || count == 0) {
                next = change(Kind::CameIn, "z", {static_cast<int>(random() % static_cast<unsigned>(count + 1))});
            } else if (random() % 2 == 0) {
                const int at = static_cast<int>(random() % static_cast<unsigned>(count));
                next = {Kind::Went, {rows[static_cast<std::size_t>(at)]}, {at}, "", ""};
            } else {
                std::vector<int> order(rows.size());
                for (int i = 0; i < count; ++i) order[static_cast<std::size_t>(i)] = i;
                std::shuffle(order.begin(), order.end(), random);
                next = {Kind::Reordered, {}, order, "", ""};
            }
            ASSERT_TRUE(applyChange(rows, next));
            history.add(next);
        }
        const Rows end = rows;
        while (const ListChange* const each = history.undo()) ASSERT_TRUE(applyChange(rows, reversed(*each)));
        EXPECT_EQ(rows, rowsNamed("abcdefgh"));
        while (const ListChange* const each = history.redo()) ASSERT_TRUE(applyChange(rows, *each));
        EXPECT_EQ(rows, end);
    }
}

}  // namespace
}  // namespace corvane
