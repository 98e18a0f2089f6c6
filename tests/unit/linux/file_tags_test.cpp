// SPDX-License-Identifier: GPL-3.0-or-later
// Tags and covers as they are read from files, and covers as other programs get them.
#include "media/tags/file_tags.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "media/tags/cover_files.h"
#include "unit/linux/memory_peak.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

constexpr seconds kDeadline{40};
constexpr long kMostMegabytes = 120;

std::string big(std::uint64_t value, int bytes) {
    std::string text;
    for (int i = bytes - 1; i >= 0; --i) text.push_back(static_cast<char>(value >> (8 * i) & 0xFFU));
    return text;
}
std::string syncSafe(std::size_t value) {
    std::string text;
    for (int i = 3; i >= 0; --i) text.push_back(static_cast<char>(value >> (7 * i) & 0x7FU));
    return text;
}

std::string bytesOf(const std::string& path) {
    std::ostringstream all;
    all << std::ifstream(path, std::ios::binary).rdbuf();
    return all.str();
}
std::string sound(const std::string& name) {
    return bytesOf(std::string(CORVANE_SOURCE_DIR) + "/tests/data/sound/" + name);
}

/// A frame of an ID3v2.3 tag, and a tag of such frames.
std::string frame(const char* id, const std::string& data) {
    return id + big(data.size(), 4) + std::string(2, '\0') + data;
}
std::string text(const char* id, const std::string& bytes) { return frame(id, std::string(1, '\0') + bytes); }
std::string tag(const std::string& frames) { return std::string("ID3\x03\0\0", 6) + syncSafe(frames.size()) + frames; }
std::string picture(const std::string& mime, const std::string& bytes) {
    return frame("APIC", std::string(1, '\0') + mime + std::string("\0\x03\0", 3) + bytes);
}

/// A PNG file as far as its size.
std::string pngOf(std::uint32_t width, std::uint32_t height, std::size_t bytes) {
    std::string png = "\x89PNG\r\n\x1A\n" + big(13, 4) + "IHDR" + big(width, 4) + big(height, 4) + big(0, 5);
    png.resize(bytes, 'x');
    return png;
}

class Tags : public testing::Test {
protected:
    FileTags read(const std::string& name = "a.mp3") { return readFileTags(folder_.in(name), givenUp_); }
    FileTags readMp3(const std::string& frames) {
        folder_.write("a.mp3", tag(frames) + sound("cbr_bare.mp3"));
        return read();
    }
    std::atomic<bool> givenUp_{false};
    test::TemporaryFolder folder_;
};

/// TEXT-12: Title, artist, album and number are read from the tags of sounds
TEST_F(Tags, OfASound) {
    const FileTags tags =
        readMp3(text("TIT2", "One") + text("TPE1", "Artist") + text("TALB", "Album") + text("TRCK", "03/12"));
    EXPECT_EQ(tags.title, "One");
    EXPECT_EQ(tags.artist, "Artist");
    EXPECT_EQ(tags.album, "Album");
    EXPECT_EQ(tags.track, 3);
    EXPECT_EQ(tags.cover, "");
    EXPECT_EQ(readMp3("").title, "");
    EXPECT_EQ(readMp3(text("TPE2", "Band")).artist, "Band") << "the album's artist, where there is no other";
}

/// TEXT-12
TEST_F(Tags, OfTheOldTagBehindASoundInItsOwnBytes) {
    std::string old = "TAG";
    for (const char* const field : {"\x82\xA0\x82\xA2", "Caf\xE9", "Album"}) {
        old += field;
        old.resize((old.size() + 29 - 3) / 30 * 30 + 3, '\0');
    }
    old.resize(128, '\0');
    folder_.write("a.mp3", sound("cbr_bare.mp3") + old);
    EXPECT_EQ(read().title, "\x82\xA0\x82\xA2");
    EXPECT_EQ(read().artist, "Caf\xE9");
}

