// SPDX-License-Identifier: GPL-3.0-or-later
// Custom start and stop positions and modes, set from the menu and in force while playing.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

class MenuCustom : public PanelHands {
protected:
    void choose(std::size_t item) {
        machine.dialogs.choose(player.forms.find<MenuWindowControls>()->PlayCustom.at(item));
        machine.settle();
    }
    void setStart() { choose(0); }
    void setStop() { choose(1); }
    bool complained() {
        const bool did = !machine.dialogs.boxes.empty();
        if (did) {
            EXPECT_EQ(machine.dialogs.boxes.size(), 1U);
            EXPECT_EQ(machine.dialogs.boxes[0],
                      (FakeDialogs::Box{"Stop Position too Small!", "Corvane", Buttons::Ok, Icon::Stop}));
        }
        machine.dialogs.boxes.clear();
        return did;
    }
};

// --- Reading the position --------------------------------------------------------------------------------------------

struct Place {
    const char* path;
    double at;
    std::int32_t stored;
};

/// MENU-18: Start Position keeps the position of the present file: a movie's in whole seconds, a sound's and a track's
///     as the device says it
/// MENU-20: Stop Position keeps the position in the same way
TEST_F(MenuCustom, ThePositionIsStoredInTheKindsUnit) {
    const std::vector<Place> rows = {{kMovie, 12, 12},   {kMovie, 12.4, 12},
                                     {kMovie, 12.6, 13}, {kMovie, 12.5, 12},
                                     {kMovie, 13.5, 14}, {kSound, 12345, 12345},
                                     {kSound, 1, 1},     {kTrack, packed(1, 1, 12, 34) * 1.0, packed(1, 1, 12, 34)}};
    for (const Place& row : rows) {
        SCOPED_TRACE(std::string(row.path) + " " + std::to_string(row.at));
        bring(row.path, "paused");
        placeAt(row.at);
        setStart();
        EXPECT_EQ(player.gStartPosition[0], row.stored);
        EXPECT_EQ(player.gStopPosition[0], 0);
        setList({row.path, kSound});
        setStop();
        EXPECT_EQ(player.gStopPosition[0], row.stored);
        EXPECT_EQ(player.gStartPosition[0], 0);
        EXPECT_FALSE(complained());
        EXPECT_TRUE(mediaCalls().empty()) << "the file is left as it is";
        act([this] { CloseFile(player, false); });
    }
}

/// MENU-18
TEST_F(MenuCustom, APositionBelongsToTheCurrentFileAlone) {
    bring(kSound, "playing");
    act([this] { NextFile(player); });
    act([this] { PauseFile(player); });
    placeAt(5000);
    setStart();
    placeAt(9000);
    setStop();
    EXPECT_EQ(player.gStartPosition[1], 5000);
    EXPECT_EQ(player.gStopPosition[1], 9000);
    for (const std::size_t other : {0U, 2U}) {
        EXPECT_EQ(player.gStartPosition[other], 0);
        EXPECT_EQ(player.gStopPosition[other], 0);
    }
}

/// MENU-19: For a picture or with nothing open it keeps nothing, even when it is invoked
TEST_F(MenuCustom, APictureOrNothingHasNoPosition) {
    for (const char* before : {"stopped", "playing", "paused"}) {
        SCOPED_TRACE(before);
        bring(kPicture, before);
        machine.advance(3000);
        player.gStartPosition[0] = 7;
        player.gStopPosition[0] = 9;
        setStart();
        setStop();
        EXPECT_EQ(player.gStartPosition[0], 7);
        EXPECT_EQ(player.gStopPosition[0], 9);
        EXPECT_FALSE(complained());
        act([this] { CloseFile(player, false); });
    }
}

// --- Stop position too small -----------------------------------------------------------------------------------------

struct Pair {
    const char* path;
    double start, stop;
    bool accepted;
};

