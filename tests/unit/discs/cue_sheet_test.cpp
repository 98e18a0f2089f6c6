// SPDX-License-Identifier: GPL-3.0-or-later
#include "discs/cue_sheet.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace corvane {
namespace {

const std::string kPlain =
    "FILE \"disc.bin\" BINARY\n"
    "  TRACK 01 AUDIO\n    INDEX 01 00:00:00\n"
    "  TRACK 02 AUDIO\n    INDEX 00 00:01:00\n    INDEX 01 00:01:30\n";

CueSheet sheetOf(const std::string& text) {
    ReadCueSheet read = readCueSheet(text);
    EXPECT_EQ(read.reason, "") << text;
    return read.sheet.value_or(CueSheet{});
}

std::string reasonFor(const std::string& text) {
    const ReadCueSheet read = readCueSheet(text);
    EXPECT_EQ(read.sheet.has_value(), read.reason.empty()) << text;
    return read.reason;
}

std::string replaced(std::string text, const std::string& what, const std::string& by) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return at == std::string::npos ? text : text.replace(at, what.size(), by);
}

/// MEDIA-60: A sheet is read with any line ending and a mark, with the kinds of files and tracks, titles and
///     performers; more than a disc has is refused
TEST(CueSheet, NamesFilesTracksAndPlaces) {
    const CueSheet sheet = sheetOf(kPlain);
    ASSERT_EQ(sheet.files.size(), 1U);
    EXPECT_EQ(sheet.files[0].name, "disc.bin");
    EXPECT_EQ(sheet.files[0].kind, CueFile::Kind::Raw);
    ASSERT_EQ(sheet.tracks.size(), 2U);
    EXPECT_EQ(sheet.tracks[1].number, 2);
    EXPECT_TRUE(sheet.tracks[1].audio);
    ASSERT_EQ(sheet.tracks[1].indexes.size(), 2U);
    EXPECT_EQ(sheet.tracks[1].indexes[0].number, 0);
    EXPECT_EQ(sheet.tracks[1].indexes[0].sector, 75);
    EXPECT_EQ(sheet.tracks[1].indexes[1].sector, 105);
}

/// MEDIA-60
TEST(CueSheet, AnyLineEndingAMarkBlanksAndCaseAreRead) {
    std::string carriage = kPlain;
    std::replace(carriage.begin(), carriage.end(), '\n', '\r');
    EXPECT_EQ(sheetOf(carriage).tracks.size(), 2U);
    std::string both;
    for (const char c : kPlain) both += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(sheetOf("\xEF\xBB\xBF" + both).tracks.size(), 2U);
    EXPECT_EQ(sheetOf("\tfile\tdisc.bin binary  \n\n track 1 audio\nindex 1 0:0:0").tracks.size(), 1U);
}

/// MEDIA-60
TEST(CueSheet, KindsOfFilesAndTracks) {
    const auto kindOf = [](const std::string& word) {
        return sheetOf("FILE a " + word + "\nTRACK 1 AUDIO\nINDEX 1 0:0:0").files.at(0).kind;
    };
    EXPECT_EQ(kindOf("MOTOROLA"), CueFile::Kind::RawSwapped);
    for (const char* const word : {"WAVE", "MP3", "FLAC", "AIFF"}) EXPECT_EQ(kindOf(word), CueFile::Kind::Sound);
    const auto trackOf = [](const std::string& word) {
        return sheetOf("FILE a BINARY\nTRACK 1 " + word + "\nINDEX 1 0:0:0").tracks.at(0);
    };
    EXPECT_TRUE(trackOf("CDG").audio);
    EXPECT_EQ(trackOf("CDG").sectorBytes, 2448);
    EXPECT_FALSE(trackOf("MODE1/2048").audio);
    EXPECT_EQ(trackOf("mode1/2048").sectorBytes, 2048);
    EXPECT_EQ(trackOf("MODE2/2336").sectorBytes, 2336);
}

