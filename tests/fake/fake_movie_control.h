// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "fake/fake_media.h"
#include "platform/generation.h"

namespace corvane {

/// A movie that plays on the virtual time.
class FakeMovieControl : public MovieControl {
public:
    FakeMovieControl(FakeMedia& media, Form& form);
    ~FakeMovieControl() override;

    void FileName(const std::string& path) override;
    const std::string& FileName() const override { return fileName_; }
    void MovieWindowSize(int size) override;
    void FullScreenMode(bool on) override;
    bool FullScreenMode() const override { return fullScreen_; }
    double Duration() const override { return opened_ ? opened_->seconds : 0; }
    double CurrentPosition() const override;
    void CurrentPosition(double seconds) override;
    double Rate() const override { return rate_; }
    void Rate(double rate) override;
    int ImageSourceWidth() const override { return opened_ ? opened_->width : 0; }
    int ImageSourceHeight() const override { return opened_ ? opened_->height : 0; }
    void NextSubtitles() override { tell("NextSubtitles"); }
    void NextSoundTrack() override { tell("NextSoundTrack"); }
    std::vector<MovieChapter> Chapters() const override {
        return opened_ ? opened_->chapters : std::vector<MovieChapter>();
    }
    void SaveFrame(const std::string& name) override { tell("SaveFrame " + name); }
    void ShowText(const std::string& text) override { tell("ShowText " + text); }
    void Run() override;
    void Pause() override;
    void Stop() override;
    int State() const override { return state_; }

    bool isOpen() const { return opened_.has_value(); }
    /// The length was guessed; it is known now.
    void correctDuration(double seconds) { opened_->seconds = seconds; }
    /// A Failed event as of a file that turns out to be damaged while it plays.
    void fail(const std::string& reason);

private:
    void finishOpening(const FakeMovieFile& file);
    void size();
    void tell(const std::string& call) { media_.log.did("movie." + call); }
    void change(int state);
    double positionNow() const;
    void settle();  ///< the position is now, nothing planned any more
    void plan();    ///< plans the end and the progress of a running movie
    void planProgress();
    template <class Raise>
    void post(Raise raise);  ///< dropped when another file is opened or the state is changed by a call in between

    FakeMedia& media_;
    Generation present_;  ///< of the present file
    std::string fileName_;
    std::optional<FakeMovieFile> opened_;
    int windowSize_ = 0;
    bool fullScreen_ = false;
    double rate_ = 1.0;
    int state_ = kMovieStopped;
    int changes_ = 0;
    bool progressWaits_ = false;
    double position_ = 0;         ///< seconds, at startedAt_ while running
    std::int64_t startedAt_ = 0;  ///< virtual time
    Schedule::Id openId_ = 0;
    Schedule::Id endId_ = 0;
    Schedule::Id progressId_ = 0;
};

}  // namespace corvane
