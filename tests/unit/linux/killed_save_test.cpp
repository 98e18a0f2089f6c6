// SPDX-License-Identifier: GPL-3.0-or-later
// The program is killed again and again while it saves: the stored list is always the old one or the new one, whole.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>
#include <set>

#include "fake/fake_machine.h"
#include "files/posix_files.h"
#include "storage/play_lists.h"
#include "unit/linux/fork_alone.h"
#include "unit/linux/offscreen.h"

namespace corvane {
namespace {

constexpr int kKills = 300;
constexpr int kLongestSaveMicroseconds = 6000;

/// A player whose files are real ones.
struct SavingPlayer {
    FakeMachine machine;
    PosixFiles files;
    Ports ports{machine.loop,   machine.media, machine.pictures, machine.sound,   files,         machine.windows,
                machine.timers, machine.clock, machine.dialogs,  machine.process, machine.random};
    Player player{ports};
};

PlayList listOf(const std::string& name) {
    PlayList list;
    list.listName = name;
    for (int i = 0; i < 256; ++i)
        list.entries.push_back({name + std::to_string(i) + ".mid", "/music/" + name + ".mid"});
    return list;
}

/// Saves the two lists in turn until it is killed; a byte through the pipe says that it has begun.
[[noreturn]] void saveForEver(const std::string& file, int begun) {
    SavingPlayer saving;
    const PlayList lists[] = {listOf("evening"), listOf("morning")};
    bool told = false;
    for (std::size_t turn = 0;; turn ^= 1U) {
        writePlayList(saving.player, file, lists[turn]);
        if (!told && write(begun, "x", 1) == 1) told = true;
    }
}

void killAtARandomMoment(const std::string& file, std::mt19937& random) {
    int pipes[2] = {-1, -1};
    ASSERT_EQ(pipe(pipes), 0);
    const pid_t child = test::forkAlone();
    ASSERT_GE(child, 0);
    if (child == 0) saveForEver(file, pipes[1]);
    char begun = 0;
    EXPECT_EQ(read(pipes[0], &begun, 1), 1);
    const timespec moment{0, static_cast<long>(random() % kLongestSaveMicroseconds) * 1000};
    ppoll(nullptr, 0, &moment, nullptr);  // the moment is the test: any will do
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(pipes[0]);
    close(pipes[1]);
}

/// FAULT-09: Killed at any moment of a save, the stored list is entirely the old or the new one
/// LIST-32
TEST(KilledSave, TheStoredListIsEntirelyOldOrEntirelyNew) {
    const test::TemporaryFolder folder;
    const std::string file = folder.in("FILE37.INI");
    SavingPlayer saving;
    std::set<std::string> whole;
    for (const char* name : {"evening", "morning"}) {
        ASSERT_TRUE(writePlayList(saving.player, file, listOf(name)));
        whole.insert(folder.bytes("FILE37.INI"));
    }
    std::mt19937 random(1);
    std::set<std::string> seen;
    for (int i = 0; i < kKills; ++i) {
        killAtARandomMoment(file, random);
        const std::string stored = folder.bytes("FILE37.INI");
        ASSERT_TRUE(whole.contains(stored)) << "a mixture after kill " << i;
        seen.insert(stored);
    }
    EXPECT_EQ(seen.size(), 2U) << "the kills came at different moments";
}

/// START-61: Leftovers of saves are removed at the start, but none that another player writes and nothing that is no
///     file
/// LIST-33: What a killed save left beside the list goes at the next start
/// FAULT-09
TEST(KilledSave, WhatWasLeftBesideTheListGoesAtTheNextStart) {
    const test::TemporaryFolder folder;
    folder.write(".corvane-save-a1B2c3", "half a list");
    folder.write(".corvane-backup", "somebody's own");
    folder.write(".corvane-save-longer-name", "somebody's own");
    folder.write("FILE00.INI", "[FILELIST]");
    removeUnfinishedFiles(folder.path());
    EXPECT_FALSE(std::filesystem::exists(folder.in(".corvane-save-a1B2c3")));
    EXPECT_TRUE(std::filesystem::exists(folder.in(".corvane-backup")));
    EXPECT_TRUE(std::filesystem::exists(folder.in(".corvane-save-longer-name")));
    EXPECT_TRUE(std::filesystem::exists(folder.in("FILE00.INI")));
}

/// Two players on one folder, as when only one of them has a run-time folder: none takes the other's save for a
/// leftover.
/// START-61
TEST(KilledSave, WhatAnotherOneIsWritingIsNoLeftover) {
    const test::TemporaryFolder folder;
    const std::string file = folder.in("FILE00.INI");
    const std::string text(200'000, 'x');
    std::atomic<bool> done = false;
    std::thread other([&] {
        while (!done) removeUnfinishedFiles(folder.path());
    });
    int failed = 0;
    for (int i = 0; i < 200; ++i) failed += PosixFiles().replace(file, text) ? 0 : 1;
    done = true;
    other.join();
    EXPECT_EQ(failed, 0);
    EXPECT_EQ(folder.bytes("FILE00.INI"), text);
}

/// START-61
TEST(KilledSave, OnlyFilesAreTakenForLeftovers) {
    const test::TemporaryFolder folder;
    folder.write("precious", "whole");
    std::filesystem::create_symlink(folder.in("precious"), folder.in(".corvane-save-a1B2c3"));
    std::filesystem::create_directory(folder.in(".corvane-save-d4E5f6"));
    ASSERT_EQ(mkfifo(folder.in(".corvane-save-g7H8i9").c_str(), 0600), 0);
    removeUnfinishedFiles(folder.path());
    EXPECT_EQ(folder.bytes("precious"), "whole");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), std::filesystem::directory_iterator()),
              4);
}

}  // namespace
}  // namespace corvane
