// SPDX-License-Identifier: GPL-3.0-or-later
#include "media/sound/sound_ahead.h"

#include <sys/stat.h>

#include <optional>
#include <utility>

#include "drives/drive_calls.h"
#include "media/midi/midi_sound.h"
#include "media/sound/file_sound.h"

namespace corvane {

namespace {

/// After the first block of the sound that begins now was read, and long before somebody has heard enough of it.
constexpr int kAfterBeginMs = 120;

/// Which file it is, and of which state.
struct FileState {
    dev_t device = 0;
    ino_t node = 0;
    off_t size = -1;
    std::int64_t seconds = 0, nanoseconds = 0;
    bool operator==(const FileState&) const = default;
};

std::optional<FileState> stateOf(const std::string& path, DriveCalls::Wait wait) {
    return DriveCalls::all().ask<FileState>(path, wait, [path] {
        struct stat status {};
        if (stat(path.c_str(), &status) != 0) return FileState();
        return FileState{status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
    });
}

}  // namespace

/// Written by the job before it is open, read behind that.
struct SoundAhead::Mark {
    std::optional<FileState> state;
};

void SoundAhead::expect(const std::string& path, SoundLevel level) {
    const bool isOnItsWay = job_ || later_.runs();
    if (isOnItsWay && path == path_ && level == level_) return;
    drop();
    path_ = path;
    level_ = level;
    if (level == SoundLevel::AsRecorded) {
        later_.start(kAfterBeginMs);
    } else {
        begin();
    }
}

void SoundAhead::begin() {
    mark_ = std::make_shared<Mark>();
    const auto open = [path = path_, level = level_, mark = mark_](const Abandoned& flag) -> OpenedSound {
        const DriveCalls::Wait wait{DriveCalls::kLongPatience, flag.get()};
        mark->state = stateOf(path, wait);
        std::string reason;
        auto file = DriveFile::open(path, wait, reason);
        if (!file || holdsMidi(*file)) return {nullptr, std::move(reason)};
        return FileSound::open(std::move(file), flag, level);
    };
    job_ = OpenJob::start(open, [] {});
}

std::shared_ptr<OpenJob> SoundAhead::take(const std::string& path, SoundLevel level) {
    if (path != path_ || level != level_ || !isOpen()) return nullptr;
    const auto now = stateOf(path, DriveCalls::kPatience);
    if (!now || mark_->state != now || now->size < 0) return nullptr;
    return std::exchange(job_, nullptr);
}

void SoundAhead::drop() {
    later_.stop();
    if (job_) job_->abandon();
    job_.reset();
}

}  // namespace corvane
