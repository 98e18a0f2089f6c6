// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Shuffle : public PlayerFixture {
protected:
    std::vector<std::string> paths() {
        return {player.gFilePath.begin(), player.gFilePath.begin() + player.gFileCount};
    }
    std::vector<std::string> titles() {
        return {player.gFileTitle.begin(), player.gFileTitle.begin() + player.gFileCount};
    }
};

using Texts = std::vector<std::string>;

/// SEQ-12: The random numbers are seeded from the clock
/// SEQ-14: The present entry comes first
/// SEQ-15: Each further entry is drawn from those that are left, at the whole part of their number times the random
///     number
TEST_F(Shuffle, DrawsWithoutReplacementBehindTheCurrentEntry) {
    setList({"/a.wav", "/b.wav", "/c.wav", "/d.wav", "/e.wav"});
    player.gFileIndex = 2;
    // Left after c: a b d e; 0.5 of 4 is d, 0.99 of a b e is e, 0 of a b is a.
    machine.random.numbers = {0.5, 0.99, 0.0, 0.7};
    ShuffleList(player);
    EXPECT_EQ(paths(), (Texts{"/c.wav", "/d.wav", "/e.wav", "/a.wav", "/b.wav"}));
    EXPECT_EQ(titles(), (Texts{"c", "d", "e", "a", "b"}));
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(machine.calls("random"), Texts{"random.seedFromClock"});
}

/// SEQ-14
TEST_F(Shuffle, TheLastEntryMayBeTheCurrentOne) {
    setList({"/a.wav", "/b.wav", "/c.wav"});
    player.gFileIndex = 2;
    machine.random.numbers = {0.0, 0.0};
    ShuffleList(player);
    EXPECT_EQ(paths(), (Texts{"/c.wav", "/a.wav", "/b.wav"}));
}

/// SEQ-18: A list of one goes to index 0; of two, the present entry comes first and the other follows
TEST_F(Shuffle, AListOfOneOnlyGoesToIndex0) {
    setList({"/a.wav"});
    ShuffleList(player);
    EXPECT_EQ(paths(), Texts{"/a.wav"});
    EXPECT_EQ(player.gFileIndex, 0);
}

/// SEQ-18
TEST_F(Shuffle, AListOfTwoIsTheCurrentEntryThenTheOther) {
    setList({"/a.wav", "/b.wav"});
    player.gFileIndex = 1;
    ShuffleList(player);
    EXPECT_EQ(paths(), (Texts{"/b.wav", "/a.wav"}));
}

/// SEQ-19: An empty list does nothing
TEST_F(Shuffle, AnEmptyListDoesNothing) {
    ShuffleList(player);
    EXPECT_TRUE(machine.calls("random").empty());
}

/// SEQ-13: What belongs to the order before, the custom positions, is cleared
TEST_F(Shuffle, ClearsTheCustomPositions) {
    setList({"/a.wav", "/b.wav", "/c.wav"});
    player.gStartPosition[1] = 5;
    player.gStopPosition[2] = 6;
    ShuffleList(player);
    EXPECT_EQ(player.gStartPosition[1], 0);
    EXPECT_EQ(player.gStopPosition[2], 0);
}

/// SEQ-16: What was drawn is taken out, so each entry appears exactly once
/// SEQ-17: The index is 0 afterwards, and the file that plays goes on playing
TEST_F(Shuffle, KeepsEveryEntryOfAFullListOnceAndThePlayingFilePlaying) {
    std::vector<std::string> all;
    for (int i = 0; i < mdlDefinePublic::kMaxFiles; ++i) all.push_back("/f" + std::to_string(i) + ".wav");
    for (const std::string& path : all) machine.addSound(path, 9000);
    setUpPanel();
    setList(all);
    player.gFileIndex = 100;
    PlayFile(player);
    machine.advance(1000);
    machine.clearCalls();
    ShuffleList(player);
    EXPECT_TRUE(machine.calls("mci").empty());
    EXPECT_EQ(player.gFilePath[0], "/f100.wav");
    std::vector<std::string> sorted = paths();
    EXPECT_NE(sorted, all);
    std::sort(sorted.begin(), sorted.end());
    std::sort(all.begin(), all.end());
    EXPECT_EQ(sorted, all);
    EXPECT_EQ(state(), "playing");
}

}  // namespace
}  // namespace corvane
