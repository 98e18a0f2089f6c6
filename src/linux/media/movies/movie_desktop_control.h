// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <memory>
#include <string>

#include "linux/media/movies/movie_player.h"
#include "linux/media/movies/movie_players.h"
#include "linux/windowing/movie_surface.h"
#include "shell/media/movie_state_control.h"

namespace corvane {

/// The movie control of this desktop, over a player that it borrows.
class DesktopMovieControl : public MovieStateControl, public MovieSurface {
public:
    DesktopMovieControl(Form& form, MoviePlayers& players);
    ~DesktopMovieControl() override;

    void setTarget(QSize devicePixels) override;
    void paint(QPainter& painter, const QRect& area) override;
    bool fillsScreen() const override { return wantsToFillScreen(); }

protected:
    bool openMovie(const std::string& path) override;
    void closeMovie() override;
    void playMovie() override { player_->play(); }
    void pauseMovie() override { player_->pause(); }
    void seekMovie(double seconds) override { player_->seek(seconds); }
    void setMovieRate(double rate) override;
    double playedPosition() const override { return player_->position(); }
    double playedDuration() const override { return player_->duration(); }
    int pictureWidth() const override { return player_->picture().width(); }
    int pictureHeight() const override { return player_->picture().height(); }
    void tick(bool on) override;
    void screenFillMayHaveChanged() override { fillsScreenChanged.raise(); }

private:
    bool borrowPlayer(std::string& reason);
    void look();

    MoviePlayers& players_;
    std::unique_ptr<MoviePlayer> player_;
    QTimer ticks_;
    QTimer again_;  ///< opens the movie with another player, when no call of the one before is under way
    QSize target_;
};

}  // namespace corvane
