// SPDX-License-Identifier: GPL-3.0-or-later
#include "forms/event.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

TEST(Event, WithoutAHandlerDoesNothing) {
    const Event<int> event;
    EXPECT_FALSE(event.isTied());
    event.raise(1);
}

TEST(Event, GivesItsArgumentsToTheHandler) {
    Event<int, std::string> event;
    std::string heard;
    event.tie([&](int number, const std::string& text) { heard = text + std::to_string(number); });
    EXPECT_TRUE(event.isTied());
    event.raise(7, "track");
    EXPECT_EQ(heard, "track7");
}

TEST(Event, HasOneHandlerTheLastOneTied) {
    Event<> event;
    int first = 0;
    int second = 0;
    event.tie([&] { ++first; });
    event.tie([&] { ++second; });
    event.raise();
    EXPECT_EQ(first, 0);
    EXPECT_EQ(second, 1);
}

TEST(Event, MayBeTiedAnewByTheRunningHandler) {
    Event<> event;
    const std::string kept = "the running handler and what it holds live on while it runs";
    std::string seen;
    event.tie([&event, &seen, kept] {
        event.tie([] {});
        seen = kept;
    });
    event.raise();
    EXPECT_EQ(seen, kept);
    seen.clear();
    event.raise();
    EXPECT_EQ(seen, "");
}

TEST(Event, CanBeUntied) {
    Event<> event;
    int count = 0;
    event.tie([&] { ++count; });
    event.tie({});
    event.raise();
    EXPECT_EQ(count, 0);
    EXPECT_FALSE(event.isTied());
}

}  // namespace
}  // namespace corvane