/// MENU-21: A stop that is not behind the start gives the stop box "Stop Position too Small!" and becomes 0; the start
///     is kept
/// MENU-22: At the same place as the start it is refused
/// MENU-23: Movies and sounds compare as numbers, tracks as texts
TEST_F(MenuCustom, TheStopPositionMustLieBehindTheStart) {
    const auto at = [](int minutes, int seconds, int frames) { return packed(1, minutes, seconds, frames) * 1.0; };
    const std::vector<Pair> rows = {
        {kMovie, 10, 11, true},
        {kMovie, 10, 10, false},
        {kMovie, 10, 10.4, false},  // the same whole second
        {kMovie, 10, 9, false},
        {kSound, 10000, 10001, true},
        {kSound, 10000, 10000, false},
        {kSound, 10000, 9000, false},
        {kTrack, at(0, 10, 0), at(0, 11, 0), true},
        {kTrack, at(0, 10, 0), at(0, 10, 0), false},
        {kTrack, at(0, 10, 0), at(0, 10, 74), false},  // as texts: the same second
        {kTrack, at(0, 10, 74), at(0, 11, 0), true},
        {kTrack, at(0, 59, 0), at(1, 0, 0), true},  // as texts: a minute later, though the packed number is less
        {kTrack, at(1, 0, 0), at(0, 59, 0), false},
    };
    for (const Pair& row : rows) {
        SCOPED_TRACE(std::string(row.path) + " " + std::to_string(row.start) + " " + std::to_string(row.stop));
        bring(row.path, "paused");
        placeAt(row.start);
        setStart();
        const std::int32_t start = player.gStartPosition[0];
        placeAt(row.stop);
        setStop();
        EXPECT_EQ(complained(), !row.accepted);
        EXPECT_EQ(player.gStopPosition[0] != 0, row.accepted);
        EXPECT_EQ(player.gStartPosition[0], start) << "the start is kept";
        EXPECT_EQ(state(), "paused");
        act([this] { CloseFile(player, false); });
    }
}

/// MENU-21
TEST_F(MenuCustom, ARefusedStopClearsTheOneBefore) {
    bring(kSound, "paused");
    placeAt(5000);
    setStart();
    placeAt(9000);
    setStop();
    EXPECT_EQ(player.gStopPosition[0], 9000);
    placeAt(4000);
    setStop();
    EXPECT_TRUE(complained());
    EXPECT_EQ(player.gStopPosition[0], 0);
}

/// MENU-21
TEST_F(MenuCustom, AtTheVeryStartNoStopCanBeSet) {
    for (const char* path : {kMovie, kSound, kTrack}) {
        SCOPED_TRACE(path);
        setUp(path);
        act([this] {
            PlayFile(player);
            PauseFile(player);
        });
        setStop();
        EXPECT_TRUE(complained());
        EXPECT_EQ(player.gStopPosition[0], 0);
        act([this] { CloseFile(player, false); });
    }
}

// --- Modes -----------------------------------------------------------------------------------------------------------

/// MENU-24: Custom ON makes mode 0 to 1, modes 1 and 2 to 0
/// MENU-25: Custom Repeat makes modes 0 and 1 to 2, mode 2 to 1: twice from 0 ends in 1
TEST_F(MenuCustom, TheModesFollowTheirTwoItems) {
    struct Change {
        std::int16_t before;
        std::size_t item;
        std::int16_t after;
    };
    setUp(kSound);
    for (const Change& row : {Change{kCustomOff, 3, kCustomPlay}, Change{kCustomPlay, 3, kCustomOff},
                              Change{kCustomRepeat, 3, kCustomOff}, Change{kCustomOff, 4, kCustomRepeat},
                              Change{kCustomPlay, 4, kCustomRepeat}, Change{kCustomRepeat, 4, kCustomPlay}}) {
        player.gCustomMode = row.before;
        choose(row.item);
        EXPECT_EQ(player.gCustomMode, row.after) << row.before << " by item " << row.item;
    }
}

/// MENU-25
TEST_F(MenuCustom, CustomRepeatTwiceLeavesCustomPlayOn) {
    setUp(kSound);
    choose(4);
    choose(4);
    EXPECT_EQ(player.gCustomMode, kCustomPlay);
}

// --- In force --------------------------------------------------------------------------------------------------------

