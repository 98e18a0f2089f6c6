// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/remaining.h"

#include <gtest/gtest.h>

#include <random>

namespace corvane {
namespace {

std::size_t looks = 0;

/// Counts how often it is looked into.
struct Counting : std::vector<std::uint32_t> {
    using vector::vector;
    std::uint32_t& operator[](std::size_t place) { return ++looks, vector::operator[](place); }
};

/// SEQ-38: Whatever the list's length, an entry is drawn out of those that are left as if what was drawn had been taken
///     out of the list
TEST(Remaining, TakesWhatErasingFromAListWould) {
    std::mt19937 random(5);
    for (const std::size_t count : {1U, 2U, 3U, 7U, 8U, 9U, 255U, 256U, 257U, 1000U}) {
        Remaining<> left(count);
        std::vector<std::size_t> list(count);
        for (std::size_t i = 0; i < count; ++i) list[i] = i;
        while (!list.empty()) {
            ASSERT_EQ(left.left(), list.size());
            const std::size_t place = random() % list.size();
            ASSERT_EQ(left.take(place), list[place]) << count;
            list.erase(list.begin() + static_cast<std::ptrdiff_t>(place));
        }
    }
}

TEST(Remaining, AnyDrawOf9999LooksAtFourteenPlacesAtMost) {
    constexpr std::size_t kCount = 9999;
    Remaining<Counting> left(kCount);
    for (std::size_t i = 0; i < kCount; ++i) {
        looks = 0;
        left.take(left.left() / 2);
        ASSERT_LE(looks, 2 * 14U) << "each is read, and may be written";
    }
}

}  // namespace
}  // namespace corvane
