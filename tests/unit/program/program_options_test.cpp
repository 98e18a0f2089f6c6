// SPDX-License-Identifier: GPL-3.0-or-later
#include "program/options.h"

#include <gtest/gtest.h>

#include "program/command_line.h"

namespace corvane {
namespace {

TEST(ProgramOptions, FurtherLinesOfAHelpStandBelowTheFirst) {
    EXPECT_EQ(helpRow("--open", "one\ntwo", 8), "  --open     one\n             two\n");
    EXPECT_EQ(helpRow("--longer-than-that", "one\ntwo", 8), "  --longer-than-that one\n             two\n");
}

TEST(ProgramOptions, ARowNamesTheShortFormToo) {
    EXPECT_EQ(helpRows({{"--help", "-h", "", "help"}, {"--size", "", "N", "size"}}, 10),
              "  -h, --help   help\n  --size       size\n");
}

TEST(ProgramOptions, InShortIsWhatStandsBeforeAColonOrTheFirstLinesEnd) {
    EXPECT_EQ(inShort({"--a", "", "", "plays: more"}), "plays");
    EXPECT_EQ(inShort({"--a", "", "", "plays\nmore: x"}), "plays");
    EXPECT_EQ(inShort({"--a", "", "", "plays"}), "plays");
}

/// What the help lists is what the command line takes, each for itself.
TEST(ProgramOptions, EveryOptionOfTheTableIsTaken) {
    const auto whole = [](const std::string& given) { return given; };
    ASSERT_FALSE(playerOptions().empty());
    for (const ProgramOption& option : playerOptions()) {
        for (const std::string& word : {option.word, option.letter}) {
            if (word.empty()) continue;
            const CommandLine line = readArguments({word}, whole);
            EXPECT_TRUE(line.unknown.empty()) << word;
            EXPECT_EQ(line.help + line.version + line.about + line.byDesktop, 1) << word;
        }
        EXPECT_NE(
            usageText().find("  " + (option.letter.empty() ? option.word : option.letter + ", " + option.word) + " "),
            std::string::npos)
            << option.word;
    }
}

}  // namespace
}  // namespace corvane
