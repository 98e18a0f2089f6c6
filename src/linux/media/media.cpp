// SPDX-License-Identifier: GPL-3.0-or-later
#include "linux/media/media.h"

#include <QTimer>
#include <functional>
#include <utility>

#include "linux/media/desktop_station.h"
#include "linux/media/movies/desktop_movies.h"
#include "media/midi/midi_sound.h"
#include "media/sound/av_kinds.h"
#include "media/sound/av_library.h"
#include "media/sound/silence.h"
#include "media/sound/sound_devices.h"
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

class AllMedia : public LinuxMedia {
public:
    AllMedia(EventLoop& loop, Windows& windows, const std::string& programFolder)
        : station_(loop, silenceWanted()), movies_(loop, windows, programFolder) {
        QTimer::singleShot(kWarmUpMs, &owner_, [this] { station_.output.warmUp(); });
    }

    void chooseGraphics(GraphicsChoice choice) override { movies_.players().chooseGraphics(choice); }
    bool plays(const std::string& extension) override { return avPlays(extension); }
    void expectSound(const std::string& path, SoundLevel level) override {
        station_.ahead.expect(path, level);
        prepare([path, synthesizer = station_.synthesizer] { prepareSound(path, *synthesizer); });
    }
    void expectDisc(const std::string& /*path*/) override {
        station_.ahead.drop();
        station_.output.warmUp();
    }
    void expectNothing() override { station_.ahead.drop(); }
    void expectMovie(const std::string& /*path*/) override {
        station_.ahead.drop();
        station_.output.warmUp();
        movies_.players().prepare();
    }

    std::unique_ptr<MciControl> makeMciControl() override { return std::make_unique<OutputMciControl>(station_); }
    std::unique_ptr<MovieControl> makeMovieControl(Form& form) override { return movies_.makeControl(form); }

private:
    /// Without a thread the file is opened all the same when its turn comes.
    void prepare(std::function<void()> load) {
        station_.output.warmUp();
        Worker::run([load = std::move(load)](const Worker::GiveUp&) { load(); });
    }

    DesktopStation station_;
    DesktopMovies movies_;
    QObject owner_;  ///< of what is timed here
};

}  // namespace

std::unique_ptr<SoundDevices> makeSoundDevices(EventLoop& loop) {
    return std::make_unique<PulseSoundDevices>(QtPost(loop));
}

std::unique_ptr<LinuxMedia> makeMedia(EventLoop& loop, Windows& windows, const std::string& programFolder) {
    return std::make_unique<AllMedia>(loop, windows, programFolder);
}

}  // namespace corvane
