// SPDX-License-Identifier: GPL-3.0-or-later
// Idling is inhibited while somebody watches, and let go when nobody does.
#include "unit/engine/session_fixture.h"

namespace corvane {
namespace {

struct Watched : Session, IdleInhibitor {
    Watched() {
        session.keepAwakeBy(this);
        player.gDelayTime = 1;
    }
    ~Watched() override { session.keepAwakeBy(nullptr); }
    void inhibit(bool on) override { told.push_back(on); }
    bool awake() const { return !told.empty() && told.back(); }
    std::vector<bool> told;
};

TEST_F(Watched, AMovieIsAndIsLetGoOnPauseStopAndEnd) {
    open({"/m/clip.avi"});
    EXPECT_FALSE(awake());
    play(2000);
    EXPECT_TRUE(awake());
    pause();
    EXPECT_FALSE(awake());
    play(1000);
    EXPECT_TRUE(awake());
    ask([](MediaSession& s) { return s.stop(); });
    EXPECT_FALSE(awake());
    play(2000);
    EXPECT_TRUE(awake());
    machine.advance(60000);
    EXPECT_FALSE(awake()) << "the list is over";
    for (std::size_t i = 1; i < told.size(); ++i) EXPECT_NE(told[i], told[i - 1]) << "told twice";
}

TEST_F(Watched, PicturesAreWhereTheyChangeByThemselves) {
    open({"/m/view.bmp", "/m/view.bmp"});
    player.gInterval = 0;
    play(2000);
    EXPECT_FALSE(awake()) << "one that stays until somebody goes on";
    ask([](MediaSession& s) { return s.stop(); });
    player.gInterval = 3;
    play(2000);
    EXPECT_TRUE(awake());
    told.clear();
    machine.advance(2500);
    EXPECT_TRUE(told.empty()) << "from picture to picture nothing is let go";
    pause();
    EXPECT_FALSE(awake());
}

TEST_F(Watched, SoundsAndTracksAreNot) {
    player.gInterval = 3;
    open({"/m/one.wav", "/cd/Track02.cda"});
    play(2000);
    ask([](MediaSession& s) { return s.next(); });
    machine.advance(2000);
    EXPECT_EQ(now().status, Status::Playing);
    EXPECT_TRUE(told.empty());
}

TEST_F(Watched, AMovieInAListIsLetGoWhenASoundFollows) {
    open({"/m/clip.avi", "/m/one.wav"});
    play(2000);
    EXPECT_TRUE(awake());
    ask([](MediaSession& s) { return s.next(); });
    machine.advance(1000);
    EXPECT_FALSE(awake());
}

TEST_F(Watched, IsLetGoWhenThePanelGoes) {
    open({"/m/clip.avi"});
    play(2000);
    player.gAnimationStep = 15;
    ask([](MediaSession& s) { return s.quit(); });
    EXPECT_FALSE(awake());
}

}  // namespace
}  // namespace corvane
