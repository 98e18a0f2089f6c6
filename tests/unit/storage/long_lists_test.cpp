// SPDX-License-Identifier: GPL-3.0-or-later
#include "storage/play_lists.h"
#include "storage/profile_file.h"
#include "types/numbers.h"
#include "unit/startup/startup_fixture.h"

namespace corvane {
namespace {

constexpr const char* kFile = "/app/FILE00.INI";

class LongLists : public StartupFixture {
protected:
    LongLists() { player.conveniences.longLists = true; }

    static PlayList listOf(int count, const std::string& path = "/m/") {
        PlayList list{"long", {}};
        for (int i = 0; i < count; ++i) list.entries.push_back({std::to_string(i) + ".mid", path + std::to_string(i)});
        return list;
    }
    PlayList read() { return readPlayList(player, kFile); }
    PlayList readPlainly() {
        player.conveniences.longLists = false;
        PlayList list = read();
        player.conveniences.longLists = true;
        return list;
    }
    bool writePlainly(const PlayList& list) {
        player.conveniences.longLists = false;
        const bool done = writePlayList(player, kFile, list);
        player.conveniences.longLists = true;
        return done;
    }
    static std::vector<std::string> paths(const PlayList& list) {
        std::vector<std::string> all;
        for (const ListEntry& each : list.entries) all.push_back(each.path);
        return all;
    }
};

/// LIST-43: With long lists a list holds up to 9,999 entries, LIST256 and on behind the 256 of the stated way
TEST_F(LongLists, Keep9999Entries) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(10'050)));
    const PlayList got = read();
    ASSERT_EQ(got.entries.size(), 9999U);
    EXPECT_EQ(got.entries[256].path, "/m/256");
    EXPECT_EQ(got.entries[9998].name, "9998.mid");
    const std::string text = machine.files.bytes(kFile);
    EXPECT_NE(text.find("\r\nLIST256=256.mid|/m/256\r\n"), std::string::npos);
    EXPECT_NE(text.find("\r\nLIST9998=9998.mid|/m/9998\r\n"), std::string::npos);
    EXPECT_EQ(text.find("LIST9999"), std::string::npos);
    loadListAtStart(player);
    EXPECT_EQ(player.gFileCount, 9999);
    EXPECT_EQ(player.gFilePath[9998], "/m/9998");
    EXPECT_EQ(player.gFileTitle[9998], "9998");
}

/// LIST-43
TEST_F(LongLists, AShortListIsWrittenAsInTheStatedWay) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(3)));
    const std::string text = machine.files.bytes(kFile);
    machine.files.remove(kFile);
    ASSERT_TRUE(writePlainly(listOf(3)));
    EXPECT_EQ(text, machine.files.bytes(kFile));
}

/// LIST-44: A start without long lists reads the first 256 entries and keeps the others when it saves
TEST_F(LongLists, APlainSaveKeepsTheRest) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(300)));
    PlayList first = readPlainly();
    ASSERT_EQ(first.entries.size(), 256U);
    first.entries[0].path = "/m/changed";
    ASSERT_TRUE(writePlainly(first));
    auto expected = paths(listOf(300));
    expected[0] = "/m/changed";
    EXPECT_EQ(paths(read()), expected);
}

/// LIST-45: Where such a start makes the list shorter, the others follow what it left
TEST_F(LongLists, WhatAPlainSaveShortensIsFollowedByTheRest) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(300)));
    ASSERT_TRUE(writePlainly(listOf(2)));
    auto expected = paths(listOf(300));
    expected.erase(expected.begin() + 2, expected.begin() + 256);
    EXPECT_EQ(paths(read()), expected);
    EXPECT_EQ(readPlainly().entries.size(), 2U);
}

/// LIST-46: A shorter list saved with long lists over a longer one leaves nothing of that
TEST_F(LongLists, ALongSaveLeavesNothingBehindItsEnd) {
    for (const int count : {300, 256, 255, 3, 0}) {
        ASSERT_TRUE(writePlayList(player, kFile, listOf(400)));
        ASSERT_TRUE(writePlayList(player, kFile, listOf(count)));
        EXPECT_EQ(read().entries.size(), static_cast<std::size_t>(count));
        EXPECT_EQ(machine.files.bytes(kFile).find("LIST399=399"), std::string::npos) << count;
    }
}

/// LIST-46
TEST_F(LongLists, AListGrownAgainHasNothingOfTheOldOne) {
    for (const int count : {400, 260, 300})
        ASSERT_TRUE(writePlayList(player, kFile, listOf(count, "/of" + std::to_string(count) + "/")));
    EXPECT_EQ(paths(read()), paths(listOf(300, "/of300/")));
}

/// LIST-47: A save that would make a file too long to be read writes nothing
TEST_F(LongLists, NothingIsWrittenThatCouldNotBeRead) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(3)));
    EXPECT_FALSE(writePlayList(player, kFile, listOf(9999, "/" + std::string(1000, 'x') + "/")));
    EXPECT_EQ(read().entries.size(), 3U);
    ASSERT_TRUE(writePlayList(player, kFile, listOf(9999, "/" + std::string(480, 'x') + "/")))
        << "what reads back whole";
    EXPECT_EQ(read().entries.size(), 9999U);
}

/// A list is one read, and one read and one replacement, however long it is.
TEST_F(LongLists, AreReadAndWrittenAsAWhole) {
    ASSERT_TRUE(writePlayList(player, kFile, listOf(9999)));
    EXPECT_EQ(machine.log.allCalls("files").size(), 4U) << testing::PrintToString(machine.log.allCalls("files"));
    machine.log.clear();
    EXPECT_EQ(read().entries.size(), 9999U);
    EXPECT_EQ(machine.log.allCalls("files").size(), 1U);
}

}  // namespace
}  // namespace corvane
