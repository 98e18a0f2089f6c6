// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fake/player_fixture.h"

namespace corvane {

/// A track, minutes, seconds and frames position in packed form.
inline std::int32_t packed(int track, int minutes, int seconds, int frames = 0) {
    return track + minutes * 0x100 + seconds * 0x10000 + frames * 0x1000000;
}

/// The calls that the MCI control gets when its file is closed, and when one is opened and played.
inline const std::vector<std::string> kClosed = {"mci.Command Stop", "mci.Command Close"};

inline std::vector<std::string> opened(const char* path) {
    return {"mci.Command Stop", "mci.Command Close", std::string("mci.FileName ") + path,
            "mci.Command Open", "mci.TimeFormat 0",  "mci.UpdateInterval 100",
            "mci.Command Play"};
}

inline std::vector<std::string> closedAndOpened(const char* path) {
    std::vector<std::string> calls = kClosed;
    for (const std::string& call : opened(path)) calls.push_back(call);
    return calls;
}

/// The panel under the hand of a user, with one medium of each kind to play: a picture shown for 20 seconds, a movie of
/// 40, a sound of 60 and a disc's track of 100 seconds. The movie's delay is half a second.
class PanelHands : public PlayerFixture {
protected:
    using Calls = std::vector<std::string>;

    static constexpr const char* kPicture = "/m/view.bmp";
    static constexpr const char* kMovie = "/m/clip.avi";
    static constexpr const char* kSound = "/m/song.wav";
    static constexpr const char* kTrack = "/cd/Track01.cda";
    static constexpr MouseArgs kLeft{kLeftButton, 0, 0, 0};
    static constexpr MouseArgs kRight{kRightButton, 0, 0, 0};

    PanelHands() {
        machine.addPicture(kPicture, 100, 80);
        machine.addMovie(kMovie, 40, 320, 240);
        machine.addSound(kSound, 60000);
        machine.addDisc("/cd", {100, 270});
        machine.addSound("/m/second.wav", 60000);
        machine.addSound("/m/third.wav", 60000);
        player.gInterval = 20;
    }

    /// Puts the panel up with the file, and two sounds behind it.
    void setUp(const std::string& path) {
        if (player.forms.find<MainPanelControls>() == nullptr) setUpPanel();
        setList({path, "/m/second.wav", "/m/third.wav"});
    }

    /// The same, brought to "stopped", "playing" or "paused"; a movie is past its delay.
    void bring(const std::string& path, const std::string& wanted) {
        setUp(path);
        if (wanted != "stopped") act([this] { mdlPublicFunction::PlayFile(player); });
        if (path == kMovie && wanted != "stopped") machine.advance(player.gDelayTime);
        if (wanted == "paused") act([this] { mdlPublicFunction::PauseFile(player); });
        machine.clearCalls();
    }

    /// Moves the open medium to a position in the unit of its kind; it goes on as it was.
    void placeAt(double position) {
        const bool paused = state() == "paused";
        act([&] {
            if (auto* window = movieWindow()) window->amvMovie->CurrentPosition(position);
            if (auto* window = mciWindow()) {
                window->mmcMci->From(static_cast<std::int32_t>(position));
                window->mmcMci->Command("Play");
                if (paused) window->mmcMci->Command("Pause");
            }
        });
        machine.clearCalls();
    }

    /// Lets a button go over itself: its click comes before the release.
    void letGo(int index, const MouseArgs& mouse = kLeft) {
        act([&] { button(index).Click.raise(); });
        if (player.forms.find<MainPanelControls>() != nullptr) release(button(index), mouse);
        machine.settle();
    }

    /// Presses a button for so long.
    void hold(int index, int milliseconds, int shift = 0) {
        press(button(index), {kLeftButton, shift, 0, 0});
        machine.advance(milliseconds);
        letGo(index, {kLeftButton, shift, 0, 0});
    }

    float slider() { return panel().pctSlide.Width; }
};

}  // namespace corvane
