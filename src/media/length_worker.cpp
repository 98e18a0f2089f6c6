// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/length_worker.h"

#include <cmath>
#include <utility>

#include "media/midi/midi_sound.h"
#include "media/movies/movie_duration.h"
#include "media/sound/file_sound.h"
#include "types/kind_facts.h"

namespace corvane {

namespace {

using Length = std::optional<std::int64_t>;

Length soundLength(const std::string& path, const Abandoned& flag) {
    std::string reason;
    auto file = DriveFile::open(path, {DriveCalls::kLongPatience, flag.get()}, reason);
    if (!file || holdsMidi(*file)) return std::nullopt;
    const OpenedSound opened = FileSound::open(std::move(file), flag);
    if (!opened.sound || opened.sound->frames() <= 0) return std::nullopt;
    return opened.sound->frames() * 1000 / opened.sound->format().rate;
}

Length movieLength(const std::string& path, const std::atomic<bool>& stop) {
    const auto seconds = statedLength(path, stop);
    if (!seconds || *seconds > static_cast<double>(kMostSeconds)) return std::nullopt;
    return std::llround(*seconds * 1000);
}

}  // namespace

void LengthWorker::read(const std::string& path, std::int16_t kind, Done done) {
    givenUp_ = std::make_shared<std::atomic<bool>>(false);
    const auto tell = [post = post_, flag = givenUp_, done = std::move(done)](Length length) {
        post([flag, done, length] {
            if (!*flag) done(length);
        });
    };
    const auto work = [path, kind, flag = givenUp_, tell](const Worker::GiveUp& /*givenUp*/) {
        tell(isMovie(kind) ? movieLength(path, *flag) : soundLength(path, flag));
    };
    if (!worker_.start(work, [tell] { tell(std::nullopt); })) tell(std::nullopt);
}

void LengthWorker::giveUp() {
    if (givenUp_) *givenUp_ = true;
    worker_.giveUp();
}

}  // namespace corvane
