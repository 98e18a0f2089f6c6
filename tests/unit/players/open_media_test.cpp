// SPDX-License-Identifier: GPL-3.0-or-later
// Each medium asked directly. What the procedures and the panel do with them is proved with those.
#include <ostream>

#include "unit/panel/panel_hands.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

constexpr std::int64_t kSecondUs = 1'000'000;

struct Row {
    const char* path;
    FormId window;
    const char* timeTip;
    bool staysUp;
    bool isWatched;
    bool takesCustomPositions;
    std::int64_t toleranceUs;
    std::int64_t lengthUs;
    std::int32_t atThree;  ///< the third second in its own unit; 0: it has none
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.path; }

const Row kRows[] = {
    {"/m/view.bmp", FormId::ImageWindow, "Time", true, true, false, 1'500'000, 20 * kSecondUs, 0},
    {"/m/clip.avi", FormId::MovieWindow, "Frame", false, true, true, 400'000, 40 * kSecondUs, 3},
    {"/m/song.wav", FormId::MciWindow, "Time", false, false, true, 400'000, 60 * kSecondUs, 3000},
    {"/cd/Track01.cda", FormId::MciWindow, "Time", false, false, true, 400'000, 100 * kSecondUs, packed(1, 0, 3)},
};

class EachMedium : public PanelHands, public ::testing::WithParamInterface<Row> {
protected:
    OpenMedium& medium() { return *player.media.current(); }
    /// Playing for so long.
    void play(int milliseconds) {
        bring(GetParam().path, "playing");
        machine.advance(milliseconds);
    }
};

TEST_P(EachMedium, SaysWhatItIs) {
    play(0);
    EXPECT_EQ(medium().window(), GetParam().window);
    EXPECT_EQ(medium().timeTip(), GetParam().timeTip);
    EXPECT_EQ(medium().staysUp(), GetParam().staysUp);
    EXPECT_EQ(medium().isWatched(), GetParam().isWatched);
    EXPECT_EQ(medium().takesCustomPositions(), GetParam().takesCustomPositions);
    EXPECT_EQ(medium().toleranceUs(), GetParam().toleranceUs);
}

TEST_P(EachMedium, TellsItsTimeInMicrosecondsAndInItsOwnUnit) {
    play(3000);
    EXPECT_EQ(medium().lengthUs(), GetParam().lengthUs);
    EXPECT_EQ(medium().positionUs(), 3 * kSecondUs);
    EXPECT_TRUE(medium().isProgressing());
    EXPECT_EQ(medium().position().value_or(0), GetParam().atThree);
    EXPECT_EQ(medium().position().has_value(), medium().takesCustomPositions());
}

TEST_P(EachMedium, GoesToAPositionAndOnFromThere) {
    play(1000);
    act([this] { medium().seekTo(10 * kSecondUs); });
    EXPECT_EQ(medium().positionUs(), 10 * kSecondUs);
    EXPECT_EQ(label(kTimeLabel), GetParam().window == FormId::MovieWindow ? "10" : "00:10");
    EXPECT_FLOAT_EQ(slider(), 3000.0F * 10 * kSecondUs / static_cast<float>(GetParam().lengthUs));
    machine.advance(2000);
    EXPECT_EQ(medium().positionUs(), 12 * kSecondUs);
}

TEST_P(EachMedium, GoesToTheSlidersShareOfItsLength) {
    play(1000);
    act([this] { medium().seekToSlide(1500); });
    EXPECT_EQ(medium().positionUs(), GetParam().lengthUs / 2);
    EXPECT_EQ(slider(), 1500);
}

TEST_P(EachMedium, HoldsWhilePausedAndGoesOn) {
    play(3000);
    act([this] { medium().pause(); });
    machine.advance(2000);
    EXPECT_EQ(medium().positionUs(), 3 * kSecondUs);
    act([this] { medium().resume(); });
    machine.advance(2000);
    EXPECT_EQ(medium().positionUs(), 5 * kSecondUs);
}

TEST_P(EachMedium, ClosesItsWindow) {
    play(1000);
    EXPECT_NE(player.forms.find(GetParam().window), nullptr);
    act([this] { medium().close(false); });
    EXPECT_EQ(player.forms.find(GetParam().window), nullptr);
}

/// Without its window it does nothing, and tells nothing.
TEST_P(EachMedium, StandsThatItsWindowHasGone) {
    play(1000);
    act([this] { player.forms.unload(GetParam().window); });
    machine.clearCalls();
    const std::string time = label(kTimeLabel);
    act([this] {
        medium().pause();
        medium().resume();
        medium().close(true);
        medium().endHold(true);
        medium().leaveWholeScreen();
        EXPECT_FALSE(medium().takeWholeScreenBack());
        EXPECT_FALSE(medium().isHandingOver());
        EXPECT_FALSE(medium().isWaitedFor());
        EXPECT_EQ(medium().position(), std::nullopt);
    });
    if (GetParam().window != FormId::ImageWindow) {  // whose clock is the player's
        act([this] {
            medium().step();
            medium().back();
            medium().hold(true, false);
            medium().seekToSlide(1500);
            medium().seekTo(kSecondUs);
            medium().progress();
            EXPECT_EQ(medium().positionUs(), 0);
        });
        EXPECT_EQ(label(kTimeLabel), time);
    }
    EXPECT_FALSE(medium().isProgressing());
    EXPECT_TRUE(mediaCalls().empty());
}

INSTANTIATE_TEST_SUITE_P(Media, EachMedium, ::testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.path).substr(row.index == 3 ? 4 : 3, 4); });

class AMedium : public PanelHands {
protected:
    std::shared_ptr<OpenMedium> made(const std::string& path) const { return player.media.make(path); }
};

TEST_F(AMedium, OfADiscAloneCannotBeOpenedByANameWithoutANumber) {
    EXPECT_FALSE(made(kTrack)->canOpen("/cd/Track.cda"));
    EXPECT_TRUE(made(kTrack)->canOpen("/cd/Track07.cda"));
    EXPECT_TRUE(made(kTrack)->canOpen("/cd/Track00.cda")) << "a number, though of no track: that fails later";
    for (const char* path : {kSound, kMovie, kPicture}) EXPECT_TRUE(made(path)->canOpen("/m/none"));
}

TEST_F(AMedium, OfADiscIsClosedByItsOwnOpening) {
    machine.files.add("/cd/Track00.cda", "");
    setUp("/cd/Track00.cda");
    machine.dialogs.whileUp = [&] { EXPECT_FALSE(player.media.isOpen()); };
    PlayFile(player);
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_FALSE(player.media.isOpen());
    EXPECT_EQ(mciWindow(), nullptr);
}

TEST_F(AMedium, OfAPictureMayBeClosedWhileTheBoxOfItsOpeningIsUp) {
    player.gImageZoom = 1;
    machine.pictures.paintError = kOutOfMemoryForPicture;
    setUp(kPicture);
    machine.dialogs.whileUp = [this] { CloseFile(player, false); };
    act([this] { PlayFile(player); });
    ASSERT_EQ(machine.dialogs.boxes.size(), 1U);
    EXPECT_FALSE(player.media.isOpen());
    EXPECT_EQ(state(), "stopped");
}

/// What plays in the same window takes it over; its window is closed for nothing else.
TEST_F(AMedium, OfADiscTakesTheWindowOfTheSoundItFollows) {
    bring(kSound, "playing");
    auto* const window = mciWindow();
    setList({kTrack});
    act([this] { PlayFile(player); });
    EXPECT_EQ(mciWindow(), window);
    EXPECT_EQ(machine.log.count("mci.Command Close"), 1) << "by the opening itself";
    EXPECT_EQ(machine.log.count("windows.detach frmMCIWindow"), 0);
}

TEST_F(AMedium, ComparesCustomPositionsAsThePanelShowsThem) {
    EXPECT_TRUE(made(kSound)->isBefore(4999, 5000));
    EXPECT_FALSE(made(kSound)->isBefore(5000, 5000));
    EXPECT_TRUE(made(kTrack)->isBefore(packed(1, 0, 4, 74), packed(1, 0, 5)));
    EXPECT_FALSE(made(kTrack)->isBefore(packed(1, 0, 5), packed(1, 0, 5, 74))) << "the same second";
    EXPECT_TRUE(made(kTrack)->isBefore(packed(1, 0, 59), packed(1, 1, 0)));
}

TEST_F(AMedium, MakesReadyWhatItWillNeed) {
    setUpPanel();
    for (const char* path : {kSound, kTrack, kMovie}) made(path)->makeReady(path);
    EXPECT_EQ(machine.media.expectedAs, (Calls{"sound", "disc", "movie"}));
    EXPECT_EQ(machine.media.expected, (Calls{kSound, kTrack, kMovie}));
    made(kPicture)->makeReady(kPicture);
    EXPECT_TRUE(mediaCalls().empty()) << "no picture is open";
    bring(kPicture, "playing");
    made(kPicture)->makeReady(kPicture);
    EXPECT_EQ(mediaCalls(), (Calls{std::string("pictures.decodeAhead ") + kPicture}));
}

TEST_F(AMedium, StepsASecondWhilePaused) {
    for (const char* path : {kSound, kTrack, kMovie}) {
        SCOPED_TRACE(path);
        bring(path, "playing");
        machine.advance(3000);
        act([this] { PauseFile(player); });
        const auto medium = player.media.current();
        act([&] { medium->step(); });
        EXPECT_EQ(medium->positionUs(), 4 * kSecondUs);
        player.gBackPending = true;
        act([&] { medium->back(); });
        EXPECT_EQ(medium->positionUs(), 3 * kSecondUs);
        EXPECT_FALSE(player.gBackPending) << "it has stepped: no second press is waited for";
        act([this] { CloseFile(player, false); });
    }
}

TEST_F(AMedium, OfAPictureStepsToTheNextFile) {
    bring(kPicture, "paused");
    const std::weak_ptr<OpenMedium> picture = player.media.current();
    act([&] { player.media.current()->step(); });
    EXPECT_EQ(player.gFileIndex, 1);
    EXPECT_EQ(state(), "playing");
    EXPECT_TRUE(picture.expired());
}

TEST_F(AMedium, CannotBeHeldWhenItIsAPicture) {
    for (const char* path : {kSound, kTrack, kMovie, kPicture}) {
        bring(path, "playing");
        machine.advance(3000);
        EXPECT_EQ(player.media.current()->hold(true, false), path != kPicture) << path;
        act([this] { CloseFile(player, false); });
    }
}

TEST_F(AMedium, IsWaitedForWhileTheDriveTurnsUp) {
    bring(kTrack, "playing");
    EXPECT_FALSE(player.media.current()->isWaitedFor());
    machine.media.mci()->opening(true);
    EXPECT_TRUE(player.media.current()->isWaitedFor());
    bring(kSound, "playing");
    machine.media.mci()->opening(true);
    EXPECT_FALSE(player.media.current()->isWaitedFor()) << "a file is there at once";
}

}  // namespace
}  // namespace corvane