/// MEDIA-60
TEST(CueSheet, TitlesAndPerformersBelongToTheDiscOrToTheirTrack) {
    const CueSheet sheet = sheetOf(
        "PERFORMER \"The many\"\nTITLE \"Whole thing\"\nFILE \"a b.wav\" WAVE\nTRACK 01 AUDIO\nTITLE \"A \"\n"
        "PERFORMER One\nSONGWRITER x\nISRC y\nFLAGS DCP\nPREGAP 00:02:00\nINDEX 01 00:00:00\nPOSTGAP 00:00:10\n");
    EXPECT_EQ(sheet.title, "Whole thing");
    EXPECT_EQ(sheet.performer, "The many");
    EXPECT_EQ(sheet.files[0].name, "a b.wav");
    EXPECT_EQ(sheet.tracks[0].title, "A ");
    EXPECT_EQ(sheet.tracks[0].performer, "One");
    EXPECT_EQ(sheet.tracks[0].pregap, 150);
    EXPECT_EQ(sheet.tracks[0].postgap, 10);
}

/// MEDIA-61: A sheet names files of its own folder alone
TEST(CueSheet, FilesLieInTheSheetsOwnFolderWhateverItSays) {
    for (const char* const name : {"\"../../secret.bin\"", "\"/dev/secret.bin\"", "\"C:\\Music\\secret.bin\"",
                                   "\"http://host/secret.bin\"", "//host/share/secret.bin"}) {
        EXPECT_EQ(sheetOf(replaced(kPlain, "\"disc.bin\"", name)).files[0].name, "secret.bin");
    }
    for (const char* const name : {"\"..\"", "\".\"", "\"\"", "\"/\"", "\"a/..\"", "\\"}) {
        EXPECT_NE(reasonFor(replaced(kPlain, "\"disc.bin\"", name)), "") << name;
    }
}

/// MEDIA-47
TEST(CueSheet, WhatMakesNoSenseRefusesTheWhole) {
    const auto with = [](const std::string& what, const std::string& by) {
        return reasonFor(replaced(kPlain, what, by));
    };
    EXPECT_NE(reasonFor(""), "");
    EXPECT_NE(reasonFor("FILE"), "");
    EXPECT_NE(reasonFor("FILE \"a.bin\" BINARY\n"), "");
    EXPECT_NE(reasonFor("TRACK 01 AUDIO\nFILE \"a.bin\" BINARY\nINDEX 01 00:00:00\n"), "");
    EXPECT_NE(reasonFor("FILE \"a.bin\" BINARY\nINDEX 01 00:00:00\n"), "");
    EXPECT_NE(reasonFor("FILE \"a.bin\" BINARY\nPREGAP 00:00:00\n"), "");
    EXPECT_NE(with(" BINARY", ""), "");
    EXPECT_NE(with("TRACK 01", "TRACK 00"), "");
    EXPECT_NE(with("TRACK 02", "TRACK 01"), "");
    EXPECT_NE(with("TRACK 02", "TRACK 100"), "");
    EXPECT_NE(with("TRACK 02", "TRACK -2"), "");
    EXPECT_NE(with("TRACK 02", "TRACK 2147483650"), "");
    EXPECT_NE(with("AUDIO", "VIDEO"), "");
    EXPECT_NE(with("INDEX 01 00:00:00", "INDEX 00 00:00:00"), "") << "no begin";
    EXPECT_NE(with("INDEX 01 00:00:00", "INDEX 02 00:00:00"), "");
    EXPECT_NE(with("00:01:30", "00:00:74"), "") << "an index goes back";
    EXPECT_NE(with("INDEX 00 00:01:00", "INDEX 01 00:01:00"), "") << "one twice";
    for (const char* const time : {"00:01:75", "00:60:00", "0:0", "::", "1:2:3:4", "9999:00:00", "-1:00:00", "",
                                   "4294967296:00:00", "0x1:00:00"}) {
        EXPECT_NE(with("00:01:30", time), "") << time;
        EXPECT_NE(reasonFor(kPlain + "PREGAP " + time), "") << time;
    }
    EXPECT_NE(reasonFor(kPlain + std::string(1, '\0')), "");
}

