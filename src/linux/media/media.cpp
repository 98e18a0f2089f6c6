// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/media.h"

#include <QTimer>
#include <functional>
#include <utility>

#include "linux/media/movies/movie_players.h"
#include "linux/media/sound/desktop_mci_control.h"
#include "media/midi/midi_sound.h"
#include "media/movies/movie_library.h"
#include "media/sound/av_library.h"
#include "media/sound/silence.h"
#include "workers/worker.h"

namespace corvane {

namespace {

/// After the first picture of the panel, before somebody can press play.
constexpr int kWarmUpMs = 200;

/// Loads what a sound file needs when it is opened.
void prepareSound(const std::string& path, Synthesizer& synthesizer) {
    if (holdsMidi(path)) {
        synthesizer.load();
    } else {
        loadAv();
    }
}

class LinuxMedia : public Media {
public:
    LinuxMedia(EventLoop& loop, Windows& windows) : station_(loop, silenceWanted()), movies_(loop, windows) {
        QTimer::singleShot(kWarmUpMs, &station_.timers, [this] { station_.output.warmUp(); });
    }
    ~LinuxMedia() override { station_.post.stop(); }

    void expectSound(const std::string& path) override {
        prepare([path, synthesizer = station_.synthesizer] { prepareSound(path, *synthesizer); });
    }
    void expectDisc(const std::string& /*path*/) override { station_.output.warmUp(); }
    void expectMovie(const std::string& /*path*/) override { prepare(loadMovieLibrary); }

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<DesktopMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    /// Without a thread the file is opened all the same when its turn comes.
    void prepare(std::function<void()> load) {
        station_.output.warmUp();
        Worker::run([load = std::move(load)](const Worker::GiveUp&) { load(); });
    }

    SoundStation station_;
    MoviePlayers movies_;
};

}  // namespace

std::unique_ptr<Media> makeMedia(EventLoop& loop, Windows& windows) {
    return std::make_unique<LinuxMedia>(loop, windows);
}

}  // namespace corvane
