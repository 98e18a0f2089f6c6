// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/player_fixture.h"

namespace corvane {
namespace {

using namespace mdlDefinePublic;
using namespace mdlPublicFunction;

/// A full list none of whose files is there any more.
class MissingList : public PlayerFixture {
protected:
    void SetUp() override {
        setUpPanel();
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < kMaxFiles; ++i) paths.push_back(pathOf(i));
        setList(paths);
        machine.addSound("/m/there.wav", 1000);
    }
    static std::string pathOf(std::size_t i) { return "/gone/" + std::to_string(i) + ".wav"; }
    void answer(std::size_t times, Answer with) { machine.dialogs.answers.assign(times, with); }
    void play() {
        machine.loop.enter([this] { PlayFile(player); });
        machine.settle();
    }
    void expectBoxes(std::size_t count, const std::function<std::size_t(std::size_t)>& entryOf) {
        ASSERT_EQ(machine.dialogs.boxes.size(), count);
        for (std::size_t i = 0; i < count; ++i) {
            EXPECT_EQ(machine.dialogs.boxes[i], (FakeDialogs::Box{pathOf(entryOf(i)) + " Can't open!!", "Corvane",
                                                                  Buttons::AbortRetryIgnore, Icon::Stop}));
        }
        EXPECT_EQ(machine.dialogs.mostBoxesUp, 1);
        EXPECT_TRUE(machine.dialogs.loopWasHeld);
    }
    void expectUsable() {
        EXPECT_EQ(state(), "stopped");
        EXPECT_EQ(player.gMediaKind, mkNone);
        EXPECT_EQ(machine.media.liveControls(), 0);
        setList({"/m/there.wav"});
        player.gRepeat = false;
        play();
        EXPECT_EQ(state(), "playing");
        machine.advance(2000);
        EXPECT_EQ(state(), "stopped") << "played to its end";
    }
};

/// OPEN-51: A list of nothing but missing files can be ignored to its end, stopped at once, or with repeat goes round
///     until it is stopped
TEST_F(MissingList, IgnoringAllOfThemComesToTheEnd) {
    answer(kMaxFiles, Answer::Ignore);
    play();
    expectBoxes(kMaxFiles, [](std::size_t i) { return i; });
    EXPECT_EQ(label(kNumberLabel), "001");
    expectUsable();
}

/// OPEN-51
TEST_F(MissingList, RepeatedItGoesRoundUntilOneAborts) {
    player.gRepeat = true;
    answer(3 * kMaxFiles, Answer::Ignore);
    play();
    expectBoxes(3 * kMaxFiles + 1, [](std::size_t i) { return i % kMaxFiles; });
    expectUsable();
}

TEST_F(MissingList, RetryingAsksForTheSameFileAgain) {
    answer(kMaxFiles, Answer::Retry);
    play();
    for (std::size_t i = 0; i <= kMaxFiles; ++i) machine.advance(machine.windows.doubleClickMs);
    expectBoxes(kMaxFiles + 1, [](std::size_t) { return 0; });
    expectUsable();
}

/// OPEN-51
TEST_F(MissingList, AbortingStopsAtOnceAndEachEntryCanStillBeTried) {
    for (std::size_t i = 0; i < kMaxFiles; ++i) {
        answer(1, Answer::Abort);
        play();
        EXPECT_EQ(state(), "stopped");
        NextFile(player);
    }
    expectBoxes(kMaxFiles, [](std::size_t i) { return i; });
    expectUsable();
}

}  // namespace
}  // namespace corvane
