// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <cstdint>

#include "program/about_lines.h"
#include "program/command_line.h"
#include "program/seeded_random.h"

namespace corvane {
namespace {

TEST(Scales, AreNumbersWithinTheirRange) {
    for (const auto& [given, scale] : {std::pair{"", 1.0},
                                       {"1.5", 1.5},
                                       {"2", 2.0},
                                       {"0.1", 0.5},
                                       {"-3", 0.5},
                                       {"90", 4.0},
                                       {"large", 1.0},
                                       {"2x", 1.0},
                                       {"1,5", 1.0},
                                       {"nan", 1.0},
                                       {"inf", 1.0},
                                       {"1e999", 1.0}}) {
        EXPECT_EQ(scaleOf(given), scale) << given;
    }
}

TEST(AboutLines, StandInColumns) {
    EXPECT_EQ(aboutLine("Sound", "answers"), "Sound:             answers\n");
    EXPECT_EQ(aboutLine("Sounds for every MIDI", "there"), "Sounds for every MIDI: there\n");
    EXPECT_EQ(joined({"a", "b", "c"}), "a, b, c");
    EXPECT_EQ(joined({}), "");
}

TEST(AboutLines, SayWhetherTheFolderServes) {
    EXPECT_EQ(aboutFolder("/f", true, true), "/f");
    EXPECT_EQ(aboutFolder("/f", true, false), "/f (cannot be written: nothing is stored)");
    EXPECT_EQ(aboutFolder("/f", false, false), "/f (made at the first start)");
}

TEST(SeededNumbers, ComeFromTheTimeAndLieBelowOne) {
    std::uint64_t time = 7;
    SeededRandom first([&] { return time; }), second([&] { return time; });
    first.seedFromClock();
    second.seedFromClock();
    const double number = first.next();
    EXPECT_EQ(number, second.next());
    time = 8;
    second.seedFromClock();
    EXPECT_NE(number, second.next());
    for (int i = 0; i < 1000; ++i) {
        const double next = first.next();
        EXPECT_TRUE(next >= 0 && next < 1) << next;
    }
}

}  // namespace
}  // namespace corvane