/// TEXT-12
TEST_F(Tags, WhatCannotBeReadHasNone) {
    for (const char* const name : {"none.mp3", "..", ""}) EXPECT_EQ(read(name).title, "");
    folder_.write("a.mp3", "");
    EXPECT_EQ(read().title, "");
    folder_.write("a.mp3", std::string(100'000, '\x7F'));
    EXPECT_EQ(read().title, "");
    ASSERT_EQ(mkfifo(folder_.in("pipe.mp3").c_str(), 0600), 0);
    EXPECT_EQ(read("pipe.mp3").title, "");
}

/// TEXT-13: A cover is the JPEG or PNG picture inside the file, else cover.jpg or folder.jpg beside it; one that would
///     take much memory is none
TEST_F(Tags, ACoverInsideOrBeside) {
    const std::string inside = pngOf(600, 600, 5000);
    EXPECT_EQ(readMp3(picture("image/png", inside)).cover, inside);
    EXPECT_EQ(read().coverPath, "");
    EXPECT_EQ(readMp3("").coverPath, "");
    folder_.write("folder.jpg", pngOf(10, 10, 100));
    EXPECT_EQ(readMp3("").coverPath, folder_.in("folder.jpg"));
    folder_.write("cover.jpg", pngOf(10, 10, 100));
    EXPECT_EQ(readMp3("").coverPath, folder_.in("cover.jpg"));
    EXPECT_EQ(readMp3(picture("image/png", inside)).coverPath, "") << "the one inside counts";
}

/// TEXT-13
TEST_F(Tags, ACoverThatWouldTakeMuchMemoryIsNone) {
    for (const std::string& hostile :
         {pngOf(25'000, 20'000, 5000), pngOf(0x7FFFFFFF, 0x7FFFFFFF, 5000), pngOf(0, 10, 5000), pngOf(10, 0, 5000),
          pngOf(10, 10, kMostCoverBytes + 1), std::string(5000, 'x'), std::string("\xFF\xD8\xFF"),
          std::string("\xFF\xD8\xFF\xC0\0\x11\x08\xC3\x50\x27\x10\x03", 12) + std::string(5000, '\0')}) {
        EXPECT_EQ(readMp3(picture("image/png", hostile)).cover, "");
        folder_.write("cover.jpg", hostile);
        EXPECT_EQ(readMp3("").coverPath, "");
    }
    std::filesystem::remove(folder_.in("cover.jpg"));
    ASSERT_EQ(mkfifo(folder_.in("cover.jpg").c_str(), 0600), 0);
    EXPECT_EQ(readMp3("").coverPath, "");
}

/// TEXT-14: Tags of any size and number end quickly, in bounded memory
TEST_F(Tags, OfAnySizeAndNumberEndQuickly) {
    const std::string title = text("TIT2", "One");
    std::string many;
    for (int i = 0; i < 10'000; ++i) many += text("TXXX", "name" + std::to_string(i) + std::string(1, '\0') + "value");
    std::string veryMany;
    while (veryMany.size() < (std::size_t{15} << 20U))
        veryMany += text("TXXX", std::to_string(veryMany.size()) + std::string(1, '\0'));
    const std::string long100(std::size_t{100} << 20U, 'x');
    struct Case {
        const char* what;
        std::string frames;
    };
    const Case cases[] = {{"10,000 tags", many + title},
                          {"half a million tags", veryMany + title},
                          {"a title of 10 MB", text("TIT2", long100.substr(0, std::size_t{10} << 20U))},
                          {"100 MB before the title", text("TXXX", long100) + title},
                          {"a cover of 100 MB", picture("image/png", pngOf(10, 10, long100.size())) + title}};
    for (const Case& each : cases) {
        const test::MemoryPeak memory;
        const auto begin = Clock::now();
        const FileTags tags = readMp3(each.frames);
        EXPECT_LT(Clock::now() - begin, kDeadline) << each.what;
        EXPECT_LT(memory.megabytes(), kMostMegabytes + 100) << each.what;
        EXPECT_LE(tags.title.size(), kMostTagBytes) << each.what;
        EXPECT_EQ(tags.cover, "") << each.what;
    }
    EXPECT_EQ(readMp3(title + many).title, "One") << "the first ones count";
}

/// TEXT-14
TEST_F(Tags, AreGivenUpWhenAsked) {
    givenUp_ = true;
    EXPECT_EQ(readMp3(text("TIT2", "One")).title, "");
}

/// TEXT-15: A disc's track has the title and the performer that the sheet of its image has for it, else the disc's
TEST_F(Tags, OfADiscsTrack) {
    folder_.write("disc.cue",
                  "TITLE \"The Album\"\nPERFORMER \"The Band\"\nFILE \"a.bin\" BINARY\n"
                  "TRACK 01 AUDIO\nTITLE \"First\"\nINDEX 01 00:00:00\n"
                  "TRACK 02 AUDIO\nTITLE \"Second\"\nPERFORMER \"Guest\"\nINDEX 01 00:02:00\n");
    folder_.write("Track01.cda", "");
    folder_.write("Track02.cda", "");
    EXPECT_EQ(read("Track01.cda").title, "First");
    EXPECT_EQ(read("Track01.cda").artist, "The Band");
    EXPECT_EQ(read("Track01.cda").album, "The Album");
    EXPECT_EQ(read("Track01.cda").track, 1);
    EXPECT_EQ(read("Track02.cda").artist, "Guest");
    EXPECT_EQ(read("Track03.cda").title, "");
}

class Covers : public testing::Test {
protected:
    Covers() { chmod(folder_.in("").c_str(), 0700); }
    std::size_t files() {
        std::size_t count = 0;
        for (const auto& each : std::filesystem::directory_iterator(folder_.in("")))
            count += each.is_regular_file() ? 1 : 0;
        return count;
    }
    test::TemporaryFolder folder_;
};

/// TEXT-16: A cover inside a file is written to the player's folder of the session, for its user alone, once, and goes
///     with the last who holds it
TEST_F(Covers, AreWrittenOnceAndGo) {
    CoverFiles covers(folder_.in(""));
    const std::string bytes = pngOf(10, 10, 5000);
    auto one = covers.keep(bytes);
    ASSERT_TRUE(one);
    EXPECT_EQ(bytesOf(one->path()), bytes);
    struct stat status {};
    ASSERT_EQ(stat(one->path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    auto same = covers.keep(bytes);
    EXPECT_EQ(same, one);
    EXPECT_EQ(files(), 1U);
    one.reset();
    EXPECT_EQ(files(), 1U);
    same.reset();
    EXPECT_EQ(files(), 0U);
}

/// TEXT-16
TEST_F(Covers, AllTogetherAreBounded) {
    CoverFiles covers(folder_.in(""));
    std::vector<std::shared_ptr<const CoverFile>> kept;
    for (std::uint32_t i = 1; i < 20; ++i) kept.push_back(covers.keep(pngOf(i, i, kMostCoverBytes)));
    EXPECT_EQ(files(), CoverFiles::kMostBytes / kMostCoverBytes);
    EXPECT_EQ(kept.back(), nullptr);
    kept.clear();
    EXPECT_EQ(files(), 0U);
    EXPECT_TRUE(covers.keep(pngOf(1, 1, 100)));
}

/// TEXT-16
TEST_F(Covers, OfAKilledPlayerGoAtTheNextStart) {
    folder_.write("cover-999999999-1.jpg", "x");
    folder_.write("cover-" + std::to_string(getppid()) + "-1.jpg", "x");
    folder_.write("cover-letters-1.jpg", "x");
    folder_.write("holiday.jpg", "x");
    const CoverFiles covers(folder_.in(""));
    EXPECT_FALSE(std::filesystem::exists(folder_.in("cover-999999999-1.jpg")));
    EXPECT_EQ(files(), 3U) << "another player's, and what is none";
}

/// TEXT-16
TEST_F(Covers, AFolderThatOthersCanReadTakesNone) {
    chmod(folder_.in("").c_str(), 0755);
    EXPECT_EQ(CoverFiles(folder_.in("")).keep(pngOf(10, 10, 100)), nullptr);
    EXPECT_EQ(CoverFiles(folder_.in("none")).keep(pngOf(10, 10, 100)), nullptr);
    EXPECT_EQ(files(), 0U);
}

}  // namespace
}  // namespace corvane
