// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/sheet_files.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using Names = std::vector<std::string>;

/// The files that a sheet with these lines `FILE …` plays in the end.
Names filesOf(const Names& lines, const Names& beside, const std::string& name = "disc.cue") {
    std::string text;
    int number = 0;
    for (const std::string& line : lines)
        text += "FILE " + line + "\nTRACK " + std::to_string(++number) + " AUDIO\nINDEX 01 00:00:00\n";
    CueSheet sheet = readCueSheet(text).sheet.value_or(CueSheet{});
    standInForMissing(sheet, name, beside);
    Names files;
    for (const CueFile& file : sheet.files) files.push_back(file.name);
    return files;
}

/// MEDIA-77: A file of a sheet that is missing is played by the same name in other letters, or by a sound of the same
///     stem and another kind, those without loss first; a sheet's only sound by one with the stem of the sheet
TEST(SheetFiles, WhatIsThereIsTaken) {
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, {"One.flac", "One.wav", "one.wav"}), Names{"One.wav"});
}

/// MEDIA-77
TEST(SheetFiles, TheSameNameIsFoundInOtherLetters) {
    EXPECT_EQ(filesOf({"\"ONE.WAV\" WAVE"}, {"one.flac", "one.wav"}), Names{"one.wav"});
    EXPECT_EQ(filesOf({"\"DISC.BIN\" BINARY"}, {"disc.flac", "disc.bin"}), Names{"disc.bin"});
    EXPECT_EQ(filesOf({"\"\u00C9t\u00E9.wav\" WAVE"}, {"e\u0301te\u0301.wav"}), Names{"e\u0301te\u0301.wav"});
    EXPECT_EQ(filesOf({"\"Mot\u00F6r.wav\" WAVE"}, {"motor.wav", "MOT\u00D6R.wav"}), Names{"MOT\u00D6R.wav"})
        << "with its accents before one without";
}

/// MEDIA-77
TEST(SheetFiles, ASoundOfTheSameStemStandsIn) {
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, {"cover.jpg", "disc.cue", "one.FLAC"}), Names{"one.FLAC"});
    EXPECT_EQ(filesOf({"\"One.flac\" WAVE"}, {"One.wav"}), Names{"One.wav"});
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, {"One.mp3", "One.ogg", "One.flac", "One.wv"}), Names{"One.flac"});
    EXPECT_EQ(filesOf({"\"Vol. 1.wav\" WAVE"}, {"Vol. 2.flac", "Vol.flac", "Vol. 1.m4a"}), Names{"Vol. 1.m4a"});
    EXPECT_EQ(filesOf({"\"1.wav\" WAVE", "\"2.wav\" WAVE", "\"3.wav\" WAVE"}, {"3.ape", "2.wav", "1.flac"}),
              (Names{"1.flac", "2.wav", "3.ape"}));
}

/// MEDIA-77
TEST(SheetFiles, TheOnlySoundMayHaveTheStemOfTheSheet) {
    EXPECT_EQ(filesOf({"\"CDImage.wav\" WAVE"}, {"Album.cue", "Album.flac"}, "Album.cue"), Names{"Album.flac"});
    EXPECT_EQ(filesOf({"\"CDImage.wav\" WAVE"}, {"Album.flac", "CDImage.mp3"}, "Album.cue"), Names{"CDImage.mp3"});
    EXPECT_EQ(filesOf({"\"1.wav\" WAVE", "\"2.wav\" WAVE"}, {"Album.flac"}, "Album.cue"), (Names{"1.wav", "2.wav"}));
}

/// MEDIA-77
TEST(SheetFiles, NothingElseStandsIn) {
    EXPECT_EQ(filesOf({"\"disc.bin\" BINARY"}, {"disc.flac"}), Names{"disc.bin"}) << "what no sound was";
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, {"One.jpg", "One.mid", "One.xm", "One.avi", "One", "One.flac.txt"}),
              Names{"One.wav"});
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, {}), Names{"One.wav"});
    Names many(kMostNamesBeside, "other.flac");
    many.emplace_back("One.flac");
    EXPECT_EQ(filesOf({"\"One.wav\" WAVE"}, many), Names{"One.wav"});
}

}  // namespace
}  // namespace corvane
