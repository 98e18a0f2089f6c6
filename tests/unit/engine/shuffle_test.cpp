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

TEST_F(Shuffle, TheLastEntryMayBeTheCurrentOne) {
    setList({"/a.wav", "/b.wav", "/c.wav"});
    player.gFileIndex = 2;
    machine.random.numbers = {0.0, 0.0};
    ShuffleList(player);
    EXPECT_EQ(paths(), (Texts{"/c.wav", "/a.wav", "/b.wav"}));
}

TEST_F(Shuffle, AListOfOneOnlyGoesToIndex0) {
    setList({"/a.wav"});
    ShuffleList(player);
    EXPECT_EQ(paths(), Texts{"/a.wav"});
    EXPECT_EQ(player.gFileIndex, 0);
}

TEST_F(Shuffle, AListOfTwoIsTheCurrentEntryThenTheOther) {
    setList({"/a.wav", "/b.wav"});
    player.gFileIndex = 1;
    ShuffleList(player);
    EXPECT_EQ(paths(), (Texts{"/b.wav", "/a.wav"}));
}

TEST_F(Shuffle, AnEmptyListDoesNothing) {
    ShuffleList(player);
    EXPECT_TRUE(machine.calls("random").empty());
}

TEST_F(Shuffle, ClearsTheCustomPositions) {
    setList({"/a.wav", "/b.wav", "/c.wav"});
    player.gStartPosition[1] = 5;
    player.gStopPosition[2] = 6;
    ShuffleList(player);
    EXPECT_EQ(player.gStartPosition[1], 0);
    EXPECT_EQ(player.gStopPosition[2], 0);
}

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
