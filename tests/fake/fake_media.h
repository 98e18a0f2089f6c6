// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "fake/call_log.h"
#include "fake/schedule.h"
#include "platform/ports.h"

namespace corvane {

class FakeMciControl;
class FakeMovieControl;

/// A sound file or MIDI sequence as the devices find it.
struct FakeSoundFile {
    std::int32_t lengthMs = 0;
    std::string failure;  ///< not empty: it cannot be played, for this reason
};

/// An audio disc: the length of each track in frames of 1/75 second.
struct FakeDisc {
    std::vector<std::int32_t> trackFrames;
};

struct FakeMovieFile {
    double seconds = 0;
    int width = 0;  ///< pixels; 0 by 0: no picture
    int height = 0;
    std::string failure;  ///< not empty: it cannot be played, for this reason
    int openMs = 0;       ///< time from the file name to OpenComplete
    std::vector<MovieChapter> chapters{};
};

/// Media controls over devices that keep the virtual time.
class FakeMedia : public Media {
public:
    FakeMedia(EventLoop& theLoop, Windows& theWindows, Schedule& theSchedule, CallLog& theLog)
        : loop(theLoop), windows(theWindows), schedule(theSchedule), log(theLog) {}

    bool plays(const std::string& extension) override { return decodes.count(extension) != 0; }
    std::unique_ptr<MciControl> makeMciControl() override;
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override;
    void expectSound(const std::string& path, SoundLevel level) override {
        expect("sound", path);
        expectedLevel = level;
    }
    void expectDisc(const std::string& path) override { expect("disc", path); }
    void expectMovie(const std::string& path) override { expect("movie", path); }
    void expectNothing() override { ++expectedNothing; }

    std::set<std::string> decodes;                      ///< types of today that are there
    std::vector<std::string> expected;                  ///< files that were hinted at, in order
    SoundLevel expectedLevel = SoundLevel::AsRecorded;  ///< of the sound that was hinted at last
    int expectedNothing = 0;                            ///< times that what was hinted at was taken back
    std::vector<std::string> expectedAs;                ///< as what they were: "sound", "disc" or "movie"
    std::map<std::string, FakeSoundFile> sounds;        ///< by path
    std::map<std::string, FakeMovieFile> movies;        ///< by path
    std::map<std::string, FakeDisc> discs;              ///< by the folder that stands for the disc; "" the drive's

    /// The disc of a place: the folder itself, the folder that holds the file, or the drive's; null: none.
    const FakeDisc* discAt(const std::string& place) const;

    /// The control made last that still lives, or null.
    FakeMciControl* mci() const { return mciControls_.empty() ? nullptr : mciControls_.back(); }
    FakeMovieControl* movie() const { return movieControls_.empty() ? nullptr : movieControls_.back(); }
    int liveControls() const { return static_cast<int>(mciControls_.size() + movieControls_.size()); }

    EventLoop& loop;
    Windows& windows;
    Schedule& schedule;
    CallLog& log;

private:
    friend class FakeMciControl;
    friend class FakeMovieControl;
    void expect(const char* what, const std::string& path) {
        expectedAs.emplace_back(what);
        expected.push_back(path);
    }

    std::vector<FakeMciControl*> mciControls_;
    std::vector<FakeMovieControl*> movieControls_;
};

}  // namespace corvane
