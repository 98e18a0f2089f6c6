// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/media.h"

#include <QTimer>
#include <cstdlib>
#include <string_view>

#include "desktop/media/desktop_mci_control.h"
#include "desktop/media/movie_players.h"

namespace corvane {

namespace {

/// After the first picture of the panel, before somebody can press play.
constexpr int kWarmUpMs = 200;

/// CORVANE_AUDIO=null plays in silence, by the clock.
bool silent() {
    const char* audio = std::getenv("CORVANE_AUDIO");
    return audio && std::string_view(audio) == "null";
}

class DesktopMedia : public Media {
public:
    DesktopMedia(EventLoop& loop, Windows& windows) : station_(loop, silent()), movies_(loop, windows) {
        QTimer::singleShot(kWarmUpMs, &station_.timers, [this] { station_.output.warmUp(); });
    }
    ~DesktopMedia() override { station_.post.stop(); }

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<DesktopMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    SoundStation station_;
    MoviePlayers movies_;
};

}  // namespace

std::unique_ptr<Media> makeMedia(EventLoop& loop, Windows& windows) {
    return std::make_unique<DesktopMedia>(loop, windows);
}

}  // namespace corvane
