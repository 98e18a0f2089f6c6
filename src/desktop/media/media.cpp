// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/media.h"

#include <QTimer>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>
#include <thread>

#include "desktop/media/av_library.h"
#include "desktop/media/desktop_mci_control.h"
#include "desktop/media/midi_sound.h"
#include "desktop/media/movie_players.h"
#include "engine/mdlPublicFunction.h"

namespace corvane {

namespace {

/// After the first picture of the panel, before somebody can press play.
constexpr int kWarmUpMs = 200;

/// CORVANE_AUDIO=null plays in silence, by the clock.
bool silent() {
    const char* audio = std::getenv("CORVANE_AUDIO");
    return audio && std::string_view(audio) == "null";
}

bool isPicture(const std::string& path) {
    static constexpr std::array<std::string_view, 4> kPictures{"BMP", "JPEG", "JPG", "GIF"};
    const std::string extension = mdlPublicFunction::GetExtension(path);
    return std::find(kPictures.begin(), kPictures.end(), extension) != kPictures.end();
}

class LinuxMedia : public DesktopMedia {
public:
    LinuxMedia(EventLoop& loop, Windows& windows) : station_(loop, silent()), movies_(loop, windows) {
        QTimer::singleShot(kWarmUpMs, &station_.timers, [this] { station_.output.warmUp(); });
    }
    ~LinuxMedia() override { station_.post.stop(); }

    void expect(const std::string& path) override {
        if (isPicture(path)) return;
        station_.output.warmUp();
        // Not joined: a drive that hangs must not hang us.
        std::thread([path, synthesizer = station_.synthesizer] {
            if (holdsMidi(path)) {
                synthesizer->load();
            } else {
                loadAv();
            }
        }).detach();
    }

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<DesktopMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    SoundStation station_;
    MoviePlayers movies_;
};

}  // namespace

std::unique_ptr<DesktopMedia> makeMedia(EventLoop& loop, Windows& windows) {
    return std::make_unique<LinuxMedia>(loop, windows);
}

}  // namespace corvane