/// MEDIA-60
TEST(CueSheet, MoreThanADiscHasIsRefused) {
    std::string sheet = "FILE a BINARY\n";
    for (int number = 1; number <= 99; ++number) sheet += "TRACK " + std::to_string(number) + " AUDIO\nINDEX 1 0:0:0\n";
    EXPECT_EQ(sheetOf(sheet).tracks.size(), 99U);
    EXPECT_NE(reasonFor(sheet + "TRACK 100 AUDIO\nINDEX 1 0:0:0\n"), "");
    EXPECT_NE(reasonFor(sheet + "TRACK 99 AUDIO\nINDEX 1 0:0:0\n"), "");

    std::string indexes = "FILE a BINARY\nTRACK 1 AUDIO\n";
    for (int number = 1; number <= 99; ++number) indexes += "INDEX " + std::to_string(number) + " 0:0:0\n";
    EXPECT_EQ(sheetOf(indexes).tracks[0].indexes.size(), 99U);
    for (int more = 0; more < 3000; ++more) indexes += "INDEX 99 0:0:0\n";
    EXPECT_NE(reasonFor(indexes), "");

    std::string files;
    for (int number = 1; number <= 100; ++number) files += "FILE a BINARY\n";
    EXPECT_NE(reasonFor(files + "TRACK 1 AUDIO\nINDEX 1 0:0:0\n"), "");

    const std::string filled = kPlain + "REM ";
    EXPECT_EQ(sheetOf(filled + std::string(kMostCueBytes - filled.size(), 'x')).tracks.size(), 2U);
    EXPECT_NE(reasonFor(filled + std::string(kMostCueBytes - filled.size() + 1, 'x')), "");
}

/// MEDIA-60
TEST(CueSheet, AFileWithoutATrackIsLeftOut) {
    const CueSheet sheet = sheetOf(
        "FILE none BINARY\nFILE a BINARY\nTRACK 1 AUDIO\nINDEX 1 0:0:0\nFILE end BINARY\nTRACK 2 AUDIO\nINDEX 1 0:0:0\n"
        "FILE last BINARY\n");
    ASSERT_EQ(sheet.files.size(), 2U);
    EXPECT_EQ(sheet.files[0].name, "a");
    EXPECT_EQ(sheet.files[1].name, "end");
    EXPECT_EQ(sheet.tracks[1].indexes[0].file, 1U);
}

constexpr std::int64_t kSecond = kCdSectorsPerSecond;

/// Start and length of each track.
std::vector<std::pair<std::int64_t, std::int64_t>> placesOf(const DiscLayout& layout) {
    std::vector<std::pair<std::int64_t, std::int64_t>> places;
    for (const CdTrack& track : layout.tracks) places.emplace_back(track.start, track.length);
    return places;
}
using Places = std::vector<std::pair<std::int64_t, std::int64_t>>;

/// MEDIA-62: Tracks lie where the sheet says: gaps in no file are silent, gaps in a file belong to the track before,
///     each kind of track has sectors of its own size
TEST(DiscLayout, TracksOfOneFileFollowEachOtherWithTheirGaps) {
    const auto layout = layOut(sheetOf(kPlain), {std::int64_t{kCdBytesPerSector} * 300 + 17});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{0, 105}, {105, 195}}));
    EXPECT_EQ(pieceAt(*layout, 100)->file, 0U);
    EXPECT_EQ(pieceAt(*layout, 100)->from + (100 - pieceAt(*layout, 100)->start) * kCdBytesPerSector,
              100 * kCdBytesPerSector);
    EXPECT_EQ(pieceAt(*layout, 300), nullptr);
    EXPECT_EQ(pieceAt(*layout, -1), nullptr);
}

/// MEDIA-62
TEST(DiscLayout, GapsThatNoFileHoldsAreSilent) {
    const CueSheet sheet = sheetOf(
        "FILE a WAVE\nTRACK 1 AUDIO\nPREGAP 0:2:0\nINDEX 1 0:0:0\nPOSTGAP 0:1:0\n"
        "FILE b WAVE\nTRACK 2 AUDIO\nPREGAP 0:3:0\nINDEX 1 0:0:0\nPOSTGAP 0:4:0\n");
    const auto layout = layOut(sheet, {10 * kSecond, 20 * kSecond});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{2 * kSecond, 14 * kSecond}, {16 * kSecond, 24 * kSecond}}));
    EXPECT_EQ(pieceAt(*layout, 0)->file, kNoFile);
    EXPECT_EQ(pieceAt(*layout, 2 * kSecond)->file, 0U);
    EXPECT_EQ(pieceAt(*layout, 12 * kSecond)->file, kNoFile);
    EXPECT_EQ(pieceAt(*layout, 16 * kSecond)->file, 1U);
    EXPECT_EQ(pieceAt(*layout, 36 * kSecond)->file, kNoFile);
    EXPECT_EQ(pieceAt(*layout, 40 * kSecond), nullptr);
}

