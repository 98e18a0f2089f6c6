// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/tags/tag_reader.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;
using Told = std::vector<std::string>;

std::string big(std::size_t number, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) text += static_cast<char>(number >> (8 * i) & 0xFFU);
    return text;
}

std::string little(std::size_t number, int bytes = 4) {
    const std::string text = big(number, bytes);
    return {text.rbegin(), text.rend()};
}

std::string seven(std::size_t number) {
    std::string text;
    for (int i = 3; i >= 0; --i) text += static_cast<char>(number >> (7 * i) & 0x7FU);
    return text;
}

/// "name=value" of each, in the order in which they are told.
Told tagsOf(const std::string& file) {
    Told told;
    const auto read = [&file](std::uint64_t from, std::size_t count) {
        return from < file.size() ? file.substr(static_cast<std::size_t>(from), count) : std::string();
    };
    readTags({read, file.size()}, [&told](std::string_view name, std::string_view value) {
        told.push_back(std::string(name) + '=' + std::string(value));
    });
    return told;
}

std::string wide(const std::string& text) {
    std::string units;
    for (const char each : text) units += each + "\0"s;
    return units;
}

std::string frame(const std::string& id, const std::string& body, bool ofSeven = false) {
    return id + (ofSeven ? seven(body.size()) : big(body.size(), 4)) + "\0\0"s + body;
}

std::string id3(int version, const std::string& frames, char flags = 0) {
    return "ID3"s + static_cast<char>(version) + '\0' + flags + seven(frames.size()) + frames;
}

std::string comments(const Told& all) {
    std::string bytes = little(3) + "enc" + little(all.size());
    for (const std::string& each : all) bytes += little(each.size()) + each;
    return bytes;
}

std::string box(const std::string& kind, const std::string& inside) {
    return big(inside.size() + 8, 4) + kind + inside;
}
std::string item(const std::string& kind, const std::string& value) {
    return box(kind, box("data", big(1, 8) + value));
}

/// Pages of Ogg with a packet each.
std::string ogg(const Told& packets) {
    std::string file;
    for (const std::string& each : packets) {
        std::string laces(each.size() / 255, '\xFF');
        laces += static_cast<char>(each.size() % 255);
        file += "OggS" + std::string(10, '\0') + "\7\7\7\7" + std::string(8, '\0') + static_cast<char>(laces.size()) +
                laces + each;
    }
    return file;
}

std::string ape(const std::string& items, std::size_t count) {
    return items + "APETAGEX" + little(2000) + little(items.size() + 32) + little(count) + std::string(12, '\0');
}

/// WIN-86: Our own readers tell title, artist, album, track and loudness of each kind of tags
TEST(TagReaders, ReadId3OfEachVersion) {
    const std::string loud = "\3replaygain_track_gain\0-3.5 dB"s;
    const Told wanted{"title=Song", "artist=\xE6\xAD\x8C", "replaygain_track_gain=-3.5 dB"};
    EXPECT_EQ(
        tagsOf(id3(3, frame("TIT2", "\0Song\0more"s) + frame("TPE1", "\1\xFF\xFE\x4C\x6B\0\0"s) + frame("TXXX", loud))),
        wanted);
    EXPECT_EQ(
        tagsOf(id3(4, frame("TIT2", "\3Song", true) + frame("TPE1", "\2\x6B\x4C"s, true) + frame("TXXX", loud, true))),
        wanted);
    EXPECT_EQ(tagsOf(id3(2, "TT2"s + big(5, 3) + "\0Song"s + "TAL" + big(3, 3) + "\0Al"s)),
              (Told{"title=Song", "album=Al"}));
    EXPECT_EQ(tagsOf(id3(3, frame("TRCK", "\0\x33/12"s) + frame("TIT2", "\0\xFF\0x"s), '\x80')).back(), "title=\xFFx")
        << "the guard is left out, though the sizes count without it";
}

/// WIN-86
TEST(TagReaders, ReadTheOldId3BehindAnything) {
    const auto field = [](std::string text, std::size_t size) {
        text.resize(size);
        return text;
    };
    const std::string tag =
        "TAG" + field("Song", 30) + field("Band  ", 30) + field("Al", 30) + field("", 4) + field("", 28) + "\0\7\0"s;
    EXPECT_EQ(tagsOf(std::string(500, 'x') + tag), (Told{"title=Song", "artist=Band", "album=Al", "track=7"}));
    const std::string item = little(5) + little(0) + "REPLAYGAIN_TRACK_PEAK"s + '\0' + "0.500";
    EXPECT_EQ(tagsOf("xx" + ape(item, 1) + tag).front(), "replaygain_track_peak=0.500");
    EXPECT_EQ(tagsOf("xx" + ape(item, 1)), Told{"replaygain_track_peak=0.500"});
}

