// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>
#include <string>

#include "desktop/media/movie_player.h"
#include "desktop/media/movie_players.h"
#include "desktop/movie_surface.h"
#include "platform/movie_control.h"

namespace corvane {

/// The movie control of this desktop: keeps the state that its form sees, over a player that it borrows.
class DesktopMovieControl : public MovieControl, public MovieSurface {
public:
    DesktopMovieControl(Form& form, MoviePlayers& players);
    ~DesktopMovieControl() override;

    void FileName(const std::string& path) override;
    const std::string& FileName() const override { return fileName_; }
    void MovieWindowSize(int size) override { windowSize_ = size; }
    void FullScreenMode(bool on) override;
    bool FullScreenMode() const override { return fullScreen_; }
    double Duration() const override;
    double CurrentPosition() const override;
    void CurrentPosition(double seconds) override;
    double Rate() const override { return rate_; }
    void Rate(double rate) override;
    int ImageSourceWidth() const override;
    int ImageSourceHeight() const override;
    void Run() override;
    void Pause() override;
    void Stop() override;
    int State() const override { return state_; }

    void setTarget(QSize devicePixels) override;
    void paint(QPainter& painter, const QRect& area) override;
    bool fillsScreen() const override;

private:
    bool borrowPlayer();
    void release();
    void changeState(int state);
    void post(EventLoop::Handler event);
    void opened();
    void failed(const std::string& reason);
    void ended();
    void progress();

    MoviePlayers& players_;
    std::unique_ptr<MoviePlayer> player_;
    QTimer ticks_;
    /// Events carry the number of the open that they belong to; a late one is dropped.
    std::shared_ptr<std::uint64_t> number_ = std::make_shared<std::uint64_t>(0);
    std::string fileName_;
    int windowSize_ = 0;
    bool fullScreen_ = false;
    double rate_ = 1.0;
    int state_ = kMovieStopped;
    int changes_ = 0;       ///< of the state, by calls and by the player
    bool open_ = false;     ///< the player has opened it
    bool started_ = false;  ///< Run came, or a position was set: the player's position counts
    bool ended_ = false;
    bool progressPosted_ = false;
    QSize target_;
};

}  // namespace corvane
