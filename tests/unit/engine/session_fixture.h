// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "engine/media_session.h"
#include "fake/player_fixture.h"

namespace corvane {
/// A session on a player with a list of three sounds of 60 seconds; what it tells is kept.
class Session : public PlayerFixture {
protected:
    using Answer = MediaSession::Answer;
    using Status = MediaState::Status;
    static constexpr std::int64_t kSecond = 1'000'000;  ///< microseconds

    Session() {
        for (const char* name : {"/m/one.wav", "/m/two.wav", "/m/three.wav"}) machine.addSound(name, 60000);
        machine.addMovie("/m/clip.avi", 40, 320, 240);
        machine.addPicture("/m/view.bmp", 100, 80);
        machine.addDisc("/cd", {100, 270});
        session.Changed.tie([this] { ++changes; });
        session.Seeked.tie([this](std::int64_t position) { seeked.push_back(position); });
    }

    void open(const std::vector<std::string>& list) {
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        setList(list);
        act([] {});
        forget();
    }
    void openThree() { open({"/m/one.wav", "/m/two.wav", "/m/three.wav"}); }

    /// As a desktop calls: from a posted event. Busy when the event did not run.
    template <class Command>
    Answer ask(Command command) {
        Answer answer = Answer::Busy;
        machine.loop.post([&] { answer = command(session); });
        machine.settle();
        return answer;
    }
    void forget() {
        machine.clearCalls();
        changes = 0;
        seeked.clear();
    }
    void play(int milliseconds = 0) {
        ask([](MediaSession& s) { return s.play(); });
        machine.advance(milliseconds);
    }
    void pause() {
        ask([](MediaSession& s) { return s.pause(); });
    }
    const MediaState& now() { return session.state(); }
    double seconds() { return static_cast<double>(session.positionUs()) / kSecond; }

    MediaSession session{player};
    int changes = 0;
    std::vector<std::int64_t> seeked;
};

}  // namespace corvane
