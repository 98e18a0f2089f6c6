// SPDX-License-Identifier: GPL-3.0-or-later
// The keys for what movies carry: subtitles, sounds, chapters, a frame.
#include "players/movie_chapters.h"
#include "unit/players/movie_window.h"

namespace corvane {
namespace {

using namespace mdlPublicFunction;

class MovieCarried : public MovieWindow {
protected:
    MovieCarried() {
        player.conveniences.hands = true;
        machine.media.movies["/m/clip.avi"].chapters = {{0, "One"}, {10, ""}, {20, "Three"}};
    }
    void key(Form& form, int code, int shift = kCtrlMask, bool isRepeat = false) {
        machine.loop.enter([&] { form.KeyDown.raise({code, shift, isRepeat}); });
        machine.settle();
    }
    int calls(const std::string& call) { return machine.log.count("movie." + call); }
};

/// MOVIE-40: Ctrl+T, Ctrl+A and Ctrl+I over the movie, the panel and the whole screen are the movie's; each once a
/// press
TEST_F(MovieCarried, TheKeysReachTheMovieFromItsWindowAndFromThePanel) {
    playStarted();
    for (Form* const form : {static_cast<Form*>(movieWindow()), static_cast<Form*>(&panel())}) {
        machine.clearCalls();
        key(*form, 'T');
        key(*form, 'T', kCtrlMask, true);
        key(*form, 'A');
        EXPECT_EQ(calls("NextSubtitles"), 1);
        EXPECT_EQ(calls("NextSoundTrack"), 1);
    }
}

/// MOVIE-40
TEST_F(MovieCarried, OtherKeysAndOtherFilesAreLeftAlone) {
    playStarted();
    key(*movieWindow(), 'T', 0);
    key(*movieWindow(), 'T', kCtrlMask | kShiftMask);
    key(*movieWindow(), 'B');
    EXPECT_EQ(calls("NextSubtitles"), 0);
    player.conveniences.hands = false;
    key(*movieWindow(), 'T');
    EXPECT_EQ(calls("NextSubtitles"), 0) << "a convenience";
    player.conveniences.hands = true;
    NextFile(player);
    machine.settle();
    EXPECT_EQ(player.gFileIndex, 1);
    key(panel(), 'T');
    key(panel(), kKeyPageDown);
    EXPECT_EQ(calls("NextSubtitles"), 0) << "a sound has none";
}

/// MOVIE-38
TEST_F(MovieCarried, AFrameIsSavedUnderTitleAndTime) {
    playStarted();
    machine.advance(1500);
    key(*movieWindow(), 'I');
    EXPECT_EQ(calls("SaveFrame " + player.gFileTitle[0] + " 00.00.01.500"), 1);
}

/// MOVIE-41: Ctrl+PageDown goes to the next chapter, Ctrl+PageUp to the beginning of the present one or, right behind
/// it, to the one before; the panel follows, also while paused
TEST_F(MovieCarried, ChaptersAreSteppedThrough) {
    playStarted();
    key(*movieWindow(), kKeyPageDown);
    EXPECT_EQ(movie().CurrentPosition(), 10.0);
    EXPECT_EQ(calls("ShowText Chapter 2 of 3"), 1);
    PauseFile(player);
    machine.settle();
    key(panel(), kKeyPageDown);
    EXPECT_EQ(movie().CurrentPosition(), 20.0);
    EXPECT_EQ(movie().State(), kMoviePaused);
    EXPECT_EQ(calls("ShowText Chapter 3 of 3: Three"), 1);
    EXPECT_EQ(panel().lblMainPanel[kTimeLabel].Caption.get(), "20");
    key(*movieWindow(), kKeyPageDown);
    EXPECT_EQ(movie().CurrentPosition(), 20.0);
    EXPECT_EQ(calls("ShowText No further chapter"), 1);
    movie().CurrentPosition(25);
    key(*movieWindow(), kKeyPageUp);
    EXPECT_EQ(movie().CurrentPosition(), 20.0);
    key(*movieWindow(), kKeyPageUp);
    EXPECT_EQ(movie().CurrentPosition(), 10.0);
    key(*movieWindow(), kKeyPageUp);
    key(*movieWindow(), kKeyPageUp);
    EXPECT_EQ(movie().CurrentPosition(), 0.0);
    EXPECT_EQ(calls("ShowText Chapter 1 of 3: One"), 2);
}

/// MOVIE-41
TEST_F(MovieCarried, WithoutChaptersNothingMoves) {
    playStarted("/m/film.mpg");
    machine.advance(5000);
    const double before = movie().CurrentPosition();
    key(*movieWindow(), kKeyPageUp);
    key(*movieWindow(), kKeyPageDown);
    EXPECT_EQ(movie().CurrentPosition(), before);
    EXPECT_EQ(calls("ShowText No chapters"), 2);
}

/// MOVIE-41
TEST(MovieChapters, ThoseThatBeginLateOrTogetherAreAllReached) {
    const std::vector<MovieChapter> late{{5, ""}, {5, ""}, {9, ""}};
    EXPECT_EQ(chapterBeside(late, 0, false), 0U);
    EXPECT_EQ(chapterBeside(late, 0, true), std::nullopt);
    EXPECT_EQ(chapterBeside(late, 5, false), 2U);
    EXPECT_EQ(chapterBeside(late, 8.9, true), 1U);
    EXPECT_EQ(chapterBeside(late, 9, true), 1U);
    EXPECT_EQ(chapterBeside({}, 9, true), std::nullopt);
}

}  // namespace
}  // namespace corvane
