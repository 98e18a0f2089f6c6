// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>
#include <optional>
#include <string>

#include "controls/movie_state_control.h"
#include "linux/media/movies/desktop_movies.h"
#include "linux/media/movies/frame_file.h"
#include "linux/media/movies/movie_subtitles.h"
#include "linux/media/movies/movie_text.h"
#include "linux/media/movies/seen_frames.h"
#include "linux/qt_post.h"
#include "linux/windowing/movie_surface.h"

namespace corvane {

/// The movie control of this desktop, over a player that it borrows.
class DesktopMovieControl : public MovieStateControl, public MovieSurface {
public:
    DesktopMovieControl(Form& form, DesktopMovies& movies);
    ~DesktopMovieControl() override;

    void setTarget(QSize devicePixels) override;
    void paint(QPainter& painter, const QRect& area) override;
    bool isDue() const override { return player_ && frames().isDue(); }
    QRect covered(const QRect& area, double ratio) const override;
    void showIn(QWidget& window, const QRect& area) override;
    void leave() override;
    bool fillsScreen() const override { return wantsToFillScreen(); }

protected:
    bool openMovie(const std::string& path) override;
    void closeMovie() override;
    void playMovie() override;
    void pauseMovie() override;
    void seekMovie(double seconds) override;
    void setMovieRate(double rate) override;
    double playedPosition() const override { return moved_ ? moved_->position : player_->position(); }
    double playedDuration() const override { return moved_ ? moved_->duration : player_->duration(); }
    int pictureWidth() const override { return (moved_ ? moved_->picture : player_->picture()).width; }
    int pictureHeight() const override { return (moved_ ? moved_->picture : player_->picture()).height; }
    void nextSubtitles() override { player_->chooseNext(MovieTrack::Kind::Subtitles); }
    void nextSoundTrack() override { player_->chooseNext(MovieTrack::Kind::Sound); }
    std::vector<MovieChapter> chapters() const override { return player_->chapters(); }
    void saveFrame(const std::string& name) override;
    void showText(const std::string& text) override { text_.show(text); }
    void tick(bool on) override;
    void screenFillMayHaveChanged() override { fillsScreenChanged.raise(); }

private:
    /// A movie that goes on with another player, which is opening it.
    struct Moved {
        double position;
        double duration;
        PictureSize picture;
        bool plays;
    };

    SeenFrames& frames() const { return dynamic_cast<SeenFrames&>(player_->frames()); }
    void goOn();
    void playerOpened();
    void playerFailed(const std::string& reason);
    void framesLost();
    void savePicture(QImage picture, const std::string& name);
    bool borrowPlayer(std::string& reason);
    void look();
    void tellSaved(const FrameFile& file);

    DesktopMovies& movies_;
    MoviePlayers& players_;
    std::unique_ptr<MoviePlayer> player_;
    QTimer ticks_;
    QTimer again_;  ///< opens the movie with another player, when no call of the one before is under way
    std::optional<Moved> moved_;
    bool isPlayed_ = false;  ///< as the player was told
    QSize target_;
    MovieText text_{[this] { frameReady.raise(); }};
    MovieSubtitles subtitles_;
    QtPost post_;
    bool saving_ = false;
};

}  // namespace corvane
