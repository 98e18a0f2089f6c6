// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/seen_files.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace corvane {
namespace {

using Names = std::vector<std::string>;

/// Reads numbers of files when it is told to.
struct SeenFilesTest : ::testing::Test {
    SeenFiles<int>::Read read = [this](const std::string& file, std::function<void(int)> done) {
        asked.push_back(file);
        pending = std::move(done);
    };
    std::function<void()> giveUp = [this] {
        ++givenUp;
        pending = {};
    };
    void answer(int number) { std::exchange(pending, {})(number); }

    Names asked;
    std::function<void(int)> pending;
    int givenUp = 0, changes = 0;
    SeenFiles<int> seen{read, giveUp, [this] { ++changes; }};
};

Names numbered(std::size_t from, std::size_t to) {
    Names names;
    for (std::size_t i = from; i < to; ++i) names.push_back(std::to_string(i));
    return names;
}

/// EDIT-87: What rows show besides their names is read of the rows that are seen alone, one after the other, each once
TEST_F(SeenFilesTest, ReadsOneAfterTheOtherEachOnce) {
    seen.want({"a", "b", "a"});
    EXPECT_EQ(asked, Names{"a"});
    EXPECT_EQ(seen.of("a"), nullptr);
    answer(1);
    ASSERT_NE(seen.of("a"), nullptr);
    EXPECT_EQ(*seen.of("a"), 1);
    EXPECT_EQ(changes, 1);
    answer(2);
    seen.want({"a", "b"});
    EXPECT_EQ(asked, (Names{"a", "b"}));
    EXPECT_FALSE(pending);
    EXPECT_EQ(givenUp, 0);
}

/// EDIT-88: What was asked for rows that are seen no more is dropped, the one on its way as well
TEST_F(SeenFilesTest, DropsWhatIsSeenNoMore) {
    seen.want(numbered(0, 50));
    seen.want({"90", "91"});
    EXPECT_EQ(givenUp, 1);
    answer(1);
    answer(1);
    EXPECT_EQ(asked, (Names{"0", "90", "91"}));
    seen.want({"7"});
    seen.want({"8", "7"});
    EXPECT_EQ(givenUp, 1) << "still wanted";
    answer(1);
    EXPECT_EQ(asked, (Names{"0", "90", "91", "7", "8"}));
    seen.want({});
    EXPECT_EQ(givenUp, 2);
}

/// EDIT-88
TEST_F(SeenFilesTest, WaitsForWhatCannotBeGivenUp) {
    SeenFiles<int> others{read, {}, [] {}};
    others.want({"a", "b"});
    others.want({"c"});
    EXPECT_EQ(asked, Names{"a"}) << "one at a time";
    answer(1);
    EXPECT_NE(others.of("a"), nullptr);
    EXPECT_EQ(asked, (Names{"a", "c"}));
}

/// EDIT-88
TEST_F(SeenFilesTest, AnAnswerBehindItsEndIsNobodys) {
    {
        SeenFiles<int> others{read, {}, [this] { ++changes; }};
        others.want({"a"});
    }
    answer(1);
    EXPECT_EQ(changes, 0);
}

/// EDIT-89: Of so many files it is kept, and those seen last stay; of more at a time than that nothing is read twice
TEST_F(SeenFilesTest, KeepsThoseSeenLast) {
    constexpr std::size_t kAtOnce = SeenFiles<int>::kMostWanted;
    for (std::size_t from = 0; from <= SeenFiles<int>::kMostKept; from += kAtOnce) {
        seen.want(numbered(from, from + kAtOnce));
        while (pending) answer(1);
        seen.want({"0"});
    }
    EXPECT_NE(seen.of("0"), nullptr) << "seen again and again";
    EXPECT_EQ(seen.of("1"), nullptr);
    EXPECT_NE(seen.of(std::to_string(kAtOnce + kAtOnce)), nullptr);
    asked.clear();
    seen.want(numbered(1'000, 100'000));
    while (pending) answer(1);
    EXPECT_EQ(asked.size(), kAtOnce);
}

}  // namespace
}  // namespace corvane
