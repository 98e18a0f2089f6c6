// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

using Expected = std::vector<std::string>;

/// The file that comes next is hinted at while one plays.
class NextFileIsExpected : public PlayerFixture {
protected:
    void SetUp() override {
        for (const char* path : {"/m/a.wav", "/m/b.mid"}) machine.addSound(path, 5000);
        machine.addMovie("/m/c.avi", 5, 320, 240);
        machine.addPicture("/m/d.bmp", 20, 20);
        machine.addPicture("/m/e.bmp", 20, 20);
        setUpPanel();
    }
};

/// OPEN-53: The file that comes next is made ready: behind a picture a picture is decoded, any other is told to the
///     media
TEST_F(NextFileIsExpected, WhenAFileOpens) {
    setList({"/m/a.wav", "/m/b.mid", "/m/c.avi"});
    PlayFile(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/b.mid"}));
    PauseFile(player);
    PlayFile(player);
    EXPECT_EQ(machine.media.expected.size(), 1U) << "going on opens nothing";
    NextFile(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/b.mid", "/m/c.avi"}));
    NextFile(player);
    EXPECT_EQ(machine.media.expected.size(), 2U) << "nothing comes after the last one";
}

/// OPEN-56: What plays movies is made ready while a list waits that begins with one
TEST_F(NextFileIsExpected, AMovieAsSoonAsAListBeginsWithIt) {
    setList({"/m/a.wav", "/m/b.avi"});
    showList(player);
    EXPECT_TRUE(machine.media.expected.empty()) << "an idle panel stays small";
    setList({"/m/c.avi", "/m/a.wav", "/m/d.mpg"});
    showList(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/c.avi"}));
    setList({});
    showList(player);
    EXPECT_EQ(machine.media.expected.size(), 1U);
}

/// FIND-13
TEST_F(NextFileIsExpected, AnEntryThatIsNotThereIsNotPlayed) {
    setList({"/m/a.wav", "/m/b.mid"});
    PlayFile(player);
    for (const int none : {-1, 2, 9999}) {
        playEntry(player, none);
        EXPECT_EQ(player.openedPath, "/m/a.wav") << none;
        EXPECT_EQ(player.gFileIndex, 0) << none;
    }
    playEntry(player, 1);
    EXPECT_EQ(player.openedPath, "/m/b.mid");
}

/// OPEN-53
TEST_F(NextFileIsExpected, FromTheListsStartWhenItRepeats) {
    setList({"/m/a.wav", "/m/b.mid"});
    player.gFileIndex = 1;
    player.gRepeat = true;
    PlayFile(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/a.wav"}));
}

/// OPEN-53
TEST_F(NextFileIsExpected, ButAPictureIsDecodedAheadOnlyBehindAPicture) {
    setList({"/m/a.wav", "/m/d.bmp", "/m/e.bmp", "/m/a.wav"});
    PlayFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /m/d.bmp"), 0);
    NextFile(player);
    EXPECT_EQ(machine.log.count("pictures.decodeAhead /m/e.bmp"), 1);
    EXPECT_TRUE(machine.media.expected.empty());
    NextFile(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/a.wav"}));
}

/// OPEN-58: What was made ready is let go of when the list, or what follows its last entry, becomes another
TEST_F(NextFileIsExpected, AnewWhenTheListChanges) {
    setList({"/m/a.wav", "/m/b.mid"});
    PlayFile(player);
    EXPECT_EQ(machine.media.expected, (Expected{"/m/b.mid"}));
    EXPECT_EQ(machine.media.expectedNothing, 0);
    NextFile(player);
    EXPECT_EQ(machine.media.expectedNothing, 1) << "nothing comes after the last one";
    toggleRepeat(player);
    EXPECT_EQ(machine.media.expected.back(), "/m/a.wav");
    toggleRepeat(player);
    EXPECT_EQ(machine.media.expectedNothing, 2);

    setList({"/m/a.wav", "/m/d.bmp"});
    player.gFileIndex = 0;
    CloseFile(player, false);
    PlayFile(player);
    EXPECT_EQ(machine.media.expectedNothing, 3) << "a picture is none of the media's";
    setList({"/m/a.wav", "/m/b.mid", "/m/c.avi"});
    const std::size_t before = machine.media.expected.size();
    ShuffleList(player);
    EXPECT_EQ(machine.media.expected.size(), before + 1);
    EXPECT_EQ(machine.media.expected.back(), player.gFilePath[1]);
    CloseFile(player, false);
    ShuffleList(player);
    EXPECT_EQ(machine.media.expected.size(), before + 1) << "nothing plays";
}

/// OPEN-58
TEST_F(NextFileIsExpected, NothingBehindAListThatIsReplacedByOneEntry) {
    setList({"/m/a.wav", "/m/b.mid"});
    PlayFile(player);
    takeFiles(player, {true, {"/m/a.wav"}, false, false});
    EXPECT_EQ(machine.media.expectedNothing, 1);
}

TEST_F(NextFileIsExpected, NotWhenTheFileIsMissing) {
    machine.dialogs.answers.push_back(Answer::Abort);
    setList({"/m/none.wav", "/m/b.mid"});
    PlayFile(player);
    EXPECT_TRUE(machine.media.expected.empty());
}

}  // namespace
}  // namespace corvane
