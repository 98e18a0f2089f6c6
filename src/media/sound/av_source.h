// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "drives/drive_file.h"
#include "media/sound/av_library.h"

namespace corvane {

/// A local file as the decoding libraries read it: through DriveFile, so that none of their calls hangs with a drive.
/// Used from one thread at a time, after loadAv() succeeded.
class AvSource {
public:
    /// Null when the file cannot be read in time; `reason` says why, in words.
    static std::unique_ptr<AvSource> open(const std::string& path, const std::atomic<bool>* giveUp,
                                          std::string& reason);
    /// Reads a file that is open already; null where there is no memory.
    static std::unique_ptr<AvSource> of(std::unique_ptr<DriveFile> file, const std::atomic<bool>* giveUp);
    AvSource(const AvSource&) = delete;
    AvSource& operator=(const AvSource&) = delete;
    ~AvSource();

    /// Gives it to a demuxer, which must be closed before it goes.
    void feed(AVFormatContext& input);
    const DriveFile& file() const { return *file_; }
    /// What is in it has been found: it may be read as far as it goes. Before, reading ends after kMostToOpen bytes, so
    /// that nobody looks for what is not there through a file that never ends.
    void opened() { mostToRead_ = INT64_MAX; }
    static constexpr std::int64_t kMostToOpen = std::int64_t{64} << 20;
    /// Of what a file tells beside its sound in pieces of its own: chapters, pictures, other files, things private to a
    /// program. More of them before opened() end reading as well: the libraries hold a thousand bytes of each, and look
    /// through all chapters for each further one.
    static constexpr int kMostBeside = 8'000;
    bool tellsTooMuchBeside() const { return beside_ > kMostBeside; }
    /// Less than that, and not for longer: for what is not worth more.
    void holdTo(std::int64_t bytes, std::chrono::steady_clock::time_point until) {
        mostToRead_ = bytes;
        until_ = until;
    }

private:
    AvSource(std::unique_ptr<DriveFile> file, const std::atomic<bool>* giveUp)
        : file_(std::move(file)), giveUp_(giveUp) {}
    void countBeside(const std::uint8_t* bytes, std::int64_t count);
    static int read(void* self, std::uint8_t* to, int count);
    static std::int64_t seek(void* self, std::int64_t offset, int whence);

    std::unique_ptr<DriveFile> file_;
    const std::atomic<bool>* giveUp_;  ///< may be null
    std::int64_t at_ = 0;
    std::int64_t mostToRead_ = kMostToOpen;
    std::chrono::steady_clock::time_point until_ = std::chrono::steady_clock::time_point::max();
    std::uint32_t letters_ = 0;  ///< the last four that were read, small ones
    int beside_ = 0;
    AVIOContext* context_ = nullptr;
};

}  // namespace corvane
