// SPDX-License-Identifier: GPL-3.0-or-later
// Movies. Their unit is the second.
#include "players/movie.h"

#include <cmath>

#include "engine/hands.h"
#include "engine/mdlPublicFunction.h"
#include "engine/panel_texts.h"
#include "players/media.h"
#include "players/movie_chapters.h"
#include "types/frame_name.h"
#include "types/numbers.h"

namespace corvane {

using mdlDefinePublic::kCustomOff;
using mdlDefinePublic::kCustomPlay;
using mdlDefinePublic::kCustomRepeat;
using mdlPublicFunction::isWholeScreen;
using mdlPublicFunction::nameStepButtons;
using mdlPublicFunction::NextFile;
using mdlPublicFunction::PauseFile;
using mdlPublicFunction::prepareNext;
using mdlPublicFunction::showPlaying;
using mdlPublicFunction::windowZoom;

namespace {

constexpr double kQuickPlaySeconds = 300;
constexpr double kSecondUs = 1'000'000;

class Movie : public OpenMedium {
public:
    using OpenMedium::OpenMedium;

    FormId window() const override { return FormId::MovieWindow; }
    std::string timeTip() const override { return "Frame"; }
    bool isWatched() const override { return true; }

    void makeReady(const std::string& path) const override { player_.ports.media.expectMovie(path); }
    void open() override;
    void close(bool keepImage) override;
    void resume() override;
    void pause() override;
    void step() override;
    void back() override;
    void progress() override;

    std::int64_t lengthUs() const override;
    std::int64_t positionUs() const override;
    bool isProgressing() const override;
    void seekTo(std::int64_t us) override;
    void seekToSlide(std::int32_t x) override;
    bool isHandingOver() const override;
    std::optional<std::int32_t> position() const override;

