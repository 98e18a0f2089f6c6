// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fake/call_log.h"
#include "fake/fake_dialogs.h"
#include "fake/fake_files.h"
#include "fake/fake_loop.h"
#include "fake/fake_mci_control.h"
#include "fake/fake_media.h"
#include "fake/fake_movie_control.h"
#include "fake/fake_pictures.h"
#include "fake/fake_process.h"
#include "fake/fake_sound.h"
#include "fake/fake_texts.h"
#include "fake/fake_time.h"
#include "fake/fake_windows.h"
#include "fake/fake_work.h"
#include "fake/schedule.h"
#include "platform/ports.h"

namespace corvane {

/// A whole machine in memory: all ports, one virtual time, one log of what was asked of it. Nothing happens between a
/// test's calls; advance() lets time pass.
class FakeMachine {
public:
    CallLog log;
    Schedule schedule;
    FakeLoop loop;
    FakeTimers timers{schedule, log};
    FakeClock clock{schedule};
    FakeFiles files{log};
    FakeWindows windows{loop, log};
    FakeDialogs dialogs{loop, log};
    FakeProcess process{loop, log};
    FakeRandom random{log};
    FakePictures pictures{loop, schedule, log};
    FakeSound sound{loop, log};
    FakeMedia media{loop, windows, schedule, log};
    FakeTexts texts{loop, schedule};
    FakeWork work{loop, schedule, files};  ///< only where a test gives it to the ports

    /// The ports; the machine must outlive their users.
    Ports ports() {
        return {loop, media, pictures, sound, files, windows, timers, clock, dialogs, process, random, &texts};
    }

    /// Lets time pass: timers, devices and posted events run in the order of their time. Can be called while a box is
    /// up; what must wait then waits.
    void advance(std::int64_t milliseconds);
    /// Runs posted events; no time passes.
    void settle() { advance(0); }

    std::vector<std::string> calls() const { return log.calls(); }
    std::vector<std::string> calls(std::string_view port) const { return log.calls(port); }
    void clearCalls() { log.clear(); }

    // Media files: each is put into the tree of files as well.
    void addSound(const std::string& path, std::int32_t lengthMs);
    void addBrokenSound(const std::string& path, const std::string& reason);
    void addMovie(const std::string& path, double seconds, int width, int height);
    void addBrokenMovie(const std::string& path, const std::string& reason);
    void addPicture(const std::string& path, int width, int height, std::uint32_t colour = 0x808080);
    void addBrokenPicture(const std::string& path, const std::string& reason);
    /// A disc of tracks with these lengths in seconds: the folder holds Track01.cda and so on.
    void addDisc(const std::string& folder, const std::vector<int>& trackSeconds);
};

}  // namespace corvane
