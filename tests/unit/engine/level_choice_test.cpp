// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/level_choice.h"

#include <gtest/gtest.h>

#include "fake/fake_mci_control.h"
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class Level : public PlayerFixture {
protected:
    Level() {
        player.conveniences.loudness = true;
        setUpPanel();
    }
    void open(const std::vector<std::string>& list) {
        for (const std::string& path : list) machine.addSound(path, 5000);
        setList(list);
    }
    SoundLevel of(std::int16_t index) {
        player.gFileIndex = index;
        return soundLevelOf(player, player.gFilePath[static_cast<std::size_t>(index)]);
    }
};

/// LOUD-07: The album's gain counts where the neighbours of the same folder follow each other by their names, else the
///     track's
TEST_F(Level, OfTheAlbumWhereItIsPlayedAsOne) {
    open({"/m/A/1 x.wav", "/m/A/2 a.wav", "/m/A/10 b.wav", "/m/B/1.wav", "/m/C/2.wav", "/m/C/1.wav"});
    EXPECT_EQ(of(0), SoundLevel::OfAlbum);
    EXPECT_EQ(of(1), SoundLevel::OfAlbum);
    EXPECT_EQ(of(2), SoundLevel::OfAlbum) << "10 comes behind 2";
    EXPECT_EQ(of(3), SoundLevel::OfTrack) << "alone of its folder";
    EXPECT_EQ(of(4), SoundLevel::OfTrack) << "not in order";
    EXPECT_EQ(of(5), SoundLevel::OfTrack);
    open({"/m/A/1.wav"});
    EXPECT_EQ(of(0), SoundLevel::OfTrack);
    open({"/m/A/1.wav", "/m/A/1.wav"});
    EXPECT_EQ(of(0), SoundLevel::OfTrack) << "one file twice";
}

/// LOUD-07
TEST_F(Level, OfTheTrackInAShuffledListUntilItIsReplaced) {
    open({"/m/A/1.wav", "/m/A/2.wav", "/m/A/3.wav"});
    ShuffleList(player);
    open({"/m/A/1.wav", "/m/A/2.wav", "/m/A/3.wav"});
    EXPECT_EQ(of(1), SoundLevel::OfTrack);
    takeFiles(player, {true, {"/m/A/1.wav", "/m/A/2.wav"}, false});
    EXPECT_EQ(of(0), SoundLevel::OfAlbum);
}

/// LOUD-07
TEST_F(Level, OfTheAlbumByTheNumbersOfTheTags) {
    player.conveniences.texts = true;
    machine.texts.files["/m/A/z.wav"] = {"", "", "Album", 1, nullptr};
    machine.texts.files["/m/A/a.wav"] = {"", "", "Album", 2, nullptr};
    open({"/m/A/z.wav", "/m/A/a.wav"});
    EXPECT_EQ(of(0), SoundLevel::OfTrack) << "not known yet";
    for (const char* path : {"/m/A/z.wav", "/m/A/a.wav"}) {
        player.texts.expect(path);
        machine.settle();
    }
    EXPECT_EQ(of(0), SoundLevel::OfAlbum);
}

/// LOUD-08: The level goes to the device before a sound is opened, and with the hint of the next one; without the
///     convenience all is as it was recorded
TEST_F(Level, GoesToTheDevice) {
    open({"/m/A/1.wav", "/m/A/2.wav"});
    PlayFile(player);
    EXPECT_EQ(machine.media.mci()->level(), SoundLevel::OfAlbum);
    EXPECT_EQ(machine.media.expectedLevel, SoundLevel::OfAlbum);
    open({"/m/A/2.wav", "/m/A/1.wav"});
    CloseFile(player, false);
    PlayFile(player);
    EXPECT_EQ(machine.media.mci()->level(), SoundLevel::OfTrack);
    CloseFile(player, false);
    player.conveniences = kAllConveniences;
    player.conveniences.loudness = false;
    PlayFile(player);
    EXPECT_EQ(machine.media.mci()->level(), SoundLevel::AsRecorded);
    EXPECT_EQ(machine.media.expectedLevel, SoundLevel::AsRecorded);
}

}  // namespace
}  // namespace corvane