/// MEDIA-62
TEST(DiscLayout, AGapMayLieAtTheEndOfTheFileBefore) {
    const CueSheet sheet = sheetOf(
        "FILE a WAVE\nTRACK 1 AUDIO\nINDEX 1 0:0:0\nTRACK 2 AUDIO\nINDEX 0 0:8:0\n"
        "FILE b WAVE\nINDEX 1 0:0:0\n");
    const auto layout = layOut(sheet, {10 * kSecond, 20 * kSecond});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{0, 10 * kSecond}, {10 * kSecond, 20 * kSecond}}));
    EXPECT_EQ(pieceAt(*layout, 10 * kSecond)->file, 1U);
    EXPECT_EQ(pieceAt(*layout, 10 * kSecond)->from, 0);
}

/// MEDIA-62
TEST(DiscLayout, WhatLiesBeforeTheFirstIndexIsOnTheDisc) {
    const CueSheet sheet = sheetOf(
        "FILE a WAVE\nTRACK 1 AUDIO\nINDEX 0 0:1:0\nINDEX 1 0:3:0\nFILE b WAVE\nTRACK 2 AUDIO\nINDEX 1 0:2:0\n");
    const auto layout = layOut(sheet, {10 * kSecond, 10 * kSecond});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{3 * kSecond, 9 * kSecond}, {12 * kSecond, 8 * kSecond}}));
    EXPECT_EQ(pieceAt(*layout, 11 * kSecond)->file, 1U);
}

/// MEDIA-62
TEST(DiscLayout, SectorsOfEachTracksOwnSize) {
    const CueSheet sheet = sheetOf(
        "FILE a BINARY\nTRACK 1 MODE1/2048\nINDEX 1 0:0:0\nTRACK 2 AUDIO\nINDEX 0 0:1:0\nINDEX 1 0:2:0\n"
        "TRACK 3 CDG\nINDEX 1 0:3:0\n");
    const std::int64_t bytes = kSecond * (2048 + 2 * 2352 + 2 * 2448);
    const auto layout = layOut(sheet, {bytes});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{0, 2 * kSecond}, {2 * kSecond, kSecond}, {3 * kSecond, 2 * kSecond}}));
    EXPECT_EQ(pieceAt(*layout, kSecond)->from, kSecond * 2048);
    EXPECT_EQ(pieceAt(*layout, 3 * kSecond)->from, kSecond * (2048 + 2 * 2352));
    EXPECT_EQ(pieceAt(*layout, 3 * kSecond)->sectorBytes, 2448);
}

/// MEDIA-62
TEST(DiscLayout, AFileThatIsTooShortLeavesTracksEmpty) {
    const auto layout = layOut(sheetOf(kPlain), {std::int64_t{kCdBytesPerSector} * 60});
    ASSERT_TRUE(layout);
    EXPECT_EQ(placesOf(*layout), (Places{{0, 60}, {60, 0}}));
    const auto none = layOut(sheetOf(kPlain), {0});
    ASSERT_TRUE(none);
    EXPECT_EQ(placesOf(*none), (Places{{0, 0}, {0, 0}}));
    EXPECT_TRUE(none->pieces.empty());
}

/// MEDIA-62
TEST(DiscLayout, ADiscLongerThanAnyIsRefused) {
    const CueSheet one = sheetOf("FILE a WAVE\nTRACK 1 AUDIO\nINDEX 1 0:0:0\n");
    EXPECT_TRUE(layOut(one, {kMostDiscSectors}));
    EXPECT_FALSE(layOut(one, {kMostDiscSectors + 1}));
    EXPECT_FALSE(layOut(one, {INT64_MAX}));
    EXPECT_FALSE(layOut(sheetOf(kPlain), {INT64_MAX}));
    const CueSheet gaps = sheetOf("FILE a WAVE\nTRACK 1 AUDIO\nPREGAP 999:0:0\nINDEX 1 0:0:0\nPOSTGAP 2:0:0\n");
    EXPECT_FALSE(layOut(gaps, {0}));
}

}  // namespace
}  // namespace corvane
