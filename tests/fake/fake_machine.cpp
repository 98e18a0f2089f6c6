// SPDX-License-Identifier: GPL-3.0-or-later
#include "fake/fake_machine.h"

namespace corvane {

void FakeMachine::advance(std::int64_t milliseconds) {
    const std::int64_t end = schedule.now() + milliseconds;
    loop.drain();
    while (!process.ending()) {
        const auto next = schedule.next();
        if (!next || *next > end) break;
        schedule.runNext();
        loop.drain();
    }
    schedule.passTo(end);
}

void FakeMachine::addSound(const std::string& path, std::int32_t lengthMs) {
    files.add(path);
    media.sounds[path] = {lengthMs, ""};
}

void FakeMachine::addBrokenSound(const std::string& path, const std::string& reason) {
    files.add(path);
    media.sounds[path] = {0, reason};
}

void FakeMachine::addMovie(const std::string& path, double seconds, int width, int height) {
    files.add(path);
    media.movies[path] = {seconds, width, height, "", 0};
}

void FakeMachine::addBrokenMovie(const std::string& path, const std::string& reason) {
    files.add(path);
    media.movies[path] = {0, 0, 0, reason, 0};
}

void FakeMachine::addPicture(const std::string& path, int width, int height, std::uint32_t colour) {
    files.add(path);
    pictures.add(path, width, height, colour);
}

void FakeMachine::addBrokenPicture(const std::string& path, const std::string& reason) {
    files.add(path);
    pictures.addBroken(path, reason);
}

void FakeMachine::addDisc(const std::string& folder, const std::vector<int>& trackSeconds) {
    constexpr int kFramesPerSecond = 75;
    FakeDisc disc;
    for (std::size_t i = 0; i < trackSeconds.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        files.add(folder + files.slash + "Track" + (number.size() < 2 ? "0" : "") + number + ".cda");
        disc.trackFrames.push_back(trackSeconds[i] * kFramesPerSecond);
    }
    media.discs[folder] = disc;
}

}  // namespace corvane
