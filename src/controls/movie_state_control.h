// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/event_loop.h"
#include "platform/movie_control.h"
#include "platform/ports.h"

namespace corvane {

/// What the movie control of every desktop is, whatever plays the movie: its state, what its form is told and when, and
/// which late news are dropped. A desktop derives from it and says how a movie is opened, played and placed.
class MovieStateControl : public MovieControl {
public:
    /// loop and windows (for the screen's size) outlive it.
    MovieStateControl(Form& form, EventLoop& loop, Windows& windows)
        : MovieControl(&form), loop_(loop), windows_(windows) {}

    void FileName(const std::string& path) override;
    const std::string& FileName() const override { return fileName_; }
    void MovieWindowSize(int size) override { windowSize_ = size; }
    void FullScreenMode(bool on) override;
    bool FullScreenMode() const override { return fullScreen_; }
    double Duration() const override { return open_ ? playedDuration() : 0; }
    double CurrentPosition() const override;
    void CurrentPosition(double seconds) override;
    double Rate() const override { return rate_; }
    void Rate(double rate) override;
    int ImageSourceWidth() const override { return open_ ? pictureWidth() : 0; }
    int ImageSourceHeight() const override { return open_ ? pictureHeight() : 0; }
    void NextSubtitles() override {
        if (open_) nextSubtitles();
    }
    void NextSoundTrack() override {
        if (open_) nextSoundTrack();
    }
    std::vector<MovieChapter> Chapters() const override { return open_ ? chapters() : std::vector<MovieChapter>(); }
    void SaveFrame(const std::string& name) override {
        if (open_) saveFrame(name);
    }
    void ShowText(const std::string& text) override {
        if (open_) showText(text);
    }
    void Run() override;
    void Pause() override;
    void Stop() override;
    int State() const override { return state_; }

protected:
    static constexpr int kProgressMs = 250;

    // The player under it. Nothing is called but open, close and setRate unless a movie is open.
    /// Opens the file at the set rate without starting it; opened() or failed() follows, later. False: no player can be
    /// had.
    virtual bool openMovie(const std::string& path) = 0;
    virtual void closeMovie() = 0;  ///< lets go of the movie, also while it is being opened; nothing is told of it
    virtual void playMovie() = 0;   ///< at the end: ends again
    virtual void pauseMovie() = 0;
    virtual void stopMovie() { pauseMovie(); }
    virtual void seekMovie(double seconds) = 0;
    virtual void setMovieRate(double rate) = 0;
    virtual double playedPosition() const = 0;  ///< seconds; a seek's target at once, the duration at the end
    virtual double playedDuration() const = 0;
    virtual int pictureWidth() const = 0;  ///< pixels; 0 without a picture
    virtual int pictureHeight() const = 0;
    // What a desktop has of what movies carry, as in MovieControl.
    virtual void nextSubtitles() {}
    virtual void nextSoundTrack() {}
    virtual std::vector<MovieChapter> chapters() const { return {}; }
    virtual void saveFrame(const std::string& /*name*/) {}
    virtual void showText(const std::string& /*text*/) {}
    virtual void tick(bool on) = 0;  ///< from now on progress() every kProgressMs, or no more
    virtual void screenFillMayHaveChanged() = 0;

    // What the player tells, on the user-interface thread, never from inside a call above.
    void opened();
    void failed(const std::string& reason);
    void ended();
    void progress();

    double wantedRate() const { return rate_; }
    bool wantsToFillScreen() const { return fullScreen_ && state_ != kMovieStopped; }
    void release();  ///< lets go of the movie; a derived destructor calls it first

private:
    void changeState(int state);
    void post(EventLoop::Handler event);

    EventLoop& loop_;
    Windows& windows_;
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
};

}  // namespace corvane