/// WIN-86
TEST(TagReaders, ReadTheCommentsOfFlacAndOgg) {
    const Told wanted{"title=Song", "track=3", "r128_track_gain=256"};
    const std::string all = comments({"TITLE=Song", "TrackNumber=3", "no mark", "R128_TRACK_GAIN=256"});
    const std::string flac = "fLaC\0"s + big(2, 3) + "xx" + "\x84"s + big(all.size(), 3) + all;
    EXPECT_EQ(tagsOf(flac), wanted);
    EXPECT_EQ(tagsOf(id3(4, "") + flac), wanted) << "behind a tag that has nothing";
    EXPECT_EQ(tagsOf(ogg({"\1vorbis", "\3vorbis" + all})), wanted);
    EXPECT_EQ(tagsOf(ogg({"OpusHead", "OpusTags" + all + std::string(600, '\0')})), wanted)
        << "a packet of several laces";
}

/// WIN-86
TEST(TagReaders, ReadTheListsOfMp4AsfAndRiff) {
    const std::string list =
        item("\xA9nam", "Song") + item("trkn", "\0\0\0\5\0\0\0\0"s) +
        box("----", box("mean", big(0, 4) + "com") + box("name", big(0, 4) + "REPLAYGAIN_TRACK_GAIN") +
                        box("data", big(1, 8) + "+1 dB"));
    EXPECT_EQ(tagsOf(box("ftyp", "M4A \0\0\0\0"s) + box("free", "abc") +
                     box("moov", box("udta", box("meta", big(0, 4) + box("ilst", list))))),
              (Told{"title=Song", "track=5", "replaygain_track_gain=+1 dB"}));
    const auto object = [](const std::string& kind, const std::string& body) {
        return kind + little(body.size() + 24, 8) + body;
    };
    const std::string plain = little(8, 2) + little(8, 2) + little(0, 6) + wide("Song") + wide("Band");
    const std::string name = wide("WM/AlbumTitle") + "\0\0"s, value = wide("Al");
    const std::string more =
        little(1, 2) + little(name.size(), 2) + name + little(0, 2) + little(value.size(), 2) + value;
    EXPECT_EQ(tagsOf("\x30\x26\xB2\x75" + std::string(20, '\0') + little(2) + "\0\0"s +
                     object("\x33\x26\xB2\x75\x8E\x66\xCF\x11\xA6\xD9\x00\xAA\x00\x62\xCE\x6C"s, plain) +
                     object("\x40\xA4\xD0\xD2\x07\xE3\xD2\x11\x97\xF0\x00\xA0\xC9\x5E\xA8\x50"s, more)),
              (Told{"title=Song", "artist=Band", "album=Al"}));
    const std::string info = "INFOINAM" + little(5) + "Song\0"s + '\0' + "IART" + little(4) + "Band";
    EXPECT_EQ(tagsOf("RIFF" + little(100) + "WAVEdata" + little(3) + "abc\0"s + "LIST" + little(info.size()) + info),
              (Told{"title=Song", "artist=Band"}));
}

/// Each file above cut at each length, and with each byte another one: nothing is read outside, and all ends.
/// WIN-86
TEST(TagReaders, WhatIsDamagedSaysWhatStandsBeforeTheDamage) {
    const std::string all = comments({"TITLE=Song", "ARTIST=Band"});
    for (const std::string& whole :
         {id3(3, frame("TIT2", "\0Song"s) + frame("TPE1", "\0Band"s)), ogg({"OpusHead", "OpusTags" + all}),
          "fLaC\x84"s + big(all.size(), 3) + all,
          box("ftyp", "M4A ") +
              box("moov", box("udta", box("meta", big(0, 4) + box("ilst", item("\xA9nam", "Song")))))}) {
        ASSERT_FALSE(tagsOf(whole).empty());
        for (std::size_t size = 0; size < whole.size(); ++size) EXPECT_LE(tagsOf(whole.substr(0, size)).size(), 2U);
        for (std::size_t at = 0; at < whole.size(); ++at) {
            for (const char other : {'\0', '\x7F', '\xFF'}) {
                std::string damaged = whole;
                damaged[at] = other;
                tagsOf(damaged);
            }
        }
    }
    EXPECT_EQ(tagsOf(id3(3, frame("TIT2", "\0Song"s) + "TPE1\x7F\xFF\xFF\xFF\0\0\0Ban"s)),
              (Told{"title=Song", "artist=Ban"}));
    EXPECT_EQ(tagsOf(""), Told{});
}

TEST(TagReaders, ANumberStandsBeforeHowManyThereAre) {
    EXPECT_EQ(trackNumberOf(" 03/12"), 3);
    EXPECT_EQ(trackNumberOf("x"), 0);
    EXPECT_EQ(trackNumberOf("1234567"), 12345);
}

}  // namespace
}  // namespace corvane