struct Piece {
    const char* path;
    double start, stop;  ///< five and ten seconds, in the kind's unit
    int delayMs;         ///< until it starts
};

void PrintTo(const Piece& piece, std::ostream* out) { *out << piece.path; }

class CustomPiece : public MenuCustom, public ::testing::WithParamInterface<Piece> {
protected:
    /// Sets both positions as a user does, and stops.
    void setPiece() {
        bring(GetParam().path, "paused");
        placeAt(GetParam().start);
        setStart();
        placeAt(GetParam().stop);
        setStop();
        ASSERT_FALSE(complained());
        act([this] { CloseFile(player, false); });
    }
    void playIt() {
        act([this] { PlayFile(player); });
        machine.advance(GetParam().delayMs);
    }
    /// Seconds played, as the panel shows them.
    int shownSeconds() {
        const std::string& text = label(kTimeLabel);
        const std::size_t colon = text.find(':');
        return static_cast<int>(std::stod(colon == std::string::npos ? text : text.substr(colon + 1)));
    }
};

/// MENU-26: A piece set this way is played, repeated and left, in each kind
TEST_P(CustomPiece, CustomOnPlaysThePieceAndGoesOnToTheNextFile) {
    setPiece();
    choose(3);
    playIt();
    machine.advance(1000);
    EXPECT_EQ(shownSeconds(), 6) << "from its start position";
    machine.advance(3900);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(shownSeconds(), 9);
    machine.advance(1200);
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
    EXPECT_LT(shownSeconds(), 2) << "the next file from its own start";
}

/// MENU-26
TEST_P(CustomPiece, CustomRepeatPlaysThePieceAgainAndAgain) {
    setPiece();
    choose(4);
    playIt();
    machine.advance(1000);
    EXPECT_EQ(shownSeconds(), 6);
    for (int i = 0; i < 120; ++i) {
        machine.advance(500);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_GE(shownSeconds(), 5);
        EXPECT_LE(shownSeconds(), 11);
    }
    choose(4);  // repeat off: custom play is left
    machine.advance(7000);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MENU-32: A piece switched on while it plays ends there, and a picture is not played in pieces
TEST_P(CustomPiece, SwitchedOnWhilePlayingItEndsThePieceThere) {
    setPiece();
    playIt();
    machine.advance(8000);
    EXPECT_EQ(shownSeconds(), 8) << "off: played from the beginning";
    choose(3);
    machine.advance(1900);
    EXPECT_EQ(player.gFileIndex, 0);
    machine.advance(1200);
    EXPECT_EQ(player.gFileIndex, 1);
}

/// MENU-26
TEST_P(CustomPiece, OffThePositionsAreNotUsed) {
    setPiece();
    choose(3);
    choose(3);
    playIt();
    machine.advance(1000);
    EXPECT_EQ(shownSeconds(), 1);
    machine.advance(14000);
    EXPECT_EQ(player.gFileIndex, 0);
    EXPECT_EQ(shownSeconds(), 15);
}

INSTANTIATE_TEST_SUITE_P(Kinds, CustomPiece,
                         ::testing::Values(Piece{"/m/clip.avi", 5, 10, 500}, Piece{"/m/song.wav", 5000, 10000, 0},
                                           Piece{"/cd/Track01.cda", packed(1, 0, 5) * 1.0, packed(1, 0, 10) * 1.0, 0}));

/// MENU-32
TEST_F(MenuCustom, APictureIsNotPlayedInPieces) {
    for (const std::int16_t mode : {kCustomPlay, kCustomRepeat}) {
        bring(kPicture, "stopped");
        player.gStartPosition[0] = 5;
        player.gStopPosition[0] = 10;
        player.gCustomMode = mode;
        act([this] { PlayFile(player); });
        machine.advance(19000);
        EXPECT_EQ(player.gFileIndex, 0);
        EXPECT_EQ(label(kTimeLabel), "00:19");
        machine.advance(1000);
        EXPECT_EQ(player.gFileIndex, 1);
        act([this] { CloseFile(player, false); });
    }
}

}  // namespace
}  // namespace corvane
