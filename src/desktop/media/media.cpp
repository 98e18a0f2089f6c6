// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/media/media.h"

#include <QTimer>

#include "desktop/media/av_library.h"
#include "desktop/media/desktop_mci_control.h"
#include "desktop/media/midi_sound.h"
#include "desktop/media/movie_library.h"
#include "desktop/media/movie_players.h"
#include "desktop/media/silence.h"
#include "engine/mdlPublicFunction.h"
#include "workers/worker.h"

namespace corvane {

namespace {

/// After the first picture of the panel, before somebody can press play.
constexpr int kWarmUpMs = 200;

/// Loads what a file of that kind needs when it is opened.
void prepare(std::int16_t kind, const std::string& path, Synthesizer& synthesizer) {
    if (kind == mdlDefinePublic::mkMovie) {
        loadMovieLibrary();
    } else if (holdsMidi(path)) {
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

    void expect(const std::string& path) override {
        const std::int16_t kind = mdlPublicFunction::mediaKind(path);
        if (kind == mdlDefinePublic::mkImage) return;
        station_.output.warmUp();
        if (kind == mdlDefinePublic::mkCDTrack) return;
        // Without a thread the file is opened all the same when its turn comes.
        Worker::run([kind, path, synthesizer = station_.synthesizer](const Worker::GiveUp&) {
            prepare(kind, path, *synthesizer);
        });
    }

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<DesktopMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    SoundStation station_;
    MoviePlayers movies_;
};

}  // namespace

std::unique_ptr<Media> makeMedia(EventLoop& loop, Windows& windows) {
    return std::make_unique<LinuxMedia>(loop, windows);
}

}  // namespace corvane
