// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "fake/player_fixture.h"

namespace corvane {

/// A movie in its window, with a sound behind it in the list.
class MovieWindow : public PlayerFixture {
protected:
    MovieWindow() {
        machine.addMovie("/m/clip.avi", 40, 320, 240);
        machine.addMovie("/m/film.mpg", 1000, 320, 240);
        machine.addSound("/m/last.wav", 60000);
    }
    void play(const std::string& path, std::int16_t zoom = 0) {
        player.gMovieZoom = zoom;
        setUpPanel();
        setList({path, "/m/last.wav"});
        mdlPublicFunction::PlayFile(player);
        machine.settle();
    }
    void playStarted(const std::string& path = "/m/clip.avi", std::int16_t zoom = 0) {
        play(path, zoom);
        machine.advance(player.gDelayTime);
        machine.clearCalls();
    }
    MovieControl& movie() { return *movieWindow()->amvMovie; }
    void raise(const Event<>& event) {
        machine.loop.enter([&] { event.raise(); });
        machine.settle();
    }
    /// The device's own toggle between paused and running, as of a click on the picture.
    void toggleOutside(int before, int now) {
        if (now == kMovieRunning) {
            movie().Run();
        } else {
            movie().Pause();
        }
        ASSERT_EQ(movie().State(), now) << "from " << before;
        machine.settle();
    }
};

}  // namespace corvane