    bool fillsScreen() const override { return isWholeScreen(player_, player_.gMovieZoom); }
    void takeWholeScreen() override;
    void leaveWholeScreen() override;
    bool takeWholeScreenBack() override;
    void obey(MovieKey key) override;
    bool hold(bool back, bool shift) override;
    void endHold(bool steppedFast) override;

private:
    void OpenMovie();
    MovieWindowControls* movieWindow() const { return player_.forms.find<MovieWindowControls>(); }
    MovieWindowControls* opened() const;    ///< null until its file has been opened
    MovieWindowControls* seekable() const;  ///< null behind its end
    void stepChapter(MovieControl& movie, bool back);
    void goTo(MovieControl& movie, double seconds) const;
    void runAfterSteps(MovieWindowControls& window) const;
};

MovieWindowControls* Movie::opened() const {
    auto* const window = movieWindow();
    return window != nullptr && window->opened ? window : nullptr;
}

MovieWindowControls* Movie::seekable() const {
    auto* const window = movieWindow();
    return window != nullptr && !window->isHandingOver() ? window : nullptr;
}

void Movie::open() {
    OpenMovie();
    player_.gLength = 1;  // until the control knows it
    prepareNext(player_);
}

void Movie::OpenMovie() {
    if (auto* open = movieWindow(); open != nullptr && open->isShowing()) player_.forms.unload<MovieWindowControls>();
    auto& window = player_.forms.load<MovieWindowControls>();
    MovieControl& movie = *window.amvMovie;
    window.opened = false;
    window.started = false;
    window.doubleClickedAt = -1;
    window.WindowState = WindowState::Normal;
    window.tmrMovie.Enabled = false;
    movie.FileName("1");  // releases whatever the control held
    movie.MovieWindowSize(windowZoom(player_.gMovieZoom));
    if (fillsScreen()) movie.FullScreenMode(true);
    movie.Rate(1.0);
    movie.FileName(path());
    window.Caption = player_.gFileTitle[static_cast<std::size_t>(player_.gFileIndex)];
    showTime("0");
}

void Movie::close(bool /*keepImage*/) {
    if (auto* window = movieWindow()) window->amvMovie->Stop();
    player_.forms.unload<MovieWindowControls>();
}

void Movie::resume() {
    auto* const window = seekable();
    if (window == nullptr) return;  // paused after its end: the next file comes all the same
    if (window->started) {
        window->doubleClickedAt = -1;
        if (!fillsScreen()) {
            window->WindowState = WindowState::Normal;
            window->Show();
        }
        window->amvMovie->Run();
    } else if (window->opened && !window->tmrMovie.Enabled) {
        startMovie(player_, *window);  // it was paused during the delay, which is over
    }
}

void Movie::pause() {
    if (auto* shown = panel()) nameStepButtons(*shown, true);
    auto* const window = movieWindow();
    if (window == nullptr) return;
    window->doubleClickedAt = -1;
    window->amvMovie->Pause();
    showTime(numberText(window->amvMovie->CurrentPosition()));
}

void Movie::goTo(MovieControl& movie, double seconds) const {
    movie.CurrentPosition(seconds);
    showTime(numberText(seconds));
}

void Movie::step() {
    auto* const window = seekable();
    if (window == nullptr) return;
    MovieControl& movie = *window->amvMovie;
    // At full-screen zoom the movie counts as showing, also while a held button has it out of full screen.
    const bool shows = window->isShowing() || fillsScreen();
    const double seconds = std::nearbyint(movie.CurrentPosition());
    if (shows && seconds < movie.Duration()) goTo(movie, seconds + 1);
    showSlide(movie.CurrentPosition(), player_.gLength);
}

void Movie::back() {
    player_.gBackPending = false;
    auto* const window = seekable();
    if (window == nullptr) return;
    MovieControl& movie = *window->amvMovie;
    const double seconds = std::nearbyint(movie.CurrentPosition());
    if (seconds > 0) goTo(movie, seconds - 1);
    showSlide(movie.CurrentPosition(), player_.gLength);
}

void Movie::progress() {
    auto* const window = movieWindow();
    if (window == nullptr) return;
    MovieControl& movie = *window->amvMovie;
    const double seconds = movie.CurrentPosition();
    player_.gLength = static_cast<std::int32_t>(std::nearbyint(movie.Duration()));  // a guess may have become better
    showTime(numberText(seconds));
    showSlide(seconds, player_.gLength);
    if (player_.gQuickPlay && seconds > kQuickPlaySeconds) {
        window->Hide();
        window->tmrMovie.Enabled = true;
        return;
    }
    const std::int32_t stop = listedStop();
    if (stop == 0 || seconds <= stop) return;
    if (player_.gCustomMode == kCustomRepeat) {
        movie.CurrentPosition(listedStart());
    } else if (player_.gCustomMode == kCustomPlay) {
        NextFile(player_);
    }
}

std::int64_t Movie::lengthUs() const {
    const auto* const window = opened();
    return window != nullptr ? std::llround(window->amvMovie->Duration() * kSecondUs) : 0;
}

std::int64_t Movie::positionUs() const {
    const auto* const window = opened();
    return window != nullptr ? std::llround(window->amvMovie->CurrentPosition() * kSecondUs) : 0;
}

bool Movie::isProgressing() const {
    const auto* const window = opened();
    return window != nullptr && window->amvMovie->State() == kMovieRunning;
}

void Movie::seekTo(std::int64_t us) {
    auto* const window = opened();
    if (window == nullptr || window->isHandingOver()) return;
    MovieControl& movie = *window->amvMovie;
    movie.CurrentPosition(static_cast<double>(us) / kSecondUs);
    showTime(numberText(movie.CurrentPosition()));
    showSlide(movie.CurrentPosition(), player_.gLength);
}

void Movie::seekToSlide(std::int32_t x) {
    auto* const window = seekable();
    if (window == nullptr || !(window->amvMovie->Duration() > 0)) return;
    MovieControl& movie = *window->amvMovie;
    placeSlide(x);
    movie.CurrentPosition(movie.Duration() * x / player_.gSlideWidth);
    showTime(numberText(movie.CurrentPosition()));
}

bool Movie::isHandingOver() const {
    const auto* const window = movieWindow();
    return window != nullptr && window->isHandingOver();
}

std::optional<std::int32_t> Movie::position() const {
    const auto* const window = movieWindow();
    if (window == nullptr) return std::nullopt;
    return static_cast<std::int32_t>(std::nearbyint(window->amvMovie->CurrentPosition()));
}

/// Its window goes while the movie fills the screen, as that of one whose zoom does so.
void Movie::takeWholeScreen() {
    auto* const window = movieWindow();
    if (window == nullptr) return;
    window->amvMovie->FullScreenMode(fillsScreen());
    if (!window->started || window->isHandingOver()) return;
    if (fillsScreen()) {
        window->Hide();
    } else {
        window->WindowState = WindowState::Normal;
        window->Show();
    }
}

void Movie::leaveWholeScreen() {
    auto* const window = movieWindow();
    if (fillsScreen() && window != nullptr) window->amvMovie->FullScreenMode(false);
}

bool Movie::takeWholeScreenBack() {
    auto* const window = movieWindow();
    if (!fillsScreen() || window == nullptr) return false;
    window->amvMovie->FullScreenMode(true);
    return true;
}

void Movie::obey(MovieKey key) {
    auto* const window = opened();
    if (window == nullptr) return;
    MovieControl& movie = *window->amvMovie;
    switch (key) {
        case MovieKey::Subtitles:
            movie.NextSubtitles();
            break;
        case MovieKey::Sound:
            movie.NextSoundTrack();
            break;
        case MovieKey::ChapterBack:
        case MovieKey::ChapterForth:
            if (!window->isHandingOver()) stepChapter(movie, key == MovieKey::ChapterBack);
            break;
        case MovieKey::Frame:
            movie.SaveFrame(frameName(player_.gFileTitle[static_cast<std::size_t>(player_.gFileIndex)], positionUs()));
            break;
    }
}

void Movie::stepChapter(MovieControl& movie, bool back) {
    const std::vector<MovieChapter> chapters = movie.Chapters();
    const auto next = chapterBeside(chapters, movie.CurrentPosition(), back);
    if (next) seekTo(std::llround(chapters[*next].seconds * kSecondUs));
    movie.ShowText(chapterText(chapters, next));
}

/// Held next alone plays at double speed; with Shift it steps and stays paused; previous steps fast.
bool Movie::hold(bool back, bool shift) {
    auto* const window = seekable();
    auto* const shown = panel();
    if (shown == nullptr || window == nullptr || !window->started)
        return true;  // nothing to seek before the delay is over
    MovieControl& movie = *window->amvMovie;
    if (!back && !shift) {
        shown->tmrPrevNext.Enabled = false;
        movie.Rate(2.0);
        if (!shown->isPaused()) movie.Run();
        return true;
    }
    if (shift) {
        PauseFile(player_);
    } else {
        movie.Pause();
        stepFast();
    }
    const double seconds = std::nearbyint(movie.CurrentPosition());
    if (back && seconds > 0) {
        goTo(movie, seconds - 1);
    } else if (!back && seconds < movie.Duration()) {
        goTo(movie, seconds + 1);
    }
    showSlide(movie.CurrentPosition(), player_.gLength);
    return true;
}

void Movie::endHold(bool steppedFast) {
    auto* const window = movieWindow();
    auto* const shown = panel();
    if (window == nullptr || shown == nullptr) return;
    if (steppedFast) runAfterSteps(*window);
    MovieControl& movie = *window->amvMovie;
    if (movie.Rate() == 1.0) return;
    movie.Pause();
    movie.Rate(1.0);
    if (!shown->isPaused() && movie.State() != kMovieStopped) movie.Run();
}

/// After fast stepping a movie runs in any case, and the panel then says so.
void Movie::runAfterSteps(MovieWindowControls& window) const {
    auto* const shown = panel();
    if (shown == nullptr || !window.started || window.isHandingOver()) return;
    const bool paused = shown->isPaused();
    window.amvMovie->Run();
    if (paused) showPlaying(player_, *shown);
}

}  // namespace

void startMovie(Player& player, MovieWindowControls& window) {
    window.started = true;
    const std::int32_t start = player.gStartPosition[static_cast<std::size_t>(player.gFileIndex)];
    if (start != 0 && player.gCustomMode != kCustomOff) window.amvMovie->CurrentPosition(start);
    if (!isWholeScreen(player, player.gMovieZoom)) window.Show();
    window.amvMovie->Run();
}

std::shared_ptr<OpenMedium> makeMovie(Player& player, MediaType type) {
    return std::make_shared<Movie>(player, std::move(type));
}

}  // namespace corvane
