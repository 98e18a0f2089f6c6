// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/instance_call.h"

#include <gtest/gtest.h>

#include "types/printable.h"

namespace corvane {
namespace {

using Texts = std::vector<std::string>;

/// CMD-16
TEST(InstanceCall, FilesComeInWhateverPieces) {
    const std::string said = callOf({"/a b.mp3", "/\xE9.wav"});
    CallReader reader(said.size());
    for (const char c : said) EXPECT_TRUE(reader.take(std::string_view(&c, 1)));
    EXPECT_EQ(reader.files(), (Texts{"/a b.mp3", "/\xE9.wav"}));
}

/// CMD-19
TEST(InstanceCall, SilenceIsACallWithoutFiles) {
    EXPECT_EQ(callOf({}), "");
    EXPECT_EQ(CallReader(10).files(), Texts{});
}

/// CMD-16
TEST(InstanceCall, WhatWasCutOffOrIsEmptyDoesNotCount) {
    CallReader reader(100);
    ASSERT_TRUE(reader.take(std::string_view("/a.mp3\0\0/half", 13)));
    EXPECT_EQ(reader.files(), Texts{"/a.mp3"});
}

/// CMD-16
TEST(InstanceCall, WhatIsTooLongCountsAsNothing) {
    CallReader reader(8);
    EXPECT_TRUE(reader.take(std::string_view("/a.mp3\0", 7)));
    EXPECT_FALSE(reader.take("/b"));
    EXPECT_EQ(reader.files(), Texts{});
}

TEST(Printable, TextsOfAnyLanguageStay) {
    for (const char* const text : {"", "plain", "\xC3\xA4\xC3\x9F", "\xE9\x9F\xB3\xE6\xA5\xBD", "\xF0\x9F\x8E\xB5"}) {
        EXPECT_EQ(printable(text), text);
    }
}

/// CMD-20
TEST(Printable, WhatSteersATerminalOrIsNoTextDoesNot) {
    EXPECT_EQ(printable("a\nb\x1B[2Jc\x7F\r\t"), "a?b?[2Jc???");
    EXPECT_EQ(printable(std::string_view("a\0b", 3)), "a?b");
    EXPECT_EQ(printable("\xC2\x9B"), "??") << "a control character of two bytes";
    EXPECT_EQ(printable("\xE2\x80\xAE"), "???") << "turns what follows around";
    EXPECT_EQ(printable("\x9B\xE9x"), "??x");
    EXPECT_EQ(printable("\xC0\xAF"), "??") << "too long a form";
    EXPECT_EQ(printable("\xED\xA0\x80"), "???") << "half of a pair";
    EXPECT_EQ(printable("\xF4\x90\x80\x80"), "????");
    EXPECT_EQ(printable("\xE9\x9F"), "??") << "cut off";
}

}  // namespace
}  // namespace corvane
